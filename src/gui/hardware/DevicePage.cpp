#include "gui/hardware/DevicePage.h"

#include "gui/config/TypedText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "core/support/TextUtil.h"
#include "gui/support/ListWidth.h"
#include "gui/support/Prompts.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kDeviceStatusId = 295;     // "Device Status"
constexpr int kEnabledId = 296;          // "Enabled"
constexpr int kConnectAtPowerOnId = 297; // "Connect at power on"

}  // namespace

DevicePage::DevicePage(VmConfiguration& config, DevicePageContext& context, DeviceType type, QWidget* parent)
    : QWidget(parent), config_(config), context_(context), type_(type) {}

void DevicePage::fill(const std::string& identifier) {
    identifier_ = identifier;
    const Device* d = device();
    if (!d) return;
    filling_ = true;
    for (const auto& show : fillers_) show(*d);
    fillPage(*d);
    filling_ = false;
}

void DevicePage::relabel() {
    const bool wasFilling = filling_;
    filling_ = true;  // relabelling list entries must not count as an edit
    captions_.apply(context_.languageOffset);
    relabelPage();
    filling_ = wasFilling;
}

QGroupBox* DevicePage::frame(const char* name, int captionId, QWidget* parent) {
    auto* f = named<QGroupBox>(name, parent ? parent : this);
    captions_.add(f, captionId);
    return f;
}

QCheckBox* DevicePage::flagBox(QWidget* parent, const char* name, int captionId, std::string key, bool fallback) {
    auto* box = named<QCheckBox>(name, parent);
    captions_.add(box, captionId);
    onFill([=](const Device& d) { box->setChecked(d.settings.flag(key, fallback)); });
    connect(box, &QCheckBox::clicked, this,
            [=, this](bool checked) { store([&](Device& d) { d.settings.setFlag(key, checked); }); });
    return box;
}

QCheckBox* DevicePage::switchBox(QWidget* parent, const char* name, int captionId, MachineSwitch which) {
    auto* box = named<QCheckBox>(name, parent);
    captions_.add(box, captionId);
    onFill([=, this](const Device&) {
        box->setVisible(hasFeature(config_.figures(), machineSwitch(which).feature));
        box->setEnabled(switchOffered(config_, which));
        box->setChecked(switchOn(config_, which));
    });
    connect(box, &QCheckBox::clicked, this,
            [=, this](bool checked) { storeMachine([&] { return setSwitch(config_, which, checked); }); });
    return box;
}

void DevicePage::storeMachine(const std::function<SwitchResult()>& change) {
    if (filling_) return;
    const SwitchResult result = change();
    if (result.refusal) showMessage(this, *result.refusal, languageOffset());
    if (result.changed) emit edited();
    refill();  // a refused change shows the stored state again
}

QGroupBox* DevicePage::statusFrame(const char* enabledName, const char* connectedName) {
    auto* f = frame("fraDeviceStatus", kDeviceStatusId);
    auto* layout = new QVBoxLayout(f);
    layout->addWidget(flagBox(f, enabledName, kEnabledId, ".present", false));
    if (connectedName) layout->addWidget(flagBox(f, connectedName, kConnectAtPowerOnId, ".startConnected", true));
    return f;
}

QComboBox* DevicePage::valueList(QWidget* parent, const char* name, std::string key, std::vector<ListEntry> entries,
                                 int unsetIndex) {
    auto* list = named<QComboBox>(name, parent);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const ListEntry& e = entries[i];
        if (e.captionId > 0) captions_.addItem(list, static_cast<int>(i), e.captionId);
        else list->addItem(e.text ? QString::fromUtf8(e.text) : qs(e.value));
    }
    onFill([=](const Device& d) {
        const auto stored = d.settings.get(key);
        int index = stored ? -1 : unsetIndex;
        for (std::size_t i = 0; stored && i < entries.size() && index < 0; ++i) {
            if (equalsIgnoreCase(entries[i].value, *stored)) index = static_cast<int>(i);
        }
        list->setCurrentIndex(index);
    });
    connect(list, &QComboBox::activated, this, [=, this](int index) {
        if (index < 0 || static_cast<std::size_t>(index) >= entries.size()) return;
        const std::string& value = entries[static_cast<std::size_t>(index)].value;
        store([&](Device& d) {
            if (d.settings.get(key) == value) return false;
            d.settings.set(key, value);
            return true;
        });
    });
    return list;
}

QLineEdit* DevicePage::textBox(QWidget* parent, const char* name, std::string key) {
    auto* box = named<QLineEdit>(name, parent);
    onFill([=](const Device& d) { box->setText(qs(d.settings.text(key))); });
    connect(box, &QLineEdit::editingFinished, this, [=, this] {
        store([&](Device& d) {
            const std::string text = box->text().toStdString();
            if (d.settings.get(key) == text) return false;
            d.settings.set(key, text);
            return true;
        });
    });
    return box;
}

QLineEdit* DevicePage::numberBox(QWidget* parent, const char* name, std::string key,
                                 std::function<NumberCheck(std::string_view)> check,
                                 std::function<QString(long long)> shown) {
    auto* box = named<QLineEdit>(name, parent);
    auto show = [=](const Device& d) {
        const auto stored = d.settings.number(key);
        box->setText(stored ? shown(*stored) : QString());
        markRefused(box, false);
    };
    onFill(show);
    connect(box, &QLineEdit::editingFinished, this, [=, this] {
        if (filling_ || !device()) return;
        const NumberCheck result = check(box->text().toStdString());
        markRefused(box, result.refusal.has_value());
        if (result.refusal) {
            showMessage(this, *result.refusal, languageOffset());
            box->setFocus();  // an invalid entry is reported and the user corrects it
            box->selectAll();
            return;
        }
        if (result.value) {
            store([&](Device& d) {
                if (d.settings.number(key) == result.value) return false;
                d.settings.setNumber(key, *result.value);
                return true;
            });
        }
        if (const Device* d = device()) show(*d);  // the stored value, rounded as stored
    });
    return box;
}

QRadioButton* DevicePage::option(QWidget* parent, const char* name, int captionId) {
    auto* button = named<QRadioButton>(name, parent);
    captions_.add(button, captionId);
    return button;
}

QComboBox* DevicePage::deviceList(QWidget* parent, const char* name, const QStringList& entries) {
    auto* list = named<QComboBox>(name, parent);
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    list->addItems(entries);
    return list;
}

QString DevicePage::nameText(QWidget* control) {
    if (auto* list = qobject_cast<QComboBox*>(control)) return list->currentText();
    if (auto* box = qobject_cast<QLineEdit*>(control)) return box->text();
    return {};
}

void DevicePage::showName(QWidget* control, const QString& text) {
    if (auto* list = qobject_cast<QComboBox*>(control)) {
        // A list not in use shows its first entry, ready to be chosen.
        if (text.isNull() && list->count() > 0) list->setCurrentIndex(0);
        else list->setCurrentText(text);
    } else if (auto* box = qobject_cast<QLineEdit*>(control)) {
        box->setText(text);
    }
}

void DevicePage::bindConnection(std::vector<Alternative> alternatives) {
    onFill([=, this](const Device& d) {
        const auto chosen = connectionOf(type_, d.settings.text(connectionKey(type_)));
        for (const Alternative& a : alternatives) {
            const bool on = chosen == a.connection;
            a.option->setChecked(on);
            showName(a.name, on ? qs(d.settings.text(".fileName")) : QString());
        }
        // A connection this page does not offer (a printer port, a network socket) shows
        // no option; the radio buttons must then all be cleared.
        if (!chosen) {
            for (const Alternative& a : alternatives) {
                a.option->setAutoExclusive(false);
                a.option->setChecked(false);
                a.option->setAutoExclusive(true);
            }
        }
    });
    for (const Alternative& a : alternatives) {
        connect(a.option, &QRadioButton::clicked, this, [=, this] { storeConnection(a); });
        auto nameEdited = [=, this] {
            // Passing through an empty box of another alternative chooses nothing.
            if (!a.option->isChecked() && nameText(a.name).isEmpty()) return;
            a.option->setChecked(true);
            storeConnection(a);
        };
        if (auto* list = qobject_cast<QComboBox*>(a.name)) {
            connect(list, &QComboBox::activated, this, nameEdited);
            connect(list->lineEdit(), &QLineEdit::editingFinished, this, nameEdited);
        } else if (auto* box = qobject_cast<QLineEdit*>(a.name)) {
            connect(box, &QLineEdit::editingFinished, this, nameEdited);
        }
    }
}

void DevicePage::storeConnection(const Alternative& chosen) {
    store([&](Device& d) {
        const std::string key(connectionKey(type_));
        const std::string name = nameText(chosen.name).toStdString();
        // A drive that already uses this connection keeps its kind (legacy emulation stays).
        const bool same = connectionOf(type_, d.settings.text(key)) == chosen.connection;
        if (same && d.settings.get(".fileName") == name) return false;
        if (!same) d.settings.set(key, std::string(connectionValue(type_, chosen.connection)));
        d.settings.set(".fileName", name);
        return true;
    });
}

void DevicePage::stack(std::initializer_list<QWidget*> frames) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* f : frames) layout->addWidget(f);
    layout->addStretch(1);
    keepListsNarrow(this);
}

QHBoxLayout* DevicePage::indentedRow(QBoxLayout* into, std::initializer_list<QWidget*> widgets) {
    auto* row = new QHBoxLayout;
    row->addSpacing(24);
    for (QWidget* w : widgets) row->addWidget(w, qobject_cast<QLineEdit*>(w) || qobject_cast<QComboBox*>(w) ? 1 : 0);
    into->addLayout(row);
    return row;
}

QPushButton* DevicePage::browseButton(QWidget* parent, const char* name, QLineEdit* box, int titleId,
                                      std::vector<std::pair<int, QString>> filters, bool inImageFolder) {
    auto* button = named<QPushButton>(name, parent);
    captions_.add(button, 305, "...");  // "Browse"
    connect(button, &QPushButton::clicked, this, [=, this] {
        QStringList parts;
        for (const auto& [id, patterns] : filters) parts << uiText(id, languageOffset()) + " (" + patterns + ")";
        QString start = qs(config_.identity.vmxFolder);
        const QFileInfo current(box->text());
        if (inImageFolder && !context_.imageFolder.isEmpty()) start = context_.imageFolder;
        else if (current.isAbsolute()) start = current.absolutePath();
        const QString file = pickOpenFile(this, uiText(titleId, languageOffset()), parts.join(";;"), start);
        if (file.isEmpty()) return;
        box->setText(file);
        emit box->editingFinished();
    });
    return button;
}

}  // namespace arden::gui

#pragma once
// Helpers of the GUI tests: controls by object name, editors on a new machine or a scratch copy
// of a file, the Hardware tab driven through frmAddHardware, and prompts read back as text.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <filesystem>
#include <functional>
#include <memory>

#include "TestSupport.h"
#include "gui/config/Builder.h"
#include "gui/support/Prompts.h"
#include "gui/support/UiText.h"

namespace arden::gui::test {

template <typename T>
T* child(QObject* root, const char* name) {
    T* w = root->findChild<T*>(QString::fromLatin1(name));
    if (!w) ADD_FAILURE() << "no control named " << name;
    return w;
}

// Lets queued events (timers with zero delay, deferred deletes) run.
inline void settle() {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

// Runs `act` on the next application-modal window as soon as it is shown, from inside the
// call that shows it and waits; gives up after a few seconds when none is shown.
inline void onNextModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    timer->setInterval(10);
    auto ticks = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [timer, act, ticks] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal && ++*ticks < 300) return;
        timer->stop();
        timer->deleteLater();
        if (modal) act(modal);
    });
    timer->start();
}

// The message boxes a script recorded, each as "title: text".
inline QStringList said(const PromptScript& script) {
    QStringList out;
    for (const ShownPrompt& p : script.messages()) out << p.title + ": " + p.text;
    return out;
}

inline QString qpath(const std::filesystem::path& p) { return QString::fromStdString(p.string()); }

inline std::unique_ptr<Builder> newMachine(const QString& name, const std::filesystem::path& folder) {
    auto b = std::make_unique<Builder>();
    b->DisplayName = name;
    b->NewVmxPath = qpath(folder);
    EXPECT_TRUE(b->start());
    return b;
}

inline std::unique_ptr<Builder> openFile(const std::filesystem::path& file, bool backups = false) {
    auto b = std::make_unique<Builder>();
    b->EditExistingFile = true;
    b->ExistingVmxFileName = qpath(file);
    b->CreateBackups = backups;
    EXPECT_TRUE(b->start());
    return b;
}

// The entries of a list box; one column of a list view.
inline QStringList entries(QComboBox* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i) out << list->itemText(i);
    return out;
}
inline QStringList column(QTreeWidget* list, int col) {
    QStringList out;
    for (int i = 0; i < list->topLevelItemCount(); ++i) out << list->topLevelItem(i)->text(col);
    return out;
}

// The nth entry of `type` in the hardware list, chosen; null when there is none.
inline QTreeWidgetItem* chooseDevice(Builder* b, DeviceType type, int nth = 0) {
    auto* list = child<QTreeWidget>(b, "lvwHardwareList");
    const QString prefix = QStringLiteral("H%1|").arg(typeNumber(type));
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = list->topLevelItem(i);
        if (item->data(0, Qt::UserRole).toString().startsWith(prefix) && nth-- == 0) {
            list->setCurrentItem(item);
            return item;
        }
    }
    return nullptr;
}

// The device's settings as the configuration holds them.
inline const DeviceSettings& settingsOf(Builder* b, DeviceType type, int nth = 0) {
    return b->configuration().devices.devices(type)[static_cast<std::size_t>(nth)].settings;
}

// Clicks cmdHardwareAdd; in the dialog chooses the row named `typeName` and presses OK (Cancel
// when `accept` is false or the row is not offered). Returns the rows the dialog offered.
inline QStringList addThroughDialog(Builder* b, const QString& typeName, bool accept = true) {
    QStringList offered;
    onNextModal([&](QWidget* dialog) {
        auto* list = child<QTreeWidget>(dialog, "lvwAvailableHardware");
        offered = column(list, 0);
        const auto found = list->findItems(typeName, Qt::MatchExactly, 0);
        if (!found.isEmpty()) list->setCurrentItem(found.front());
        offered << child<QLabel>(dialog, "lblInfo")->text();
        if (accept && !found.isEmpty()) child<QPushButton>(dialog, "cmdOK")->click();
        else child<QPushButton>(dialog, "cmdCancel")->click();
    });
    child<QPushButton>(b, "cmdHardwareAdd")->click();
    return offered;
}

// Types `text` into a text box or an editable list and leaves it.
inline void typeInto(QWidget* control, const QString& text) {
    auto* list = qobject_cast<QComboBox*>(control);
    auto* box = list ? list->lineEdit() : qobject_cast<QLineEdit*>(control);
    box->setText(text);
    emit box->editingFinished();
}

// Chooses the entry of `list` whose text is `text`, as a user does.
inline bool pick(QComboBox* list, const QString& text) {
    const int index = list->findText(text);
    if (index < 0) return false;
    list->setCurrentIndex(index);
    emit list->activated(index);
    return true;
}

}  // namespace arden::gui::test

// Readable QString values in test failures and in the notes streamed after an assertion.
inline std::ostream& operator<<(std::ostream& out, const QString& text) { return out << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QString& text, std::ostream* out) { *out << text; }

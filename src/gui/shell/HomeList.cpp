#include "gui/shell/HomeList.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "gui/support/Icons.h"
#include "gui/support/Mnemonics.h"
#include "gui/support/NamedWidget.h"
#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

constexpr int kPathColumn = 1;
constexpr int kVersionColumn = 2;

QAction* namedAction(QMenu* menu, const char* name) {
    QAction* a = named<QAction>(name, menu);
    menu->addAction(a);
    return a;
}

}  // namespace

HomeList::HomeList(QWidget* parent) : QWidget(parent) {
    setObjectName("HomeList");
    fraFavorites_ = new QGroupBox(this);
    fraFavorites_->setObjectName("fraFavorites");
    lvwVMs_ = new QTreeWidget(fraFavorites_);
    lvwVMs_->setObjectName("lvwVMs");
    lvwVMs_->setRootIsDecorated(false);
    lvwVMs_->setUniformRowHeights(true);
    lvwVMs_->setSortingEnabled(false);
    lvwVMs_->setHeaderLabels({"Display Name", "VMX Path", "Config Version"});
    lvwVMs_->header()->setSectionResizeMode(0, QHeaderView::Interactive);
    lvwVMs_->header()->setSectionResizeMode(kPathColumn, QHeaderView::Stretch);
    lvwVMs_->header()->setSectionResizeMode(kVersionColumn, QHeaderView::ResizeToContents);
    lvwVMs_->setColumnWidth(0, 240);
    lvwVMs_->setContextMenuPolicy(Qt::CustomContextMenu);

    cmdNew_ = new QPushButton(toolbarIcon("New"), QString(), this);
    cmdNew_->setObjectName("cmdNew");
    cmdOpen_ = new QPushButton(toolbarIcon("Open"), QString(), this);
    cmdOpen_->setObjectName("cmdOpen");

    mnuPopup_ = new QMenu(this);
    mnuPopup_->setObjectName("mnuPopup");
    mnuPopupNew_ = namedAction(mnuPopup_, "mnuPopupNew");
    mnuPopupEdit_ = namedAction(mnuPopup_, "mnuPopupEdit");
    mnuPopupEditOther_ = namedAction(mnuPopup_, "mnuPopupEditOther");
    mnuPopup_->addSeparator();
    mnuPopupLaunch_ = namedAction(mnuPopup_, "mnuPopupLaunch");
    mnuPopup_->addSeparator();
    mnuPopupRemove_ = namedAction(mnuPopup_, "mnuPopupRemove");

    auto* frameLayout = new QVBoxLayout(fraFavorites_);
    frameLayout->addWidget(lvwVMs_);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdNew_);
    buttons->addWidget(cmdOpen_);
    buttons->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraFavorites_, 1);
    layout->addLayout(buttons);

    connect(cmdNew_, &QPushButton::clicked, this, &HomeList::newRequested);
    connect(cmdOpen_, &QPushButton::clicked, this, &HomeList::openOtherRequested);
    connect(mnuPopupNew_, &QAction::triggered, this, &HomeList::newRequested);
    connect(mnuPopupEditOther_, &QAction::triggered, this, &HomeList::openOtherRequested);
    connect(mnuPopupEdit_, &QAction::triggered, this, [this] {
        if (selected()) emit editRequested(selectedPath(), selectedVersion());
    });
    connect(lvwVMs_, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
        if (item) emit editRequested(item->text(kPathColumn), item->text(kVersionColumn).toInt());
    });
    connect(mnuPopupLaunch_, &QAction::triggered, this, [this] {
        if (selected()) emit launchRequested(selectedPath());
    });
    connect(mnuPopupRemove_, &QAction::triggered, this, [this] {
        if (lvwVMs_->topLevelItemCount() > 0 && selected()) emit removeRequested(selectedName());
    });
    connect(lvwVMs_, &QTreeWidget::itemSelectionChanged, this, [this] { emit selectionChanged(selectedPath()); });
    connect(lvwVMs_, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        const bool onRow = selected() != nullptr;
        mnuPopupEdit_->setEnabled(onRow);
        mnuPopupLaunch_->setEnabled(onRow);
        mnuPopupRemove_->setEnabled(onRow);
        mnuPopup_->popup(lvwVMs_->viewport()->mapToGlobal(at));
    });
}

void HomeList::UpdateFavoritesList(const std::vector<FavoriteRecord>& favorites) {
    lvwVMs_->clear();
    // Built first and added in one go: the view takes one insertion, not one per row.
    QList<QTreeWidgetItem*> items;
    items.reserve(qsizetype(favorites.size()));
    for (const FavoriteRow& row : favoriteListRows(favorites)) {
        auto* item = new QTreeWidgetItem(QStringList{qs(row.DisplayName), qs(row.VmxPath), qs(row.ConfigVersion)});
        const QString key = QString::fromLatin1(row.IconKey.data(), int(row.IconKey.size()));
        item->setIcon(0, machineIcon(key));
        item->setData(0, Qt::UserRole, key);  // the icon key, for tools and tests that read the list
        item->setToolTip(kPathColumn, item->text(kPathColumn));
        items.append(item);
    }
    lvwVMs_->addTopLevelItems(items);
}

void HomeList::UpdateUILabels(int o) {
    fraFavorites_->setTitle(uiText(2, o));
    cmdNew_->setText(uiText(4, o));
    cmdOpen_->setText(uiText(5, o));
    const QList<QAction*> entries = {mnuPopupNew_, mnuPopupEdit_, mnuPopupEditOther_, mnuPopupLaunch_, mnuPopupRemove_};
    const QStringList texts = withMnemonics({uiText(4, o), uiText(16, o), uiText(5, o), uiText(17, o), uiText(18, o)});
    for (qsizetype i = 0; i < entries.size(); ++i) entries[i]->setText(texts[i]);
}

QTreeWidgetItem* HomeList::selected() const {
    const auto items = lvwVMs_->selectedItems();
    return items.isEmpty() ? nullptr : items.first();
}

QString HomeList::selectedName() const { return selected() ? selected()->text(0) : QString(); }
QString HomeList::selectedPath() const { return selected() ? selected()->text(kPathColumn) : QString(); }
int HomeList::selectedVersion() const { return selected() ? selected()->text(kVersionColumn).toInt() : 8; }

}  // namespace arden::gui

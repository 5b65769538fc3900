#include "gui/config/SharedFoldersPage.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "core/hardware/SharedFolderRules.h"
#include "gui/hardware/frmAddSharedFolder.h"
#include "gui/support/UiText.h"

namespace arden::gui {

SharedFoldersPage::SharedFoldersPage(VmConfiguration& config, QWidget* parent) : OptionPage(config, parent) {
    setObjectName("fraSharedFoldersPage");
    auto* fraSharedFolders = captionedFrame("fraSharedFolders", 245);
    // Captioned "Disable Shared Folders": checked when the model says sharing is not allowed.
    auto* chkSharedDisable = flagBox(fraSharedFolders, "chkSharedDisable", 247, &VmConfiguration::sharedFolders,
                                     &SharedFolderOptions::allowed, true);
    auto* top = new QVBoxLayout(fraSharedFolders);
    top->addWidget(chkSharedDisable);

    auto* fraFolders = captionedFrame("fraFolders", 248);
    lvwSharedFolders_ = makeListView("lvwSharedFolders", fraFolders, captions_, 117, 118);  // "Name", "Host Folder"
    lvwSharedFolders_->setColumnCount(3);
    lvwSharedFolders_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    captions_.addHeader(lvwSharedFolders_, 2, 119);  // "Attributes"
    cmdSharedAdd_ = named<QPushButton>("cmdSharedAdd", fraFolders);
    cmdSharedProps_ = named<QPushButton>("cmdSharedProps", fraFolders);
    cmdSharedRemove_ = named<QPushButton>("cmdSharedRemove", fraFolders);
    captions_.add(cmdSharedAdd_, 205);     // "Add"
    captions_.add(cmdSharedProps_, 246);   // "Properties"
    captions_.add(cmdSharedRemove_, 206);  // "Remove"
    connect(lvwSharedFolders_, &QTreeWidget::itemSelectionChanged, this, &SharedFoldersPage::updateButtons);
    connect(lvwSharedFolders_, &QTreeWidget::itemDoubleClicked, this, &SharedFoldersPage::editSelectedFolder);
    connect(cmdSharedAdd_, &QPushButton::clicked, this, &SharedFoldersPage::addFolder);
    connect(cmdSharedProps_, &QPushButton::clicked, this, &SharedFoldersPage::editSelectedFolder);
    connect(cmdSharedRemove_, &QPushButton::clicked, this, &SharedFoldersPage::removeSelectedFolder);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* b : {cmdSharedAdd_, cmdSharedProps_, cmdSharedRemove_}) buttons->addWidget(b);
    auto* folders = new QVBoxLayout(fraFolders);
    folders->addWidget(lvwSharedFolders_, 1);
    folders->addLayout(buttons);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraSharedFolders);
    layout->addWidget(fraFolders, 1);
}

void SharedFoldersPage::fillPage() {
    lvwSharedFolders_->clear();
    for (const SharedFolder& f : config_.sharedFolders.folders) showShare(new QTreeWidgetItem(lvwSharedFolders_), f);
    updateButtons();
}

void SharedFoldersPage::relabelPage() {
    const auto& folders = config_.sharedFolders.folders;
    for (int row = 0; row < lvwSharedFolders_->topLevelItemCount() && static_cast<std::size_t>(row) < folders.size(); ++row)
        showShare(lvwSharedFolders_->topLevelItem(row), folders[static_cast<std::size_t>(row)]);
}

void SharedFoldersPage::showShare(QTreeWidgetItem* item, const SharedFolder& share) const {
    item->setText(0, qs(share.name));
    item->setText(1, qs(share.hostPath));
    item->setText(2, uiText(shareAttributes(share.enabled, share.readOnly, share.disableAfterSession), languageOffset()));
}

int SharedFoldersPage::selectedRow() const {
    QTreeWidgetItem* item = lvwSharedFolders_->currentItem();
    if (!item || !item->isSelected()) return -1;
    const int row = lvwSharedFolders_->indexOfTopLevelItem(item);
    return row >= 0 && static_cast<std::size_t>(row) < config_.sharedFolders.folders.size() ? row : -1;
}

void SharedFoldersPage::updateButtons() {
    const bool selected = selectedRow() >= 0;
    cmdSharedProps_->setEnabled(selected);
    cmdSharedRemove_->setEnabled(selected);
}

bool SharedFoldersPage::editShare(SharedFolder& share, int row) {
    std::vector<std::string> otherNames;
    const auto& folders = config_.sharedFolders.folders;
    for (std::size_t i = 0; i < folders.size(); ++i) {
        if (static_cast<int>(i) != row) otherNames.push_back(folders[i].name);
    }
    frmAddSharedFolder dialog(share, std::move(otherNames), languageOffset(), this);
    dialog.exec();
    if (dialog.cancelled()) return false;
    share = dialog.share();
    return true;
}

void SharedFoldersPage::addFolder() {
    SharedFolder share;
    if (!editShare(share, -1)) return;
    store([&](VmConfiguration& c) { c.sharedFolders.folders.push_back(share); });
    auto* item = new QTreeWidgetItem(lvwSharedFolders_);
    showShare(item, share);
    lvwSharedFolders_->setCurrentItem(item);
}

void SharedFoldersPage::editSelectedFolder() {
    const int row = selectedRow();
    if (row < 0) return;
    SharedFolder share = config_.sharedFolders.folders[static_cast<std::size_t>(row)];
    if (!editShare(share, row)) return;
    store([&](VmConfiguration& c) { c.sharedFolders.folders[static_cast<std::size_t>(row)] = share; });
    showShare(lvwSharedFolders_->topLevelItem(row), share);
}

void SharedFoldersPage::removeSelectedFolder() {
    const int row = selectedRow();
    if (row < 0) return;
    store([&](VmConfiguration& c) { c.sharedFolders.folders.erase(c.sharedFolders.folders.begin() + row); });
    delete lvwSharedFolders_->topLevelItem(row);
    updateButtons();
}

}  // namespace arden::gui

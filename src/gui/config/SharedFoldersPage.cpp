#include "gui/config/SharedFoldersPage.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

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
    lvwSharedFolders_ = makeListView("lvwSharedFolders", fraFolders, captions_, 117, 118);
    cmdSharedRemove_ = named<QPushButton>("cmdSharedRemove", fraFolders);
    captions_.add(cmdSharedRemove_, 206);
    cmdSharedRemove_->setEnabled(false);
    connect(lvwSharedFolders_, &QTreeWidget::itemSelectionChanged, this,
            [this] { cmdSharedRemove_->setEnabled(!lvwSharedFolders_->selectedItems().isEmpty()); });
    connect(cmdSharedRemove_, &QPushButton::clicked, this, &SharedFoldersPage::removeSelectedFolder);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdSharedRemove_);
    auto* folders = new QVBoxLayout(fraFolders);
    folders->addWidget(lvwSharedFolders_, 1);
    folders->addLayout(buttons);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fraSharedFolders);
    layout->addWidget(fraFolders, 1);
}

void SharedFoldersPage::fillPage() {
    lvwSharedFolders_->clear();
    for (const SharedFolder& f : config_.sharedFolders.folders) {
        auto* item = new QTreeWidgetItem(lvwSharedFolders_);
        item->setText(0, QString::fromStdString(f.name));
        item->setText(1, QString::fromStdString(f.hostPath));
    }
    cmdSharedRemove_->setEnabled(false);
}

void SharedFoldersPage::removeSelectedFolder() {
    QTreeWidgetItem* item = lvwSharedFolders_->currentItem();
    if (!item || !item->isSelected()) return;
    const int row = lvwSharedFolders_->indexOfTopLevelItem(item);
    auto& folders = config_.sharedFolders.folders;
    if (row < 0 || static_cast<std::size_t>(row) >= folders.size()) return;
    store([&](VmConfiguration& c) { c.sharedFolders.folders.erase(c.sharedFolders.folders.begin() + row); });
    delete item;
}

}  // namespace arden::gui

#include "gui/config/OptionsPanel.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeWidget>

#include "gui/config/AdvancedPage.h"
#include "gui/config/GeneralPage.h"
#include "gui/config/IsolationPage.h"
#include "gui/config/PowerPage.h"
#include "gui/config/SharedFoldersPage.h"
#include "gui/config/SnapshotsPage.h"

namespace arden::gui {
namespace {

// The entries' captions are fixed English, in the order of the model's groups.
constexpr const char* kGroupCaptions[OptionsPanel::kGroupCount] = {
    "General", "Power", "Shared Folders", "Snapshots", "Guest Isolation", "Advanced"};

}  // namespace

OptionsPanel::OptionsPanel(VmConfiguration& config, QWidget* parent) : QWidget(parent), config_(config) {
    lvwOptionsList_ = makeListView("lvwOptionsList", this, captions_, 228, 203);

    auto* general = new GeneralPage(config, nullptr);
    connect(general, &GeneralPage::displayNameChanged, this, &OptionsPanel::displayNameChanged);
    pages_ = {general,
              new PowerPage(config, nullptr),
              new SharedFoldersPage(config, nullptr),
              new SnapshotsPage(config, nullptr),
              new IsolationPage(config, nullptr),
              new AdvancedPage(config, nullptr)};

    sstOptions_ = named<QStackedWidget>("sstOptions", this);
    for (int i = 0; i < kGroupCount; ++i) {
        new QTreeWidgetItem(lvwOptionsList_, {QString::fromLatin1(kGroupCaptions[i]), QString()});
        // A page taller than the window scrolls rather than being squeezed.
        auto* scroll = new QScrollArea(sstOptions_);
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setWidget(pages_[static_cast<std::size_t>(i)]);
        sstOptions_->addWidget(scroll);
        connect(pages_[static_cast<std::size_t>(i)], &OptionPage::edited, this, &OptionsPanel::edited);
    }
    connect(lvwOptionsList_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        const int row = lvwOptionsList_->indexOfTopLevelItem(item);
        if (row >= 0) sstOptions_->setCurrentIndex(row);
    });
    lvwOptionsList_->setCurrentItem(lvwOptionsList_->topLevelItem(0));

    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(lvwOptionsList_);
    splitter->addWidget(sstOptions_);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 3);
    splitter->setSizes({3000, 7000});  // the pages get the room; summaries are elided and shown in full as tips
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
}

void OptionsPanel::fill() {
    for (OptionPage* page : pages_) page->fill();
    refreshSummaries();
}

void OptionsPanel::refreshSummaries() {
    for (int i = 0; i < kGroupCount; ++i) {
        const QString summary = QString::fromStdString(optionSummary(config_, i));
        QTreeWidgetItem* item = lvwOptionsList_->topLevelItem(i);
        item->setText(1, summary);
        item->setToolTip(1, summary);
    }
}

void OptionsPanel::relabel(int languageOffset) {
    captions_.apply(languageOffset);
    for (OptionPage* page : pages_) page->relabel(languageOffset);
}

}  // namespace arden::gui

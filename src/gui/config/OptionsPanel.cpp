#include "gui/config/OptionsPanel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <algorithm>
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
#include "gui/support/ListWidth.h"

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
    connect(general, &GeneralPage::machineFitted, this, &OptionsPanel::machineFitted);
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
        keepListsNarrow(pages_[static_cast<std::size_t>(i)]);
        scroll->setWidget(pages_[static_cast<std::size_t>(i)]);
        sstOptions_->addWidget(scroll);
        connect(pages_[static_cast<std::size_t>(i)], &OptionPage::edited, this, &OptionsPanel::edited);
    }
    connect(lvwOptionsList_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        const int row = lvwOptionsList_->indexOfTopLevelItem(item);
        if (row >= 0) sstOptions_->setCurrentIndex(row);
    });
    lvwOptionsList_->setCurrentItem(lvwOptionsList_->topLevelItem(0));

    splitter_ = new QSplitter(Qt::Horizontal, this);
    splitter_->setChildrenCollapsible(false);
    splitter_->addWidget(lvwOptionsList_);
    splitter_->addWidget(sstOptions_);
    splitter_->setStretchFactor(0, 1);
    splitter_->setStretchFactor(1, 3);
    splitter_->setSizes({3000, 7000});  // until the panel has its size: then fitListToSummaries
    connect(splitter_, &QSplitter::splitterMoved, this, [this] { userPlacedSplitter_ = true; });
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter_);
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
        item->setToolTip(0, summary);  // the whole row tells the summary in full
        item->setToolTip(1, summary);
    }
}

void OptionsPanel::showPage(int page) {
    if (QTreeWidgetItem* item = lvwOptionsList_->topLevelItem(page)) lvwOptionsList_->setCurrentItem(item);
}

void OptionsPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!userPlacedSplitter_) fitListToSummaries();
}

void OptionsPanel::fitListToSummaries() {
    // The list is as wide as its widest summary needs, at most half the panel; the page takes
    // the rest. Once the user drags the splitter, their choice stays; a summary that no longer
    // fits is elided and still shown in full as the row's tip.
    const QFontMetrics metrics(lvwOptionsList_->font());
    int widest = 0;
    for (int i = 0; i < kGroupCount; ++i)
        widest = std::max(widest, metrics.horizontalAdvance(lvwOptionsList_->topLevelItem(i)->text(1)));
    const int padding = 4 * lvwOptionsList_->frameWidth() + 3 * metrics.averageCharWidth();
    const int need = lvwOptionsList_->header()->sectionSize(0) + widest + padding;
    const int total = splitter_->width() - splitter_->handleWidth();
    const int list = std::max(lvwOptionsList_->minimumSizeHint().width(), std::min(need, total / 2));
    splitter_->setSizes({list, total - list});
}

void OptionsPanel::relabel(int languageOffset) {
    captions_.apply(languageOffset);
    for (OptionPage* page : pages_) page->relabel(languageOffset);
}

}  // namespace arden::gui

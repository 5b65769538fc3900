#pragma once
// The Options tab of an editor: the list of the six option groups with a one-line summary of
// each, and beside it the page of the group that is selected.
#include <QWidget>
#include <array>

#include "core/config/VmConfiguration.h"
#include "gui/config/ConfigWidgets.h"

class QSplitter;
class QStackedWidget;
class QTreeWidget;

namespace arden::gui {

class OptionPage;

class OptionsPanel : public QWidget {
    Q_OBJECT
public:
    static constexpr int kGroupCount = 6;

    OptionsPanel(VmConfiguration& config, QWidget* parent);

    // Shows the model on every page and rewrites the six summaries; emits nothing.
    void fill();
    // Writes the summary of each of the six groups into its entry's second column.
    void refreshSummaries();
    void relabel(int languageOffset);
    // Chooses the entry of option page `page` (0-5) and shows the page.
    void showPage(int page);

protected:
    void resizeEvent(QResizeEvent* event) override;

signals:
    // A page changed the model.
    void edited();
    void displayNameChanged(const QString& name);
    void machineFitted();

private:
    void fitListToSummaries();

    VmConfiguration& config_;
    QTreeWidget* lvwOptionsList_;
    QStackedWidget* sstOptions_;
    QSplitter* splitter_;
    bool userPlacedSplitter_ = false;
    std::array<OptionPage*, kGroupCount> pages_{};
    Captions captions_;
};

}  // namespace arden::gui

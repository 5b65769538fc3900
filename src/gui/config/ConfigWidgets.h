#pragma once
// Small helpers shared by the editor's pages: controls created with their object names, and
// the table of captions that UpdateUILabels walks to relabel a page from the string table.
#include <QString>
#include <functional>
#include <utility>
#include <vector>

#include "gui/support/NamedWidget.h"

class QAbstractButton;
class QComboBox;
class QFormLayout;
class QGroupBox;
class QLabel;
class QTabWidget;
class QTreeWidget;
class QWidget;

namespace arden::gui {

// The caption of every control of a page, by string-table id. A caption that ends in ":" or
// "..." is the loaded text with that ending appended.
class Captions {
public:
    void add(QLabel* label, int id, const char* ending = "");
    void add(QAbstractButton* button, int id, const char* ending = "");
    void add(QGroupBox* frame, int id, const char* ending = "");
    void addItem(QComboBox* list, int index, int id);
    void addHeader(QTreeWidget* list, int column, int id);
    void addTab(QTabWidget* tabs, int index, int id);

    // Loads every caption with `languageOffset` added to its id.
    void apply(int languageOffset) const;

private:
    void bind(int id, const char* ending, std::function<void(const QString&)> set);
    std::vector<std::function<void(int)>> setters_;
};

// A two-column list of single entries, its headers captioned by `firstHeaderId` and
// `secondHeaderId`; the first column fits its contents, the second takes the rest.
QTreeWidget* makeListView(const char* name, QWidget* parent, Captions& captions, int firstHeaderId, int secondHeaderId);

// A form row: a label named `labelName`, captioned "<text of labelId>:", for `field`
// (`buddy` takes the label's shortcut focus; the field itself when null).
void addCaptionedRow(QFormLayout* form, Captions& captions, const char* labelName, int labelId, QWidget* field,
                     QWidget* buddy = nullptr);

}  // namespace arden::gui

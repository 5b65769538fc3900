#include "gui/config/ConfigWidgets.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QTabWidget>
#include <QTreeWidget>

#include "gui/support/UiText.h"

namespace arden::gui {

void Captions::bind(int id, const char* ending, std::function<void(const QString&)> set) {
    const QString tail = QString::fromLatin1(ending);
    setters_.push_back([id, tail, set = std::move(set)](int offset) { set(uiText(id, offset) + tail); });
}

void Captions::add(QLabel* label, int id, const char* ending) {
    bind(id, ending, [label](const QString& t) { label->setText(t); });
}

void Captions::add(QAbstractButton* button, int id, const char* ending) {
    bind(id, ending, [button](const QString& t) { button->setText(t); });
}

void Captions::add(QGroupBox* frame, int id, const char* ending) {
    bind(id, ending, [frame](const QString& t) { frame->setTitle(t); });
}

void Captions::addItem(QComboBox* list, int index, int id) {
    while (list->count() <= index) list->addItem(QString());
    bind(id, "", [list, index](const QString& t) { list->setItemText(index, t); });
}

void Captions::addHeader(QTreeWidget* list, int column, int id) {
    bind(id, "", [list, column](const QString& t) { list->headerItem()->setText(column, t); });
}

void Captions::addTab(QTabWidget* tabs, int index, int id) {
    bind(id, "", [tabs, index](const QString& t) { tabs->setTabText(index, t); });
}

void Captions::apply(int languageOffset) const {
    for (const auto& set : setters_) set(languageOffset);
}

QTreeWidget* makeListView(const char* name, QWidget* parent, Captions& captions, int firstHeaderId, int secondHeaderId) {
    auto* list = named<QTreeWidget>(name, parent);
    list->setColumnCount(2);
    list->setRootIsDecorated(false);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    list->header()->setStretchLastSection(true);
    captions.addHeader(list, 0, firstHeaderId);
    captions.addHeader(list, 1, secondHeaderId);
    return list;
}

void addCaptionedRow(QFormLayout* form, Captions& captions, const char* labelName, int labelId, QWidget* field,
                     QWidget* buddy) {
    auto* label = named<QLabel>(labelName, field->parentWidget());
    label->setBuddy(buddy ? buddy : field);
    captions.add(label, labelId, ":");
    form->addRow(label, field);
}

}  // namespace arden::gui

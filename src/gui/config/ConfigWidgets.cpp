#include "gui/config/ConfigWidgets.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
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

}  // namespace arden::gui

#include "gui/support/ListWidth.h"

#include <QComboBox>
#include <algorithm>

namespace arden::gui {
namespace {

constexpr int kListChars = 44;          // a long guest name ("Windows Server 2003, Enterprise Edition")
constexpr int kEditableListChars = 56;  // a host device path

}  // namespace

void keepListsNarrow(QWidget* page) {
    for (QComboBox* list : page->findChildren<QComboBox*>()) {
        const int chars = list->isEditable() ? kEditableListChars : kListChars;
        list->setMaximumWidth(std::max(list->sizeHint().width(), list->fontMetrics().averageCharWidth() * chars));
    }
}

}  // namespace arden::gui

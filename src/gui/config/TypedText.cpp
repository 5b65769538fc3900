#include "gui/config/TypedText.h"

#include <QApplication>
#include <QLineEdit>
#include <QVariant>

namespace arden::gui {
namespace {

constexpr const char* kRefusedProperty = "ardenRefusedText";

}  // namespace

void markRefused(QWidget* box, bool refused) { box->setProperty(kRefusedProperty, refused); }

QWidget* refusedBox(const QWidget* scope) {
    for (QLineEdit* box : scope->findChildren<QLineEdit*>()) {
        if (box->property(kRefusedProperty).toBool()) return box;
    }
    return nullptr;
}

bool commitTypedText(QWidget* scope) {
    if (!scope) return true;
    auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    if (box && scope->isAncestorOf(box)) emit box->editingFinished();
    QWidget* refused = refusedBox(scope);
    if (!refused) return true;
    refused->setFocus();
    if (auto* line = qobject_cast<QLineEdit*>(refused)) line->selectAll();
    return false;
}

}  // namespace arden::gui

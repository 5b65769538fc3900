#pragma once
// Driving the Hardware tab: choosing an entry by type, adding a device through the real
// frmAddHardware (answered once it is shown modally), and the controls of the device pages.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

#include "BuilderTestSupport.h"
#include "gui/hardware/frmAddHardware.h"

namespace arden::gui::test {

// The first entry of `type` in the hardware list, chosen; null when there is none.
inline QTreeWidgetItem* chooseDevice(Builder* b, DeviceType type, int nth = 0) {
    auto* list = child<QTreeWidget>(b, "lvwHardwareList");
    const QString prefix = QStringLiteral("H%1|").arg(typeNumber(type));
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = list->topLevelItem(i);
        if (item->data(0, Qt::UserRole).toString().startsWith(prefix) && nth-- == 0) {
            list->setCurrentItem(item);
            return item;
        }
    }
    return nullptr;
}

// What the add dialog offered, and whether the chosen row could be added.
struct AddDialogSeen {
    QStringList offered;
    QString info;
    bool okEnabled = false;
};

// Clicks cmdHardwareAdd; in the dialog chooses the row named `typeName` and presses OK (or
// Cancel when `accept` is false, or when the row is not offered).
inline AddDialogSeen addThroughDialog(Builder* b, const QString& typeName, bool accept = true) {
    AddDialogSeen seen;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<frmAddHardware*>(QApplication::activeModalWidget());
        if (!dialog) {
            ADD_FAILURE() << "frmAddHardware is not shown";
            return;
        }
        auto* list = child<QTreeWidget>(dialog, "lvwAvailableHardware");
        seen.offered = column(list, 0);
        const auto found = list->findItems(typeName, Qt::MatchExactly, 0);
        if (!found.isEmpty()) list->setCurrentItem(found.front());
        seen.info = child<QLabel>(dialog, "lblInfo")->text();
        auto* ok = child<QPushButton>(dialog, "cmdOK");
        seen.okEnabled = ok->isEnabled();
        if (accept && !found.isEmpty()) ok->click();
        else child<QPushButton>(dialog, "cmdCancel")->click();
    });
    child<QPushButton>(b, "cmdHardwareAdd")->click();
    return seen;
}

// Types `text` into a text box or an editable list and leaves it.
inline void typeInto(QWidget* control, const QString& text) {
    if (auto* list = qobject_cast<QComboBox*>(control)) {
        list->setCurrentText(text);
        emit list->lineEdit()->editingFinished();
    } else if (auto* box = qobject_cast<QLineEdit*>(control)) {
        box->setText(text);
        emit box->editingFinished();
    }
}

// Chooses the entry of `list` whose text is `text`, as a user does.
inline bool pick(QComboBox* list, const QString& text) {
    const int index = list->findText(text);
    if (index < 0) return false;
    list->setCurrentIndex(index);
    emit list->activated(index);
    return true;
}

}  // namespace arden::gui::test

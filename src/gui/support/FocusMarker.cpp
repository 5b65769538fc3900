#include "gui/support/FocusMarker.h"

#include <QEvent>
#include <QFocusFrame>
#include <QPalette>
#include <QWidget>

namespace arden::gui {
namespace {

// Puts the frame around its control on focus in and takes it away on focus out.
class FocusMarker : public QObject {
public:
    explicit FocusMarker(QWidget* control) : QObject(control), control_(control) {
        control->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != control_) return false;
        if (event->type() == QEvent::FocusIn) {
            if (!frame_) {
                frame_ = new QFocusFrame(control_->parentWidget());
                frame_->setObjectName(control_->objectName() + "Focus");
                QPalette p = frame_->palette();
                p.setColor(QPalette::WindowText, p.color(QPalette::Highlight));
                frame_->setPalette(p);
            }
            frame_->setWidget(control_);
        } else if (event->type() == QEvent::FocusOut && frame_) {
            frame_->setWidget(nullptr);
        }
        return false;
    }

private:
    QWidget* control_;
    QFocusFrame* frame_ = nullptr;
};

}  // namespace

void showFocusOf(QWidget* control) { new FocusMarker(control); }

}  // namespace arden::gui

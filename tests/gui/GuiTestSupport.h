#pragma once
// Helpers of the GUI tests: find a control by object name, fail clearly when it is missing.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

namespace arden::gui::test {

template <typename T>
T* child(QObject* root, const char* name) {
    T* w = root->findChild<T*>(QString::fromLatin1(name));
    if (!w) ADD_FAILURE() << "no control named " << name;
    return w;
}

// Lets queued events (timers with zero delay, deferred deletes) run.
inline void settle() {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

// Runs `act` on the next application-modal window as soon as it is shown, from inside the
// call that shows it and waits; gives up after a few seconds when none is shown.
inline void onNextModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    timer->setInterval(10);
    auto ticks = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [timer, act, ticks] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal && ++*ticks < 300) return;
        timer->stop();
        timer->deleteLater();
        if (modal) act(modal);
    });
    timer->start();
}

}  // namespace arden::gui::test

// Readable QString values in test failures.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

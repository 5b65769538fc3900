#pragma once
// Helpers of the GUI tests: find a control by object name, fail clearly when it is missing.
#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>

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

}  // namespace arden::gui::test

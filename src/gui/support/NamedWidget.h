#pragma once
// Controls are created with their object names, so that tests and accessibility tools find
// them by the names the program gives them.
#include <QString>
#include <utility>

namespace arden::gui {

template <typename W, typename... A>
W* named(const char* name, A&&... args) {
    W* w = new W(std::forward<A>(args)...);
    w->setObjectName(QString::fromLatin1(name));
    return w;
}

}  // namespace arden::gui

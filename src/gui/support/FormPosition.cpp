#include "gui/support/FormPosition.h"

#include <QGuiApplication>
#include <algorithm>
#include <QScreen>
#include <QWidget>

#include "core/support/cInifile.h"

namespace arden::gui {
namespace {

cInifile openSection(const QString& iniPath, const QString& section) {
    cInifile ini;
    ini.setPath(iniPath.toStdString());
    ini.setSection(section.toStdString());
    return ini;
}

}  // namespace

bool saveFormPosition(const QWidget& window, const QString& iniPath, const QString& section, QString* error) {
    WindowPlacement placement;
    const QRect normal = window.isMaximized() ? window.normalGeometry() : window.geometry();
    placement.Left = normal.x();
    placement.Top = normal.y();
    placement.Width = normal.width();
    placement.Height = normal.height();
    placement.Maximised = window.isMaximized();
    placement.Minimised = window.isMinimized();
    cInifile ini = openSection(iniPath, section);
    if (ini.SaveFormPosition(placement)) return true;
    if (error) *error = QString::fromStdString(ini.LastError());
    return false;
}

void centreOver(QWidget& window, const QWidget& owner) {
    const QWidget* top = owner.window();
    QRect placed(QPoint(), window.size());
    placed.moveCenter(top->geometry().center());
    if (const QScreen* screen = top->screen()) {
        const QRect area = screen->availableGeometry();
        placed.moveLeft(std::clamp(placed.left(), area.left(), std::max(area.left(), area.right() - placed.width())));
        placed.moveTop(std::clamp(placed.top(), area.top(), std::max(area.top(), area.bottom() - placed.height())));
    }
    window.move(placed.topLeft());
}

bool loadFormPosition(QWidget& window, const QString& iniPath, const QString& section) {
    WindowPlacement placement;
    placement.Width = -1;
    cInifile ini = openSection(iniPath, section);
    ini.LoadFormPosition(placement);
    if (placement.Width <= 0 || placement.Height <= 0) {
        if (placement.Maximised) window.setWindowState(window.windowState() | Qt::WindowMaximized);
        return placement.Maximised;
    }
    QRect wanted(placement.Left, placement.Top, placement.Width, placement.Height);
    // A placement from a screen that is no longer attached is ignored; one from a larger
    // screen (or another scale) is made to fit the screen that holds most of it.
    const QScreen* holder = nullptr;
    long long most = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect common = screen->availableGeometry().intersected(wanted);
        const long long area = static_cast<long long>(common.width()) * common.height();
        if (!common.isEmpty() && area > most) {
            most = area;
            holder = screen;
        }
    }
    if (!holder) return false;
    const QRect area = holder->availableGeometry();
    wanted.setSize(wanted.size().boundedTo(area.size()));
    wanted.moveLeft(std::clamp(wanted.left(), area.left(), area.right() + 1 - wanted.width()));
    wanted.moveTop(std::clamp(wanted.top(), area.top(), area.bottom() + 1 - wanted.height()));
    window.setGeometry(wanted);
    if (placement.Maximised) window.setWindowState(window.windowState() | Qt::WindowMaximized);
    return true;
}

}  // namespace arden::gui

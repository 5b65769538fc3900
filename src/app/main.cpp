// arden-forge [file.vmx]: the desktop program.
#include <QApplication>
#include <QStringList>
#include <QTimer>

#include "gui/shell/frmMain.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Arden Forge");
    QApplication::setOrganizationName("Brackenware");
    QApplication::setApplicationVersion(ARDEN_VERSION);
    QApplication::setDesktopFileName("arden-forge");

    // The command line as one text: a path with blanks arrives whole whether or not the
    // shell kept its quotes.
    QStringList args = QApplication::arguments();
    args.removeFirst();
    arden::gui::frmMain window(args.join(' '));
    window.show();
    // Start-up measurement: quit as soon as the event loop has shown the window.
    if (qEnvironmentVariableIsSet("ARDEN_STARTUP_PROBE")) QTimer::singleShot(0, &app, &QCoreApplication::quit);
    return app.exec();
}

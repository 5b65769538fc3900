// arden-forge [file.vmx]: the desktop program.
#include <QApplication>
#include <cstdio>
#include <cstring>
#include <QStringList>
#include <QTimer>

#include "gui/shell/frmMain.h"

namespace {

// --version and --help are answered before Qt starts, so they work without a display.
bool answeredInformationOption(int argc, char** argv) {
    if (argc != 2) return false;
    if (std::strcmp(argv[1], "--version") == 0) {
        std::fputs("arden-forge (Arden Forge) " ARDEN_VERSION "\n", stdout);
        return true;
    }
    if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) {
        std::fputs("Usage: arden-forge [FILE.vmx]\n"
                   "       arden-forge --help | --version\n\n"
                   "Create and edit VMware virtual machine configurations (.vmx) and virtual disks\n"
                   "(.vmdk). FILE.vmx, when given, opens in an editor tab; the rest of the command line\n"
                   "is taken as one path, so a name with blanks needs no quotes.\n\n"
                   "  -h, --help     print this help and exit\n"
                   "      --version  print the version and exit\n\n"
                   "The same configurations and disks can be scripted with arden-forge-cli.\n",
                   stdout);
        return true;
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (answeredInformationOption(argc, argv)) return 0;
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

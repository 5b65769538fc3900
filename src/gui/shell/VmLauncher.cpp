#include "gui/shell/VmLauncher.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace arden::gui {

LaunchPlan planLaunch(const QString& vmxPath, const QString& launchApplication) {
    LaunchPlan plan;
    const QString path = vmxPath.trimmed();
    if (!launchApplication.trimmed().isEmpty()) {
        plan.program = launchApplication.trimmed();
        plan.argument = path;
        plan.workingDir = QFileInfo(plan.program).absolutePath();
    } else {
        plan.argument = path;
        plan.workingDir = QFileInfo(path).absolutePath();
    }
    return plan;
}

QString LaunchVmx(const LaunchPlan& plan) {
    if (plan.argument.isEmpty()) return QStringLiteral("No configuration is selected to launch.");
    if (plan.program.isEmpty()) {
        if (QDesktopServices::openUrl(QUrl::fromLocalFile(plan.argument))) return {};
        return QStringLiteral("Could not launch \"%1\": no program is set under Options (\"Target Platform to "
                              "Launch VMX files\") and the desktop has no application to open .vmx files with.")
            .arg(plan.argument);
    }
    // An argument vector, not a command text: a path with blanks needs no quoting.
    QProcess process;
    process.setProgram(plan.program);
    process.setArguments({plan.argument});
    process.setWorkingDirectory(plan.workingDir);
    if (process.startDetached()) return {};
    return QStringLiteral("Could not start \"%1\" to launch \"%2\": %3. Check the program set under Options "
                          "(\"Target Platform to Launch VMX files\").")
        .arg(plan.program, plan.argument, process.errorString());
}

}  // namespace arden::gui

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

bool LaunchVmx(const LaunchPlan& plan) {
    if (plan.argument.isEmpty()) return false;
    if (plan.program.isEmpty()) return QDesktopServices::openUrl(QUrl::fromLocalFile(plan.argument));
    // An argument vector, not a command text: a path with blanks needs no quoting.
    return QProcess::startDetached(plan.program, {plan.argument}, plan.workingDir);
}

}  // namespace arden::gui

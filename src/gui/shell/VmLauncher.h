#pragma once
// Starting a configuration with the VMware application: the configured launch program with
// the .vmx path as its argument, or the desktop's default opener for .vmx files.
#include <QString>

namespace arden::gui {

struct LaunchPlan {
    QString program;     // empty: open `argument` with the desktop's default application
    QString argument;    // the .vmx path
    QString workingDir;  // the program's folder (the file's folder for the default opener)
};

// What Launch does for a configuration path and the LaunchApplication setting.
LaunchPlan planLaunch(const QString& vmxPath, const QString& launchApplication);

// Starts the plan without waiting; what the product does then is its own affair. Empty when
// something was started; otherwise the text to show the user, naming what was tried and why it
// did not start.
QString LaunchVmx(const LaunchPlan& plan);

}  // namespace arden::gui

// The disk summary box of the hard-disk page.
#include "core/disks/DiskInformation.h"
#include "gui/disks/DiskDialogs.h"
#include "gui/support/Prompts.h"

namespace arden::gui {

void showDiskInformation(QWidget* parent, const QString& path, disks::DiskBus nodeBus, int languageOffset) {
    disks::DiskReadResult read = disks::readDiskInformation(path.trimmed().toStdString());
    showMessage(parent, read.information ? disks::diskSummaryMessage(*read.information, nodeBus) : read.failure,
                languageOffset);
}

}  // namespace arden::gui

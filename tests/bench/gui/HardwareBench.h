#pragma once
// Hardware-side figures of an editor on a machine with 60 devices (Workstation 5.5x) and on one
// with 100 (Workstation 17.5x, SATA and NVMe disks among them): filling the hardware list,
// choosing an entry and showing its filled page, opening the Add dialog and adding a device.
#include <QString>

namespace arden::bench {

// Prints the figures; false when the machine could not be opened.
bool benchHardware(const QString& scratchFolder);

}  // namespace arden::bench

#include "gui/hardware/FloppyPage.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace arden::gui {

FloppyPage::FloppyPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::Floppy, parent) {
    setObjectName("fraFloppyPage");
    auto* fraConnection = frame("fraFloppyConnection", 299);  // "Connection"
    auto* optFloppyDrive = option(fraConnection, "optFloppyDrive", 303);
    // "auto detect" is a device selector the products understand; a host drive is typed in.
    auto* cboFloppyDrive = deviceList(fraConnection, "cboFloppyDrive", {"auto detect"});
    auto* optFloppyImage = option(fraConnection, "optFloppyImage", 304);
    auto* txtFloppyImage = named<QLineEdit>("txtFloppyImage", fraConnection);
    auto* cmdBrowseFloppyImage = browseButton(fraConnection, "cmdBrowseFloppyImage", txtFloppyImage, 300,
                                              {{301, "*.flp *.img"}, {308, "*"}}, true);
    bindConnection({{Connection::Device, optFloppyDrive, cboFloppyDrive},
                    {Connection::File, optFloppyImage, txtFloppyImage}});

    auto* layout = new QVBoxLayout(fraConnection);
    layout->addWidget(optFloppyDrive);
    indentedRow(layout, {cboFloppyDrive});
    layout->addWidget(optFloppyImage);
    indentedRow(layout, {txtFloppyImage, cmdBrowseFloppyImage});
    stack({statusFrame("chkFloppyEnabled", "chkFloppyConnectedBoot"), fraConnection});
}

}  // namespace arden::gui

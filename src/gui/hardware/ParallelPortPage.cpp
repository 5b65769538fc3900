#include "gui/hardware/ParallelPortPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace arden::gui {

ParallelPortPage::ParallelPortPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::ParallelPort, parent) {
    setObjectName("fraParallelPage");
    auto* fraConnection = frame("fraParConnection", 299);  // "Connection"
    auto* optParPort = option(fraConnection, "optParPort", 306);
    QStringList ports{"auto detect"};
    for (const std::string& p : context.hostPorts.parallel) ports << qs(p);
    auto* cboParPort = deviceList(fraConnection, "cboParPort", ports);
    auto* chkParPortBiDi = flagBox(fraConnection, "chkParPortBiDi", 309, ".bidirectional", false);
    auto* optParFile = option(fraConnection, "optParFile", 312);
    auto* txtParFile = named<QLineEdit>("txtParFile", fraConnection);
    auto* cmdBrowseParFile = browseButton(fraConnection, "cmdBrowseParFile", txtParFile, 302,
                                          {{307, "*.txt *.prn"}, {308, "*"}}, false);
    bindConnection({{Connection::Device, optParPort, cboParPort}, {Connection::File, optParFile, txtParFile}});

    auto* layout = new QVBoxLayout(fraConnection);
    layout->addWidget(optParPort);
    indentedRow(layout, {cboParPort});
    indentedRow(layout, {chkParPortBiDi});
    layout->addWidget(optParFile);
    indentedRow(layout, {txtParFile, cmdBrowseParFile});
    stack({statusFrame("chkParEnabled", "chkParConnectedBoot"), fraConnection});
}

}  // namespace arden::gui

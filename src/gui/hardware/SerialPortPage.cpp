#include "gui/hardware/SerialPortPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/hardware/DeviceTexts.h"
#include "core/support/TextUtil.h"

namespace arden::gui {

SerialPortPage::SerialPortPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::SerialPort, parent) {
    setObjectName("fraSerialPage");
    auto* fraConnection = frame("fraSerConnection", 299);  // "Connection"
    auto* optSerPort = option(fraConnection, "optSerPort", 306);
    QStringList ports{"auto detect"};
    for (const std::string& p : context.hostPorts.serial) ports << qs(p);
    auto* cboSerPort = deviceList(fraConnection, "cboSerPort", ports);
    auto* optSerFile = option(fraConnection, "optSerFile", 312);
    auto* txtSerFile = named<QLineEdit>("txtSerFile", fraConnection);
    auto* cmdBrowseSerFile = browseButton(fraConnection, "cmdBrowseSerFile", txtSerFile, 350,
                                          {{307, "*.txt *.log"}, {308, "*"}}, false);
    auto* optSerPipe = option(fraConnection, "optSerPipe", 313);
    auto* txtSerPipeName = named<QLineEdit>("txtSerPipeName", fraConnection);
    bindConnection({{Connection::Device, optSerPort, cboSerPort},
                    {Connection::File, optSerFile, txtSerFile},
                    {Connection::Pipe, optSerPipe, txtSerPipeName}});
    // The products write the pipe end in lower case; an application at the other end is
    // given ".tryNoRxLoss" so that the guest loses no input while it reads slowly.
    auto* cboSerPipeEnd1 = valueList(fraConnection, "cboSerPipeEnd1", ".pipe.endPoint",
                                     {{"server", 310}, {"client", 311}}, 0);
    auto* cboSerPipeEnd2 = valueList(fraConnection, "cboSerPipeEnd2", ".tryNoRxLoss",
                                     {{"TRUE", 314}, {"FALSE", 315}}, 1);

    auto* layout = new QVBoxLayout(fraConnection);
    layout->addWidget(optSerPort);
    indentedRow(layout, {cboSerPort});
    layout->addWidget(optSerFile);
    indentedRow(layout, {txtSerFile, cmdBrowseSerFile});
    layout->addWidget(optSerPipe);
    indentedRow(layout, {txtSerPipeName});
    auto* ends = new QFormLayout;
    addCaptionedRow(ends, captions_, "lblSerPipeEnd1", 316, cboSerPipeEnd1);
    addCaptionedRow(ends, captions_, "lblSerPipeEnd2", 318, cboSerPipeEnd2);
    auto* endsRow = indentedRow(layout, {});
    endsRow->addLayout(ends, 1);
    // A port the options cannot show (the hosted virtual printer, a port reached over the
    // network) says what it is; it stays as the file has it until another option is chosen.
    // A network port's URI and whether this end listens (server) or connects (client) can be
    // edited.
    auto* lblSerOtherKind = named<QLabel>("lblSerOtherKind", fraConnection);
    layout->addWidget(lblSerOtherKind);
    auto* network = new QFormLayout;
    auto* txtSerNetUri = textBox(fraConnection, "txtSerNetUri", ".fileName");
    auto* cboSerNetEnd = valueList(fraConnection, "cboSerNetEnd", ".network.endPoint", {{"server", 310}, {"client", 311}}, 0);
    addCaptionedRow(network, captions_, "lblSerNetUri", 455, txtSerNetUri);  // "Network URI"
    addCaptionedRow(network, captions_, "lblSerNetEnd", 316, cboSerNetEnd);  // "This End"
    layout->addLayout(network);
    auto showKind = [=](const Device& d) {
        const std::string type = d.settings.text(".fileType");
        const bool other = !connectionOf(DeviceType::SerialPort, type) && d.settings.has(".fileType");
        lblSerOtherKind->setVisible(other);
        lblSerOtherKind->setText(other ? qs(deviceSummary(d)) : QString());
        const bool net = equalsIgnoreCase(type, "network");
        network->setRowVisible(txtSerNetUri, net);
        network->setRowVisible(cboSerNetEnd, net);
    };
    onFill(showKind);
    connect(this, &DevicePage::edited, this, [this, showKind] {
        if (const Device* d = device()) showKind(*d);
    });

    auto* fraSerYield = frame("fraSerYield", 355);  // "Mode"
    auto* yield = new QVBoxLayout(fraSerYield);
    yield->addWidget(flagBox(fraSerYield, "chkSerYield", 319, ".yieldOnMsrRead", false));
    stack({statusFrame("chkSerEnabled", "chkSerConnectedBoot"), fraConnection, fraSerYield});
}

}  // namespace arden::gui

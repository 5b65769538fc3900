#include "gui/hardware/HardDiskPage.h"

#include <QCheckBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/support/TextUtil.h"
#include "gui/disks/DiskDialogs.h"

namespace arden::gui {

HardDiskPage::HardDiskPage(VmConfiguration& config, DevicePageContext& context, QWidget* parent)
    : DevicePage(config, context, DeviceType::HardDisk, parent) {
    setObjectName("fraHDPage");
    auto* fraHDFile = frame("fraHDFile", 326);  // "Disk File"
    auto* lblHDExisting = named<QLabel>("lblHDExisting", fraHDFile);
    captions_.add(lblHDExisting, 328, ":");  // "Use Existing"
    auto* txtHDFile = textBox(fraHDFile, "txtHDFile", ".fileName");
    auto* cmdBrowseHDFile = browseButton(fraHDFile, "cmdBrowseHDFile", txtHDFile, 337, {{338, "*.vmdk"}, {308, "*"}}, false);
    auto* cmdHDCreate = named<QPushButton>("cmdHDCreate", fraHDFile);
    captions_.add(cmdHDCreate, 329, "...");  // "Create New"
    connect(cmdHDCreate, &QPushButton::clicked, this, [this, txtHDFile] {
        const Device* d = device();
        if (!d) return;
        CreateDiskRequest preset;
        preset.folder = qs(config_.identity.vmxFolder);
        preset.adapter = disks::adapterForNode(nodeBus(*d), scsiControllerType(*d));
        if (!d->node.ControllerType().empty()) preset.nodeBus = nodeBus(*d);
        preset.languageOffset = languageOffset();
        QString path;
        if (!createDiskFor(this, preset, path)) return;
        txtHDFile->setText(path);
        emit txtHDFile->editingFinished();
    });
    auto* cmdHDInfo = named<QPushButton>("cmdHDInfo", fraHDFile);
    captions_.add(cmdHDInfo, 174, "...");  // "Current Disk Information"
    connect(cmdHDInfo, &QPushButton::clicked, this, [this, txtHDFile] {
        if (const Device* d = device()) showDiskInformation(this, diskPath(txtHDFile->text()), nodeBus(*d), languageOffset());
    });
    auto* fileLayout = new QVBoxLayout(fraHDFile);
    fileLayout->addWidget(lblHDExisting);
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(txtHDFile, 1);
    fileRow->addWidget(cmdBrowseHDFile);
    fileLayout->addLayout(fileRow);
    auto* createRow = new QHBoxLayout;
    createRow->addStretch(1);
    createRow->addWidget(cmdHDInfo);
    createRow->addWidget(cmdHDCreate);
    fileLayout->addLayout(createRow);

    // Mode: Persistent without Independent, or Independent and then Persistent or Non-Persistent.
    auto* fraHDMode = frame("fraHDMode", 355);  // "Mode"
    chkHDIndependent_ = named<QCheckBox>("chkHDIndependent", fraHDMode);
    captions_.add(chkHDIndependent_, 330);
    optHDPersist_ = option(fraHDMode, "optHDPersist", 331);
    optHDNonPersist_ = option(fraHDMode, "optHDNonPersist", 332);
    // A mode the page does not offer ("undoable", "nonpersistent" of older products) is shown
    // as read, with no option chosen, and kept until the user chooses one.
    auto* lblHDStoredMode = named<QLabel>("lblHDStoredMode", fraHDMode);
    lblHDStoredMode->setWordWrap(true);
    onFill([this, lblHDStoredMode](const Device& d) {
        const std::string stored = modeAsRead(d);
        const DiskMode mode = diskModeOf(stored);
        const bool offered = stored.empty() || equalsIgnoreCase(diskModeValue(mode), stored);
        lblHDStoredMode->setVisible(!offered);
        lblHDStoredMode->setText(offered ? QString() : uiText(375, languageOffset()) + " " + qs(stored));
        for (QAbstractButton* b : {optHDPersist_, optHDNonPersist_}) b->setAutoExclusive(false);
        chkHDIndependent_->setChecked(offered && mode.independent);
        optHDPersist_->setChecked(offered && mode.persistent);
        optHDNonPersist_->setChecked(offered && !mode.persistent);
        for (QAbstractButton* b : {optHDPersist_, optHDNonPersist_}) b->setAutoExclusive(true);
    });
    connect(chkHDIndependent_, &QCheckBox::clicked, this,
            [this](bool on) { storeMode({on, !optHDNonPersist_->isChecked()}); });
    connect(optHDPersist_, &QRadioButton::clicked, this, [this] { storeMode({chkHDIndependent_->isChecked(), true}); });
    // Choosing Non-Persistent makes the disk independent: only such a disk can drop its changes.
    connect(optHDNonPersist_, &QRadioButton::clicked, this, [this] { storeMode({true, false}); });
    auto* modeLayout = new QVBoxLayout(fraHDMode);
    modeLayout->addWidget(lblHDStoredMode);
    modeLayout->addWidget(chkHDIndependent_);
    indentedRow(modeLayout, {optHDPersist_});
    indentedRow(modeLayout, {optHDNonPersist_});

    stack({statusFrame("chkHDEnabled", nullptr), nodeFrame("optHDIDE", "cboHDIDE", "optHDSCSI", "cboHDSCSI", "optHDSATA", "cboHDSATA", "optHDNVMe", "cboHDNVMe"), fraHDFile,
           fraHDMode});
}

std::string HardDiskPage::modeAsRead(const Device& d) {
    if (auto mode = d.settings.get(".mode")) return *mode;
    // A mode the editor does not manage stays a line of the file: its value as written.
    for (const KeptKeyLine& k : d.keptLines) {
        if (!equalsIgnoreCase(k.suffix, ".mode")) continue;
        const std::size_t open = k.rest.find('"'), close = k.rest.rfind('"');
        return open < close ? k.rest.substr(open + 1, close - open - 1) : std::string{};
    }
    return {};
}

disks::DiskBus HardDiskPage::nodeBus(const Device& d) {
    constexpr disks::DiskBus kDiskBuses[] = {disks::DiskBus::Ide, disks::DiskBus::Scsi, disks::DiskBus::Sata, disks::DiskBus::Nvme};
    const auto bus = busFromName(d.node.ControllerType());
    return kDiskBuses[static_cast<std::size_t>(bus.value_or(Bus::Ide))];
}

std::string HardDiskPage::scsiControllerType(const Device& d) const {
    if (d.node.ControllerType() != "SCSI") return {};
    const Device* controller = config_.devices.findByNumber(DeviceType::ScsiController, d.node.ControllerNumber());
    return controller ? controller->settings.text(".virtualDev") : std::string{};
}

QString HardDiskPage::diskPath(const QString& fileName) const {
    // A disk in the machine's folder is written by its name alone.
    if (fileName.isEmpty() || QDir::isAbsolutePath(fileName)) return fileName;
    return QDir(qs(config_.identity.vmxFolder)).filePath(fileName);
}

void HardDiskPage::storeMode(DiskMode mode) {
    store([&](Device& d) {
        const std::string value(diskModeValue(mode));
        if (d.settings.get(".mode") == value) return false;
        d.settings.set(".mode", value);
        return true;
    });
    refill();  // the three controls show the mode that was stored
}

}  // namespace arden::gui

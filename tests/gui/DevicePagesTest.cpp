// The device pages: every control reaches the file and comes back, filling a page is no change,
// what the number boxes refuse, the hard-disk page's modes and disk buttons, the image picker;
// the hardware list: Add, the node lists, Remove.
#include <QAbstractButton>
#include <QAbstractSlider>
#include <QCheckBox>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStackedWidget>

#include "GuiTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;

// One edit of one control on the page of the first device of `type`: a box or option set "on"
// or "off", an entry picked, a text typed. `shown` is what the control shows once the saved file
// is opened again, when that is not `value`.
enum class Act { Set, Pick, Type };
struct Edit { DeviceType type; const char* control; Act act; QString value, shown; };

QString shown(Builder* b, DeviceType type, const char* control) {
    chooseDevice(b, type);
    QWidget* w = child<QWidget>(b, control);
    if (auto* button = qobject_cast<QAbstractButton*>(w)) return button->isChecked() ? "on" : "off";
    if (auto* list = qobject_cast<QComboBox*>(w)) return list->currentText();
    return qobject_cast<QLineEdit*>(w)->text();
}

void apply(Builder* b, const Edit& e) {
    const QString before = shown(b, e.type, e.control);  // chooses the device
    QWidget* w = child<QWidget>(b, e.control);
    if (e.act == Act::Set && before != e.value) qobject_cast<QAbstractButton*>(w)->click();
    if (e.act == Act::Pick && !pick(qobject_cast<QComboBox*>(w), e.value)) ADD_FAILURE() << "no entry " << e.value;
    if (e.act == Act::Type) typeInto(w, e.value);
}

// Every page, in the order a user goes through them. Names hold blanks, quotes and accents.
const Edit kEdits[] = {
    {DeviceType::Cpu, "chkCPUPae", Act::Set, "on", {}},
    {DeviceType::Memory, "txtMemSize", Act::Type, "258", "256"},
    {DeviceType::Floppy, "txtFloppyImage", Act::Type, "/images/boot \"disk\" ä.flp", {}},
    {DeviceType::Floppy, "optFloppyImage", Act::Set, "on", {}},
    {DeviceType::ParallelPort, "cboParPort", Act::Type, "/dev/parport1", {}},
    {DeviceType::ParallelPort, "chkParPortBiDi", Act::Set, "on", {}},
    {DeviceType::SerialPort, "txtSerPipeName", Act::Type, "\\\\.\\pipe\\com ü 1", {}},
    {DeviceType::SerialPort, "optSerPipe", Act::Set, "on", {}},
    {DeviceType::SerialPort, "cboSerPipeEnd1", Act::Pick, "Client", {}},
    {DeviceType::Usb, "chkUsbAutoConnect", Act::Set, "on", {}},
    {DeviceType::IdeController, "chkIDEEnabled", Act::Set, "off", {}},
    {DeviceType::Sound, "cboAudioDevice", Act::Pick, "SB16 + OPL3/Yamaha Synth", {}},
    {DeviceType::ScsiController, "cboSCSICont", Act::Pick, "LsiLogic", {}},
    {DeviceType::HardDisk, "txtHDFile", Act::Type, "My \"Big\" Dïsk.vmdk", {}},
    {DeviceType::HardDisk, "cboHDSCSI", Act::Pick, "SCSI 0:1", "SCSI 0:1 - Hard Disk 1"},
    {DeviceType::HardDisk, "optHDSCSI", Act::Set, "on", {}},
    {DeviceType::HardDisk, "optHDNonPersist", Act::Set, "on", {}},
    {DeviceType::CdRom, "txtCDRImage", Act::Type, "/isos/Réseau \"live\" 1.iso", {}},
    {DeviceType::CdRom, "optCDRImage", Act::Set, "on", {}},
    {DeviceType::GenericScsi, "txtGenSCSIDevice", Act::Type, "/dev/sg 2", {}},
    {DeviceType::GenericScsi, "cboGenSCSI", Act::Pick, "SCSI 0:3", "SCSI 0:3 - Gen SCSI 1"},
    {DeviceType::Display, "txtVRamSize", Act::Type, "16", {}},
    {DeviceType::Display, "chkDisplay3D", Act::Set, "on", {}},
    {DeviceType::Mouse, "chkMouseEnabled", Act::Set, "off", {}},
};

TEST(DevicePages, EveryControlOfEveryPageIsSavedAndReadBack) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Every Device", dir.path());
    script.file(qpath(dir / "first.vmdk"));  // the new hard disk's existing disk file
    for (const char* type : {"Parallel Port", "Serial Port", "IDE Controller", "SCSI Controller", "Hard Disk", "Generic SCSI Device"})
        addThroughDialog(b.get(), type);
    script.clear();
    for (const Edit& e : kEdits) apply(b.get(), e);
    EXPECT_EQ(said(script), QStringList{});
    ASSERT_TRUE(b->CreateVmxFile());
    const std::string text = readBytes(dir / "Every Device.vmx");
    for (const char* line : {"\r\nsvga.vramSize = \"16777216\"\r\n", "\r\nmemsize = \"256\"\r\n",
                             "\r\nscsi0:1.mode = \"independent-nonpersistent\"\r\n", "\r\nsound.virtualDev = \"sb16\"\r\n",
                             "\r\nsound.synth.operational = \"TRUE\"\r\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line;

    // Filling every page and relabelling them is no change.
    auto again = openFile(dir / "Every Device.vmx");
    const VmConfiguration before = again->configuration();
    again->UpdateUILabels(500);
    again->UpdateUILabels(0);
    for (const Edit& e : kEdits) EXPECT_EQ(shown(again.get(), e.type, e.control), e.shown.isEmpty() ? e.value : e.shown) << e.control;
    EXPECT_FALSE(again->ChangesPending());
    EXPECT_TRUE(again->configuration() == before);
}

// The number boxes show the core's refusal, or ignore text that is no number, and store nothing.
TEST(DevicePages, NumberBoxesRefuseBadTextAndStoreNothing) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Numbers", dir.path());
    ASSERT_TRUE(b->CreateVmxFile());
    const VmConfiguration before = b->configuration();
    const std::tuple<DeviceType, const char*, QString, QString> cases[] = {
        {DeviceType::Memory, "txtMemSize", "abc", "Invalid Entry: RAM size must be numeric"},
        {DeviceType::Memory, "txtMemSize", "2", "Invalid Memory Size: RAM size out of valid range for Selected Product/Version"},
        {DeviceType::Display, "txtMaxWidth", "wide", ""},
        {DeviceType::Display, "txtVRamSize", "4096", "Invalid Entry: Video RAM size (MB) must be between 1 and 2047"},
    };
    for (const auto& [type, name, typed, shown] : cases) {
        script.clear();
        chooseDevice(b.get(), type);
        auto* box = child<QLineEdit>(b.get(), name);
        const QString stored = box->text();
        typeInto(box, typed);
        EXPECT_EQ(said(script).join("").left(shown.size()), shown) << name << " " << typed;
        if (shown.isEmpty()) {
            EXPECT_EQ(box->text(), stored) << "an ignored text gives way to the stored value";
        }
    }
    EXPECT_FALSE(b->ChangesPending());
    EXPECT_TRUE(b->configuration() == before);

    chooseDevice(b.get(), DeviceType::Memory);
    typeInto(child<QLineEdit>(b.get(), "txtMemSize"), "4");  // the smallest memory taken
    EXPECT_EQ(settingsOf(b.get(), DeviceType::Memory).text("memsize"), "4");
    EXPECT_EQ(child<QAbstractSlider>(b.get(), "sldMemSize")->value(), 4);
}

TEST(DevicePages, PickedImagesAndTypedPathsRewriteTheEntry) {
    ScratchDir dir;
    PromptScript script;
    Builder b;
    b.NewVmxPath = qpath(dir.path());
    b.ImagePath = "/srv/images";
    ASSERT_TRUE(b.start());
    QTreeWidgetItem* floppy = chooseDevice(&b, DeviceType::Floppy);
    script.file("/srv/images/dos 6.22.flp");
    child<QPushButton>(&b, "cmdBrowseFloppyImage")->click();
    EXPECT_EQ(script.shown().at(0).title + " in " + script.shown()[0].startFolder, "Select Floppy Image in /srv/images");
    EXPECT_TRUE(child<QRadioButton>(&b, "optFloppyImage")->isChecked());
    EXPECT_EQ(floppy->text(1), "File /srv/images/dos 6.22.flp");

    QTreeWidgetItem* cd = chooseDevice(&b, DeviceType::CdRom);
    typeInto(child<QLineEdit>(&b, "txtCDRImage"), "/isos/new.iso");
    EXPECT_EQ(cd->text(1), "IDE 1:0, /isos/new.iso");
    EXPECT_TRUE(child<QRadioButton>(&b, "optCDRImage")->isChecked());

    // A host drive in legacy emulation keeps it when another drive is typed.
    arden::test::writeBytes(dir / "old.vmx", "ide1:0.present = \"TRUE\"\r\nide1:0.deviceType = \"atapi-cdrom\"\r\n"
                                              "ide1:0.fileName = \"/dev/hdc\"\r\n");
    auto old = openFile(dir / "old.vmx");
    chooseDevice(old.get(), DeviceType::CdRom);
    EXPECT_TRUE(child<QCheckBox>(old.get(), "chkCDRLegacy")->isChecked());
    typeInto(child<QComboBox>(old.get(), "cboCDRDrive"), "/dev/sr0");
    const DeviceSettings& drive = settingsOf(old.get(), DeviceType::CdRom);
    EXPECT_EQ(drive.text(".deviceType") + " " + drive.text(".fileName"), "atapi-cdrom /dev/sr0");
}

TEST(DevicePages, HardDiskModesCreateNewAndDiskInformation) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Modes", dir.path());
    script.file(qpath(dir / "first.vmdk"));
    addThroughDialog(b.get(), "Hard Disk");
    auto mode = [&] { return settingsOf(b.get(), DeviceType::HardDisk).text(".mode"); };
    QStringList modes{QString::fromStdString(mode())};
    for (const char* control : {"optHDNonPersist", "optHDPersist", "chkHDIndependent"}) {
        child<QAbstractButton>(b.get(), control)->click();
        modes << QString::fromStdString(mode());
    }
    EXPECT_EQ(modes, QStringList({"persistent", "independent-nonpersistent", "independent-persistent", "persistent"}));

    // Create New opens the create-disk dialog on the disk's own adapter; a cancelled dialog
    // changes nothing, a new descriptor becomes the disk's file.
    auto* file = child<QLineEdit>(b.get(), "txtHDFile");
    typeInto(file, "kept.vmdk");
    QString adapterShown;
    for (const char* button : {"cmdCancel", "cmdOK"}) {
        onNextModal([&](QWidget* dialog) {
            for (auto* option : dialog->findChildren<QRadioButton*>(QRegularExpression("^optAdapt")))
                if (option->isChecked()) adapterShown = option->objectName();
            child<QLineEdit>(dialog, "txtNewDisk")->setText("Made Here");
            child<QLineEdit>(dialog, "txtDiskSize")->setText("1");
            child<QPushButton>(dialog, button)->click();
        });
        child<QPushButton>(b.get(), "cmdHDCreate")->click();
        EXPECT_EQ(file->text(), button == std::string("cmdOK") ? qpath(dir / "Made Here.vmdk") : "kept.vmdk");
    }
    EXPECT_EQ(adapterShown, "optAdaptIde") << "a disk on an IDE node starts with the IDE adapter";
    EXPECT_TRUE(std::filesystem::exists(dir / "Made Here.vmdk"));
    child<QPushButton>(b.get(), "cmdHDInfo")->click();
    ASSERT_FALSE(script.messages().empty());
    EXPECT_TRUE(said(script).back().startsWith("Current Disk Information: Disk Path: " + qpath(dir.path()) +
                                               "\r\nDisk Name: Made Here.vmdk\r\n"))
        << said(script).back();
}

// Add offers what fits; a node the core refuses keeps the device where it was, a node held by
// another device moves that device; a full IDE bus sends the next disk to SCSI; Remove chooses the next entry.
TEST(HardwareList, AddNodesAndRemove) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Add", dir.path());  // its DVD/CD-ROM drive holds IDE 1:0
    ASSERT_TRUE(b->CreateVmxFile());
    auto* list = child<QTreeWidget>(b.get(), "lvwHardwareList");
    auto* remove = child<QPushButton>(b.get(), "cmdHardwareRemove");
    chooseDevice(b.get(), DeviceType::Cpu);
    EXPECT_FALSE(remove->isEnabled());
    const QStringList offered = addThroughDialog(b.get(), "Hard Disk", false);
    EXPECT_EQ(offered.back(), "Add a Hard Disk.");
    EXPECT_TRUE(offered.contains("Parallel Port") && offered.contains("Memory")) << offered.join(", ");
    EXPECT_FALSE(b->ChangesPending()) << "Cancel adds nothing";

    addThroughDialog(b.get(), "SCSI Controller");
    script.file(qpath(dir / "a.vmdk"));
    addThroughDialog(b.get(), "Hard Disk");
    QTreeWidgetItem* disk = list->currentItem();
    EXPECT_EQ(disk->text(0) + " " + disk->text(1), "Hard Disk 1 IDE 0:0, " + qpath(dir / "a.vmdk") + " (persistent)");
    ASSERT_TRUE(b->CreateVmxFile());
    script.clear();
    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboHDSCSI"), "SCSI 0:7 - Controller"));
    EXPECT_EQ(said(script), QStringList{"Invalid Node Selection: Node already occupied - cannot move"});
    EXPECT_EQ(disk->text(1), "IDE 0:0, " + qpath(dir / "a.vmdk") + " (persistent)");
    EXPECT_FALSE(b->ChangesPending());

    // The CD-ROM drive's node: the drive moves to the first free IDE node, and both say so.
    auto* ide = child<QComboBox>(b.get(), "cboHDIDE");
    ASSERT_TRUE(pick(ide, "IDE 1:0 - CD-ROM 1"));
    EXPECT_EQ(ide->currentText(), "IDE 1:0 - Hard Disk 1");
    EXPECT_EQ(chooseDevice(b.get(), DeviceType::CdRom)->text(1), "IDE 0:1, auto detect");

    // IDE full: the next disk goes to SCSI after saying so.
    for (const char* file : {"b.vmdk", "c.vmdk", "d.vmdk"}) script.file(qpath(dir / file));
    script.clear();
    for (int i = 0; i < 3; ++i) addThroughDialog(b.get(), "Hard Disk");
    EXPECT_EQ(said(script).filter("No Available").join("|"), "No Available Nodes: No available IDE nodes!");
    EXPECT_TRUE(list->currentItem()->text(1).startsWith("SCSI 0:0, " + qpath(dir / "d.vmdk"))) << list->currentItem()->text(1);

    chooseDevice(b.get(), DeviceType::CdRom);
    remove->click();
    EXPECT_FALSE(column(list, 0).contains("CD-ROM 1"));
    EXPECT_EQ(list->currentItem()->text(0), "Display") << "the next entry is chosen";
    EXPECT_EQ(child<QStackedWidget>(b.get(), "sstHardware")->currentWidget()->objectName(), "fraDisplayPage");
}

}  // namespace
}  // namespace arden::gui::test

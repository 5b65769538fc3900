// The device pages: every control of every page reaches the file and comes back, filling a
// page never counts as a change, and what the pages refuse.
#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QStackedWidget>

#include "HardwareTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::ScratchDir;

enum class Act { Check, Clear, Choose, Pick, Type };

// One edit of one control on the page of the first device of `type`. `shown` is what the
// control shows once the saved file is opened again (the value itself when empty).
struct Edit {
    DeviceType type;
    const char* control;
    Act act;
    QString value;
    QString shown;
};

void apply(Builder* b, const Edit& e) {
    ASSERT_NE(chooseDevice(b, e.type), nullptr) << e.control;
    QWidget* w = child<QWidget>(b, e.control);
    ASSERT_NE(w, nullptr);
    switch (e.act) {
        case Act::Check:
        case Act::Clear: {
            auto* box = qobject_cast<QCheckBox*>(w);
            ASSERT_NE(box, nullptr) << e.control;
            if (box->isChecked() != (e.act == Act::Check)) box->click();
            break;
        }
        case Act::Choose: qobject_cast<QRadioButton*>(w)->click(); break;
        case Act::Pick: ASSERT_TRUE(pick(qobject_cast<QComboBox*>(w), e.value)) << e.control; break;
        case Act::Type: typeInto(w, e.value); break;
    }
}

void expectShown(Builder* b, const Edit& e) {
    ASSERT_NE(chooseDevice(b, e.type), nullptr) << e.control;
    QWidget* w = child<QWidget>(b, e.control);
    const QString want = e.shown.isEmpty() ? e.value : e.shown;
    switch (e.act) {
        case Act::Check: EXPECT_TRUE(qobject_cast<QCheckBox*>(w)->isChecked()) << e.control; break;
        case Act::Clear: EXPECT_FALSE(qobject_cast<QCheckBox*>(w)->isChecked()) << e.control; break;
        case Act::Choose: EXPECT_TRUE(qobject_cast<QRadioButton*>(w)->isChecked()) << e.control; break;
        case Act::Pick:
        case Act::Type:
            if (auto* list = qobject_cast<QComboBox*>(w)) EXPECT_EQ(list->currentText(), want) << e.control;
            else EXPECT_EQ(qobject_cast<QLineEdit*>(w)->text(), want) << e.control;
            break;
    }
}

// Every page, every control, in the order a user would go through them. File names hold
// blanks, double quotes and non-ASCII letters.
const Edit kEdits[] = {
    {DeviceType::Cpu, "chkCPUPae", Act::Check, {}, {}},
    {DeviceType::Memory, "txtMemSize", Act::Type, "258", "256"},
    {DeviceType::Floppy, "chkFloppyConnectedBoot", Act::Clear, {}, {}},
    {DeviceType::Floppy, "txtFloppyImage", Act::Type, "/images/boot \"disk\" ä.flp", {}},
    {DeviceType::Floppy, "optFloppyImage", Act::Choose, {}, {}},
    {DeviceType::Floppy, "chkFloppyEnabled", Act::Clear, {}, {}},
    {DeviceType::ParallelPort, "cboParPort", Act::Type, "/dev/parport1", {}},
    {DeviceType::ParallelPort, "chkParPortBiDi", Act::Check, {}, {}},
    {DeviceType::ParallelPort, "chkParConnectedBoot", Act::Clear, {}, {}},
    {DeviceType::SerialPort, "txtSerPipeName", Act::Type, "\\\\.\\pipe\\com ü 1", {}},
    {DeviceType::SerialPort, "optSerPipe", Act::Choose, {}, {}},
    {DeviceType::SerialPort, "cboSerPipeEnd1", Act::Pick, "Client", {}},
    {DeviceType::SerialPort, "cboSerPipeEnd2", Act::Pick, "Application", {}},
    {DeviceType::SerialPort, "chkSerYield", Act::Check, {}, {}},
    {DeviceType::SerialPort, "chkSerEnabled", Act::Clear, {}, {}},
    {DeviceType::Sound, "chkAudioConnectedBoot", Act::Clear, {}, {}},
    {DeviceType::Sound, "chkAudioEnabled", Act::Clear, {}, {}},
    {DeviceType::Network, "chkNicConnectedBoot", Act::Clear, {}, {}},
    {DeviceType::Usb, "chkUsbAutoConnect", Act::Check, {}, {}},
    {DeviceType::IdeController, "chkIDEEnabled", Act::Clear, {}, {}},
    {DeviceType::ScsiController, "cboSCSICont", Act::Pick, "LSI Logic", {}},
    {DeviceType::HardDisk, "txtHDFile", Act::Type, "My \"Big\" Dïsk.vmdk", {}},
    {DeviceType::HardDisk, "cboHDSCSI", Act::Pick, "SCSI 0:1", "SCSI 0:1 - Hard Disk 1"},
    {DeviceType::HardDisk, "optHDSCSI", Act::Choose, {}, {}},
    {DeviceType::HardDisk, "optHDNonPersist", Act::Choose, {}, {}},
    {DeviceType::HardDisk, "chkHDIndependent", Act::Check, {}, {}},
    {DeviceType::CdRom, "txtCDRImage", Act::Type, "/isos/Réseau \"live\" 1.iso", {}},
    {DeviceType::CdRom, "optCDRImage", Act::Choose, {}, {}},
    {DeviceType::CdRom, "chkCDRExclusive", Act::Check, {}, {}},
    {DeviceType::CdRom, "chkCDRConnectedBoot", Act::Clear, {}, {}},
    {DeviceType::GenericScsi, "txtGenSCSIDevice", Act::Type, "/dev/sg 2", {}},
    {DeviceType::GenericScsi, "chkGenConnectedBoot", Act::Clear, {}, {}},
    {DeviceType::GenericScsi, "cboGenSCSI", Act::Pick, "SCSI 0:3", "SCSI 0:3 - Gen SCSI 1"},
    {DeviceType::Display, "txtMaxWidth", Act::Type, "1600", {}},
    {DeviceType::Display, "txtMaxHeight", Act::Type, "1200", {}},
    {DeviceType::Display, "txtVRamSize", Act::Type, "16", {}},
    {DeviceType::Display, "chkDisplay3D", Act::Check, {}, {}},
    {DeviceType::Mouse, "chkMouseEnabled", Act::Clear, {}, {}},
};

// A new machine with one device of every type; adds go through the Add dialog.
std::unique_ptr<Builder> machineWithEveryType(const std::filesystem::path& folder) {
    auto b = newMachine("Every Device", folder);
    for (const char* type : {"Parallel Port", "Serial Port", "IDE Controller", "SCSI Controller", "Hard Disk",
                             "Generic SCSI Device"})
        addThroughDialog(b.get(), type);
    return b;
}

std::unique_ptr<Builder> reopen(const QString& path) {
    auto b = std::make_unique<Builder>();
    b->EditExistingFile = true;
    b->ExistingVmxFileName = path;
    b->CreateBackups = false;
    EXPECT_TRUE(b->start());
    return b;
}

TEST(DevicePages, EveryControlOfEveryPageIsSavedAndReadBack) {
    ScratchDir dir;
    PromptScript script;
    auto b = machineWithEveryType(dir.path());
    for (int t = 0; t < kDeviceTypeCount; ++t)
        ASSERT_NE(chooseDevice(b.get(), static_cast<DeviceType>(t)), nullptr) << "no device of type " << t;
    for (const Edit& e : kEdits) apply(b.get(), e);
    EXPECT_TRUE(script.messages().empty()) << script.messages().front().text.toStdString();
    ASSERT_TRUE(b->CreateVmxFile());

    auto again = reopen(b->vmxPath());
    for (const Edit& e : kEdits) expectShown(again.get(), e);
    EXPECT_FALSE(again->ChangesPending());
}

TEST(DevicePages, FillingAPageNeverMarksChanges) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    PromptScript script;
    for (const char* name : {"metasploitable2__Metasploitable.vmx", "ubuntuforumsarchive__WinXPPro-server104-hw4.vmx"}) {
        auto b = openCopy(name, dir.path());
        const VmConfiguration before = b->configuration();
        auto* list = child<QTreeWidget>(b.get(), "lvwHardwareList");
        for (int i = 0; i < list->topLevelItemCount(); ++i) list->setCurrentItem(list->topLevelItem(i));
        b->UpdateUILabels(500);
        b->UpdateUILabels(0);
        EXPECT_FALSE(b->ChangesPending()) << name;
        EXPECT_TRUE(b->configuration() == before) << name;
    }
}

TEST(DevicePages, EditsMarkChangesAndRewriteTheEntrySummary) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    auto b = openCopy("metasploitable2__Metasploitable.vmx", dir.path());
    QTreeWidgetItem* cd = chooseDevice(b.get(), DeviceType::CdRom);
    ASSERT_NE(cd, nullptr);
    typeInto(child<QLineEdit>(b.get(), "txtCDRImage"), "/isos/new.iso");
    EXPECT_TRUE(b->ChangesPending());
    EXPECT_TRUE(cd->text(1).contains("/isos/new.iso")) << cd->text(1).toStdString();
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optCDRImage")->isChecked());
    // Legacy emulation belongs to a physical drive.
    EXPECT_FALSE(child<QCheckBox>(b.get(), "chkCDRLegacy")->isEnabled());
}

TEST(DevicePages, BrowseStartsInTheImageFolderForImagesAndStoresTheChoice) {
    ScratchDir dir;
    PromptScript script;
    auto b = std::make_unique<Builder>();
    b->DisplayName = "Images";
    b->NewVmxPath = qpath(dir.path());
    b->ImagePath = "/srv/images";
    ASSERT_TRUE(b->start());
    chooseDevice(b.get(), DeviceType::Floppy);
    script.file("/srv/images/dos 6.22.flp");
    child<QPushButton>(b.get(), "cmdBrowseFloppyImage")->click();
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].startFolder, "/srv/images");
    EXPECT_EQ(script.shown()[0].title, "Select Floppy Image");
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optFloppyImage")->isChecked());
    const Device& floppy = b->configuration().devices.devices(DeviceType::Floppy).front();
    EXPECT_EQ(floppy.settings.text(".fileName"), "/srv/images/dos 6.22.flp");
    EXPECT_EQ(floppy.settings.text(".fileType"), "file");

    // A cancelled picker changes nothing.
    chooseDevice(b.get(), DeviceType::CdRom);
    child<QPushButton>(b.get(), "cmdBrowseCDRImage")->click();
    EXPECT_EQ(b->configuration().devices.devices(DeviceType::CdRom).front().settings.text(".fileName"), "auto detect");
}

// Every numeric box refuses what it cannot take, says why where the box's rule says so, and
// stores nothing.
TEST(DevicePages, NumericBoxesRefuseBadTextAndStoreNothing) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Numbers", dir.path());
    ASSERT_TRUE(b->CreateVmxFile());
    const VmConfiguration before = b->configuration();
    struct Case {
        DeviceType type;
        const char* box;
        QString text;
        QString title;        // empty: ignored without a message
        QString textStarts;
    };
    const Case cases[] = {
        {DeviceType::Memory, "txtMemSize", "abc", "Invalid Entry", "RAM size must be numeric"},
        {DeviceType::Memory, "txtMemSize", "2", "Invalid Memory Size", "RAM size out of valid range for Selected Product/Version"},
        {DeviceType::Memory, "txtMemSize", "999999999999", "Invalid Memory Size", "RAM size out of valid range"},
        {DeviceType::Memory, "txtMemSize", "-4", "Invalid Memory Size", "RAM size out of valid range"},
        {DeviceType::Display, "txtMaxWidth", "wide", {}, {}},
        {DeviceType::Display, "txtMaxWidth", "0", "Invalid Entry", "The maximum width and height (pixels) must be between 1 and 32767"},
        {DeviceType::Display, "txtMaxHeight", "99999", "Invalid Entry", "The maximum width and height (pixels) must be between 1 and 32767"},
        {DeviceType::Display, "txtVRamSize", "lots", {}, {}},
        {DeviceType::Display, "txtVRamSize", "4096", "Invalid Entry", "Video RAM size (MB) must be between 1 and 2047"},
    };
    for (const Case& c : cases) {
        script.clear();
        ASSERT_NE(chooseDevice(b.get(), c.type), nullptr);
        auto* box = child<QLineEdit>(b.get(), c.box);
        const QString shownBefore = box->text();
        typeInto(box, c.text);
        const auto shown = script.messages();
        if (c.title.isEmpty()) {
            EXPECT_TRUE(shown.empty()) << c.box << " " << c.text.toStdString();
            EXPECT_EQ(box->text(), shownBefore) << "an ignored text gives way to the stored value";
        } else {
            ASSERT_EQ(shown.size(), 1u) << c.box << " " << c.text.toStdString();
            EXPECT_EQ(shown[0].kind, MessageKind::Warning);
            EXPECT_EQ(shown[0].title, c.title);
            EXPECT_TRUE(shown[0].text.startsWith(c.textStarts)) << shown[0].text.toStdString();
        }
    }
    EXPECT_FALSE(b->ChangesPending());
    EXPECT_TRUE(b->configuration() == before);

    // "4" is the smallest memory taken; the slider and the up-down follow the box.
    script.clear();
    chooseDevice(b.get(), DeviceType::Memory);
    typeInto(child<QLineEdit>(b.get(), "txtMemSize"), "4");
    EXPECT_TRUE(script.messages().empty());
    EXPECT_EQ(b->configuration().devices.devices(DeviceType::Memory).front().settings.text("memsize"), "4");
    EXPECT_EQ(child<QAbstractSlider>(b.get(), "sldMemSize")->value(), 4);
    EXPECT_EQ(child<QAbstractSlider>(b.get(), "udMemSize")->value(), 4);
}

TEST(DevicePages, VideoMemoryIsEnteredInMegabytesAndStoredInBytes) {
    ScratchDir dir;
    auto b = newMachine("Video", dir.path());
    chooseDevice(b.get(), DeviceType::Display);
    typeInto(child<QLineEdit>(b.get(), "txtVRamSize"), "16");
    EXPECT_EQ(b->configuration().devices.devices(DeviceType::Display).front().settings.text("svga.vramSize"), "16777216");
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtVRamSize")->text(), "16");
}

TEST(DevicePages, HardDiskModeCreateNewAndDiskInformation) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Modes", dir.path());
    addThroughDialog(b.get(), "Hard Disk");
    auto mode = [&] { return b->configuration().devices.devices(DeviceType::HardDisk).front().settings.text(".mode"); };
    auto* independent = child<QCheckBox>(b.get(), "chkHDIndependent");
    auto* persistent = child<QRadioButton>(b.get(), "optHDPersist");
    EXPECT_EQ(mode(), "persistent");
    EXPECT_FALSE(independent->isChecked());
    child<QRadioButton>(b.get(), "optHDNonPersist")->click();
    EXPECT_EQ(mode(), "independent-nonpersistent");
    EXPECT_TRUE(independent->isChecked());
    persistent->click();
    EXPECT_EQ(mode(), "independent-persistent");
    independent->click();
    EXPECT_EQ(mode(), "persistent");
    EXPECT_TRUE(persistent->isChecked());

    // Create New opens the create-disk dialog on the disk's own adapter; the new descriptor
    // becomes the disk's file, and the summary box describes it.
    QString adapterShown;
    QTimer::singleShot(0, [&] {
        auto* dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog) << "the create-disk dialog is shown";
        for (auto* option : dialog->findChildren<QRadioButton*>())
            if (option->isChecked() && option->objectName().startsWith("optAdapt")) adapterShown = option->objectName();
        child<QLineEdit>(dialog, "txtNewDisk")->setText("Made Here");
        child<QLineEdit>(dialog, "txtDiskSize")->setText("1");
        child<QPushButton>(dialog, "cmdOK")->click();
    });
    auto* create = child<QPushButton>(b.get(), "cmdHDCreate");
    EXPECT_EQ(create->text(), "Create New...");
    create->click();
    EXPECT_EQ(adapterShown, "optAdaptIde") << "a disk on an IDE node starts with the IDE adapter";
    const std::filesystem::path made = dir.path() / "Made Here.vmdk";
    EXPECT_TRUE(std::filesystem::exists(made));
    EXPECT_EQ(b->configuration().devices.devices(DeviceType::HardDisk).front().settings.text(".fileName"), made.string());
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtHDFile")->text().toStdString(), made.string());
    EXPECT_TRUE(b->ChangesPending());

    child<QPushButton>(b.get(), "cmdHDInfo")->click();
    ASSERT_FALSE(script.messages().empty());
    EXPECT_EQ(script.messages().back().title, "Current Disk Information");
    EXPECT_TRUE(script.messages().back().text.contains("Disk Name: Made Here.vmdk")) << script.messages().back().text.toStdString();
}

QString caption(QWidget* w) {
    if (auto* b = qobject_cast<QAbstractButton*>(w)) return b->text();
    if (auto* l = qobject_cast<QLabel*>(w)) return l->text();
    if (auto* g = qobject_cast<QGroupBox*>(w)) return g->title();
    return QStringLiteral("<no caption>");
}

// The captions of the device pages come from the string table in the chosen language.
TEST(DevicePages, CaptionsFollowTheLanguage) {
    ScratchDir dir;
    auto b = newMachine("Labels", dir.path());
    struct Case {
        const char* control;
        QString english;
        QString empty;  // what remains with a language that lacks the text
    };
    const Case cases[] = {
        {"cmdHardwareAdd", "Add...", "..."},
        {"chkCPUPae", "Emulate PAE (if unchecked, passes through actual CPU support)", ""},
        {"lblCPUCount", "Number of Processors:", ":"},
        {"fraMemory", "RAM", ""},
        {"lblMemUnit", "MB", ""},
        {"fraDeviceStatus", "Device Status", ""},
        {"chkFloppyEnabled", "Enabled", ""},
        {"chkFloppyConnectedBoot", "Connect at power on", ""},
        {"fraFloppyConnection", "Connection", ""},
        {"optFloppyDrive", "Use Physical Drive", ""},
        {"optFloppyImage", "Use Floppy Image", ""},
        {"cmdBrowseFloppyImage", "Browse...", "..."},
        {"optParPort", "Use Physical Port", ""},
        {"chkParPortBiDi", "Bidirectional Mode", ""},
        {"optParFile", "Use Output File", ""},
        {"optSerPipe", "Use Named Pipe", ""},
        {"lblSerPipeEnd1", "This End:", ":"},
        {"lblSerPipeEnd2", "Other End:", ":"},
        {"chkSerYield", "Yield CPU on Poll", ""},
        {"chkUsbEnable", "Enable USB", ""},
        {"chkUsbAutoConnect", "Automatically Connect Devices when guest has focus", ""},
        {"lblSCSICont", "Adapter Type:", ":"},
        {"fraNode", "Virtual Device Node", ""},
        {"optHDIDE", "IDE", ""},
        {"optHDSCSI", "SCSI", ""},
        {"fraHDFile", "Disk File", ""},
        {"lblHDExisting", "Use Existing:", ":"},
        {"cmdHDCreate", "Create New...", "..."},
        {"chkHDIndependent", "Independent", ""},
        {"optHDPersist", "Persistent", ""},
        {"optHDNonPersist", "Non-Persistent", ""},
        {"chkCDRExclusive", "Exclusive connection", ""},
        {"chkCDRLegacy", "Legacy emulation", ""},
        {"optCDRImage", "Use ISO Image", ""},
        {"lblGenSCSIDevice", "Physical Device:", ":"},
        {"fraDisplay", "Resolution", ""},
        {"lblMaxWidth", "Max. Width:", ":"},
        {"lblMaxHeight", "Max. Height:", ":"},
        {"lblVRamSize", "Video RAM Size (MB):", ":"},
        {"chkDisplay3D", "Enable Direct3D Support", ""},
        {"fraMouse", "Pointing Device", ""},
        {"chkMouseEnabled", "Enabled (turn off for relative positioning in 3D Guests)", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(caption(child<QWidget>(b.get(), c.control)), c.english) << c.control;
    EXPECT_EQ(child<QComboBox>(b.get(), "cboSerPipeEnd2")->itemText(0), "Application");
    b->UpdateUILabels(500);
    for (const Case& c : cases) EXPECT_EQ(caption(child<QWidget>(b.get(), c.control)), c.empty) << c.control;
    EXPECT_EQ(child<QComboBox>(b.get(), "cboSerPipeEnd1")->itemText(1), "");
    b->UpdateUILabels(0);
    EXPECT_EQ(child<QComboBox>(b.get(), "cboSerPipeEnd1")->itemText(1), "Client");
}

}  // namespace
}  // namespace arden::gui::test

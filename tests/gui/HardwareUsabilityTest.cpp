// The Hardware tab as a user meets it: the memory arrows' direction, the Add Hardware columns
// and the reason for a type at its limit, Delete in the list, focus that shows, modes and
// adapter types read from older files shown as they are, an added network adapter's address,
// and lists that keep to their entries' width.
#include <QAbstractSlider>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>

#include "GuiTestSupport.h"

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::writeBytes;

// An editor shown in an active window, on its Hardware tab.
void showHardware(Builder* b, QSize size = {1000, 700}) {
    b->resize(size);
    b->show();
    child<QTabWidget>(b, "sstMain")->setCurrentIndex(1);
    b->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(b));
    settle();
}

// A new machine's editor shown on its Hardware tab with `type`'s first device chosen.
class ShownMachine : public ::testing::Test {
protected:
    Builder* shown(const QString& name, DeviceType type) {
        editor = newMachine(name, dir.path());
        showHardware(editor.get());
        chooseDevice(editor.get(), type);
        return editor.get();
    }
    ScratchDir dir;
    PromptScript script;
    std::unique_ptr<Builder> editor;
};

QString memory(Builder* b) { return QString::fromStdString(settingsOf(b, DeviceType::Memory).text("memsize")); }

using MemoryPage = ShownMachine;
TEST_F(MemoryPage, TheUpperArrowAndTheUpKeyAddFourMegabytes) {
    Builder* b = shown("Arrows", DeviceType::Memory);
    auto* updown = child<QScrollBar>(b, "udMemSize");
    const QPoint upper(updown->width() / 2, 2), lower(updown->width() / 2, updown->height() - 3);
    QStringList seen{memory(b)};
    QTest::mouseClick(updown, Qt::LeftButton, {}, upper);
    seen << memory(b);
    QTest::mouseClick(updown, Qt::LeftButton, {}, lower);
    QTest::mouseClick(updown, Qt::LeftButton, {}, lower);
    seen << memory(b);
    updown->setFocus();
    QTest::keyClick(updown, Qt::Key_Up);
    seen << memory(b) << child<QLineEdit>(b, "txtMemSize")->text();
    EXPECT_EQ(seen, QStringList({"256", "260", "252", "256", "256"}));
    EXPECT_EQ(child<QAbstractSlider>(b, "sldMemSize")->value(), 256) << "the slider follows";
}

TEST(AddHardwareDialog, CountsNotTypeNumbersFirstRowChosenAndWhyATypeIsFull) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Full", dir.path());  // one floppy drive, one network adapter
    addThroughDialog(b.get(), "Floppy Drive");
    QStringList header, counts, info, tip;
    QString current;
    bool selected = false, okEnabled = true;
    onNextModal([&](QWidget* dialog) {
        auto* list = child<QTreeWidget>(dialog, "lvwAvailableHardware");
        header << list->headerItem()->text(0) << list->headerItem()->text(1);
        for (const char* name : {"CPU", "Floppy Drive", "Network Adapter", "Hard Disk"})
            counts << QString(name) + " " + list->findItems(name, Qt::MatchExactly, 0).value(0)->text(1);
        current = list->currentItem() ? list->currentItem()->text(0) : "none";
        selected = list->currentItem() && list->currentItem()->isSelected();
        QTreeWidgetItem* floppy = list->findItems("Floppy Drive", Qt::MatchExactly, 0).value(0);
        tip << floppy->toolTip(0);
        list->setCurrentItem(floppy);
        info << child<QLabel>(dialog, "lblInfo")->text();
        okEnabled = child<QPushButton>(dialog, "cmdOK")->isEnabled();
        child<QPushButton>(dialog, "cmdCancel")->click();
    });
    child<QPushButton>(b.get(), "cmdHardwareAdd")->click();
    EXPECT_EQ(header, QStringList({"Device", "In This Machine"}));
    EXPECT_EQ(counts, QStringList({"CPU 1", "Floppy Drive 2", "Network Adapter 1", "Hard Disk 0"}));
    EXPECT_EQ(current, "CPU") << "the first type that may be added (Workstation 5.5x takes a second processor)";
    EXPECT_TRUE(selected) << "and shown chosen";
    const QString why = "The maximum number ofFloppy Drives has already been added to this virtual machine.";
    EXPECT_EQ(info, QStringList{why});
    EXPECT_EQ(tip, QStringList{why});
    EXPECT_FALSE(okEnabled);
}

using HardwareListKeys = ShownMachine;
TEST_F(HardwareListKeys, DeleteRemovesTheChosenDeviceAndNetworkAdaptersGetAnAddress) {
    Builder* b = shown("Keys", DeviceType::CdRom);
    auto* list = child<QTreeWidget>(b, "lvwHardwareList");
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_FALSE(column(list, 0).contains("CD-ROM 1")) << column(list, 0).join(", ");
    chooseDevice(b, DeviceType::Cpu);
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_TRUE(column(list, 0).contains("CPU 1")) << "the last processor stays, as with Remove";

    // An added adapter: the last octet of the first one's address moved on by its offset, ten
    // per adapter, wrapping within that octet.
    addThroughDialog(b, "Network Adapter");
    const std::string first = settingsOf(b, DeviceType::Network, 0).text(".generatedAddress");
    const DeviceSettings& added = settingsOf(b, DeviceType::Network, 1);
    EXPECT_EQ(added.text(".generatedAddressOffset"), "10");
    const std::string address = added.text(".generatedAddress");
    ASSERT_EQ(address.size(), 17u);
    EXPECT_EQ(address.substr(0, 15), first.substr(0, 15));
    EXPECT_EQ(std::stoi(address.substr(15), nullptr, 16), (std::stoi(first.substr(15), nullptr, 16) + 10) % 256) << first;
}

// A focused control looks different from the same control without focus.
using FocusMarks = ShownMachine;
TEST_F(FocusMarks, TheHardwareListAndTheMemorySliderShowFocus) {
    Builder* b = shown("Focus", DeviceType::Memory);
    auto* elsewhere = child<QLineEdit>(b, "txtMemSize");
    for (const char* name : {"lvwHardwareList", "sldMemSize"}) {
        QWidget* control = child<QWidget>(b, name);
        const QRect around = QRect(control->mapTo(b, QPoint(0, 0)), control->size()).adjusted(-4, -4, 4, 4);
        elsewhere->setFocus();
        settle();
        const QImage without = b->grab(around).toImage();
        control->setFocus(Qt::TabFocusReason);
        settle();
        ASSERT_TRUE(control->hasFocus()) << name;
        EXPECT_NE(b->grab(around).toImage(), without) << name << " shows no focus";
    }
}

TEST(DevicePages, ModesAndControllersFromOlderFilesAreShownAsTheyAre) {
    ScratchDir dir;
    PromptScript script;
    const std::string text =
        "config.version = \"8\"\r\nvirtualHW.version = \"3\"\r\ndisplayName = \"Old\"\r\nmemsize = \"128\"\r\n"
        "scsi0.present = \"TRUE\"\r\nscsi0:0.present = \"TRUE\"\r\nscsi0:0.fileName = \"a.vmdk\"\r\nscsi0:0.mode = \"undoable\"\r\n"
        "scsi0:1.present = \"TRUE\"\r\nscsi0:1.fileName = \"b.vmdk\"\r\nscsi0:1.mode = \"nonpersistent\"\r\n"
        "ethernet0.present = \"TRUE\"\r\nethernet0.connectionType = \"hostonly\"\r\n";
    writeBytes(dir / "old.vmx", text);
    auto b = openFile(dir / "old.vmx");
    child<QTabWidget>(b.get(), "sstMain")->setCurrentIndex(1);  // the Hardware tab, where the pages show
    QStringList shown;
    for (int nth : {0, 1}) {
        chooseDevice(b.get(), DeviceType::HardDisk, nth);
        auto* label = child<QLabel>(b.get(), "lblHDStoredMode");
        shown << (label->isVisibleTo(b.get()) ? label->text() : "hidden");
        for (const char* option : {"chkHDIndependent", "optHDPersist", "optHDNonPersist"})
            if (child<QAbstractButton>(b.get(), option)->isChecked()) shown << option;
    }
    EXPECT_EQ(shown, QStringList({"Mode as read from the file (kept until another is chosen): undoable",
                                  "Mode as read from the file (kept until another is chosen): nonpersistent"}));
    // A controller without a stored type: BusLogic in the list and on its page.
    QTreeWidgetItem* controller = chooseDevice(b.get(), DeviceType::ScsiController);
    auto* adapter = child<QComboBox>(b.get(), "cboSCSICont");
    EXPECT_EQ(controller->text(1) + " / " + adapter->currentText(), "BusLogic / BusLogic");
    EXPECT_EQ(entries(adapter), QStringList({"BusLogic", "LsiLogic"}));
    // One spelling of the host-only network in the list and on the page.
    QTreeWidgetItem* nic = chooseDevice(b.get(), DeviceType::Network);
    EXPECT_TRUE(nic->text(1).startsWith("Host-Only")) << nic->text(1);
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optNetConnHostOnly")->text().remove('&').startsWith("Host-Only"));
    EXPECT_FALSE(b->ChangesPending()) << "showing is no change";

    ASSERT_TRUE(b->CreateVmxFile());
    EXPECT_NE(readBytes(dir / "old.vmx").find("scsi0:0.mode = \"undoable\"\r\n"), std::string::npos) << "kept";
    chooseDevice(b.get(), DeviceType::HardDisk);
    child<QAbstractButton>(b.get(), "optHDPersist")->click();
    EXPECT_EQ(settingsOf(b.get(), DeviceType::HardDisk).text(".mode"), "persistent");
    EXPECT_FALSE(child<QLabel>(b.get(), "lblHDStoredMode")->isVisibleTo(b.get()));
}

// At 1920 x 1080 a list keeps to about its entries' width (device pages and option pages); a long
// device name is shown whole.
TEST(DevicePages, ListsDoNotStretchAndNamesAreNotCut) {
    ScratchDir dir;
    PromptScript script;
    std::string text = "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\ndisplayName = \"Wide\"\r\nmemsize = \"128\"\r\n";
    text += "ethernet999.present = \"TRUE\"\r\nserial1000.present = \"TRUE\"\r\n";
    writeBytes(dir / "wide.vmx", text);
    auto b = openFile(dir / "wide.vmx");
    showHardware(b.get(), {800, 600});
    auto* list = child<QTreeWidget>(b.get(), "lvwHardwareList");
    QStringList names;
    for (DeviceType type : {DeviceType::Network, DeviceType::SerialPort}) {
        QTreeWidgetItem* item = chooseDevice(b.get(), type);
        ASSERT_TRUE(item);
        const QRect shown = list->visualItemRect(item);
        names << item->text(0);
        EXPECT_GE(list->columnWidth(0), list->fontMetrics().horizontalAdvance(item->text(0)) + list->iconSize().width() + 8)
            << item->text(0) << " fits its column (" << shown.width() << ")";
    }
    EXPECT_EQ(names, QStringList({"Network Adapter 1000", "Serial Port 1001"}));
    showHardware(b.get(), {1920, 1080});
    QStringList wide;
    for (int type = 0; type < kDeviceTypeCount; ++type) {
        if (!chooseDevice(b.get(), *deviceTypeFromNumber(type))) continue;
        settle();
        for (QComboBox* c : b->findChildren<QComboBox*>())
            if (c->isVisibleTo(b.get()) && c->width() > 480) wide << c->objectName() + " " + QString::number(c->width());
    }
    child<QTabWidget>(b.get(), "sstMain")->setCurrentIndex(0);
    auto* options = child<QTreeWidget>(b.get(), "lvwOptionsList");
    for (int i = 0; i < options->topLevelItemCount(); ++i) {
        options->setCurrentItem(options->topLevelItem(i));
        settle();
        for (QComboBox* c : b->findChildren<QComboBox*>())
            if (c->isVisibleTo(b.get()) && c->width() > 480) wide << c->objectName() + " " + QString::number(c->width());
    }
    EXPECT_EQ(wide, QStringList{});
}

}  // namespace
}  // namespace arden::gui::test

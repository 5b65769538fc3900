// The create-disk dialog (the hard-disk page's Create New: DevicePagesTest): the order and texts
// of the checks, a question answered No, unit conversion, adapter maxima, Cancel during a preallocation.
#include <QProgressDialog>
#include <QRadioButton>

#include "GuiTestSupport.h"
#include "gui/disks/frmCreateHD.h"

namespace fs = std::filesystem;

namespace arden::gui::test {
namespace {

using arden::test::ScratchDir;

QStringList filesIn(const fs::path& dir) {
    QStringList names;
    for (const auto& e : fs::directory_iterator(dir)) names << qpath(e.path().filename());
    names.sort();
    return names;
}

// Fills the dialog's entries; `unit` and `type` are object names of the options to choose.
void fill(QWidget* dialog, const QString& name, const char* adapter, const QString& size, const char* unit, const char* type) {
    child<QLineEdit>(dialog, "txtNewDisk")->setText(name);
    child<QRadioButton>(dialog, adapter)->click();
    child<QRadioButton>(dialog, unit)->click();
    child<QLineEdit>(dialog, "txtDiskSize")->setText(size);
    child<QRadioButton>(dialog, type)->click();
}

// The dialog shows the core's checks (their full table is in DiskValidationTest): the name is
// checked before the size text, the maxima reach the check, and a question answered No creates nothing.
TEST(CreateDiskDialog, ChecksInOrderAndQuestionsAnsweredNoCreateNothing) {
    struct Case { const char *name, *adapter, *size, *unit, *type; std::int64_t ideMaximum; QString shown; };
    const Case cases[] = {
        {"a", "optAdaptIde", "204799", "optSizeSectors", "optTypeGrowSplit", 0, "Invalid Disk Size: Disk Size too small!  Minimum Size is 100 Mb"},
        {"", "optAdaptIde", "100", "optSizeMb", "optTypeGrowSplit", 0,
         "Invalid Disk Name: The new disk has no name: type one in Disk Name (\".vmdk\" is added to it)."},
        {"b", "optAdaptIde", "204800", "optSizeSectors", "optTypeGrowSplit", 0, ""},
        {"i\"q", "optAdaptIde", "ten", "optSizeMb", "optTypeGrowSplit", 0,
         "Invalid Disk Name: The disk name \"i\"q.vmdk\" cannot be used: it holds a double quote (\"), which ends the name inside the descriptor."},
        {"l", "optAdaptIde", "268435457", "optSizeSectors", "optTypeGrowSplit", 950 * 2097152LL,
         "Very Large Disk: Warning - Disk size large for IDE controller - do you want to contunue?"},
    };
    ScratchDir dir;
    for (const Case& c : cases) {
        PromptScript script;
        CreateDiskRequest preset;
        preset.folder = qpath(dir.path());
        preset.ideMaximumSectors = c.ideMaximum;
        frmCreateHD dialog(preset);
        fill(&dialog, QString::fromUtf8(c.name), c.adapter, c.size, c.unit, c.type);
        child<QPushButton>(&dialog, "cmdOK")->click();
        EXPECT_EQ(said(script).join("").left(c.shown.size()), c.shown) << c.name;
        EXPECT_EQ(dialog.result() == QDialog::Accepted, c.shown.isEmpty()) << c.name;
    }
    EXPECT_EQ(filesIn(dir.path()), QStringList({"b-s001.vmdk", "b.vmdk"}));
}

TEST(CreateDiskDialog, UnitConversionBothWaysAndAdapterMaxima) {
    frmCreateHD dialog({});
    auto* size = child<QLineEdit>(&dialog, "txtDiskSize");
    child<QRadioButton>(&dialog, "optSizeMb")->click();
    size->setText("100");
    QStringList shown;
    for (const char* unit : {"optSizeSectors", "optSizeGb", "optSizeMb"}) child<QRadioButton>(&dialog, unit)->click(), shown << size->text();
    EXPECT_EQ(shown, QStringList({"204800", "0.09765625", "100"}));
    size->setText("not yet");
    child<QRadioButton>(&dialog, "optSizeGb")->click();
    EXPECT_EQ(size->text(), "not yet") << "a text that is no number is left for the user to correct";
    child<QRadioButton>(&dialog, "optAdaptLsi")->click();
    EXPECT_EQ(child<QLabel>(&dialog, "lblSizeRange")->text(), "100 Mb to 256 Gb");

    CreateDiskRequest raised;
    raised.ideMaximumSectors = 950 * 2097152LL;
    raised.adapter = arden::disks::DiskAdapter::BusLogic;
    frmCreateHD opened(raised);
    child<QRadioButton>(&opened, "optAdaptIde")->click();
    EXPECT_EQ(child<QLabel>(&opened, "lblSizeRange")->text(), "100 Mb to 950 Gb");
}

// What the dialog offers first (8 GB, split growable, the external method on this system), and a
// disk the external tool could not make: its reason is shown and the dialog stays open.
TEST(CreateDiskDialog, DefaultsAndAFailedToolKeepTheDialogOpen) {
    ScratchDir dir;
    fs::create_directories(dir / "bin");
    arden::test::writeBytes(dir / "bin" / "qemu-img", "#!/bin/sh\necho 'qemu-img: cannot create' >&2\nexit 1\n");
    fs::permissions(dir / "bin" / "qemu-img", fs::perms(0755));
    fs::create_directory(dir / "vm");
    const QByteArray oldPath = qgetenv("PATH");
    qputenv("PATH", QByteArray::fromStdString((dir / "bin").string()));
    PromptScript script;
    frmCreateHD dialog({qpath(dir / "vm")});
    QStringList checked;
    for (const char* name : {"optSizeGb", "optTypeGrowSplit", "optMethodExternal"})
        if (child<QRadioButton>(&dialog, name)->isChecked()) checked << name;
    EXPECT_EQ(checked, QStringList({"optSizeGb", "optTypeGrowSplit", "optMethodExternal"}));
    EXPECT_EQ(child<QLineEdit>(&dialog, "txtDiskSize")->text(), "8");
    fill(&dialog, "t", "optAdaptIde", "200", "optSizeMb", "optTypeGrow");
    child<QPushButton>(&dialog, "cmdOK")->click();
    qputenv("PATH", oldPath);
    EXPECT_EQ(said(script), QStringList{"Create New Hard Disk: " + qpath(dir / "bin" / "qemu-img") +
                                        " ended with exit code 1: qemu-img: cannot create"});
    EXPECT_NE(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(filesIn(dir / "vm"), QStringList{});
}

TEST(CreateDiskDialog, CancelDuringAPreallocationLeavesNoFile) {
    ScratchDir dir;
    PromptScript script;
    frmCreateHD dialog({qpath(dir.path())});
    dialog.setCreationOptions({true});  // zeros written, as on a file system that cannot reserve space
    fill(&dialog, "big", "optAdaptLsi", "900", "optSizeMb", "optTypeFixed");
    QString seen;
    QTimer watcher;
    QObject::connect(&watcher, &QTimer::timeout, [&] {
        auto* progress = dialog.findChild<QProgressDialog*>("dlgDiskProgress");
        if (!progress || !progress->isVisible()) return;
        QString label = progress->findChild<QLabel*>()->text();
        if (!label.startsWith("Writing zeros to")) return;
        seen = label;
        progress->findChild<QPushButton*>("cmdCancelCreation")->click();
        watcher.stop();
    });
    watcher.start(5);
    child<QPushButton>(&dialog, "cmdOK")->click();
    EXPECT_TRUE(seen.startsWith("Writing zeros to\n" + qpath(dir / "big-flat.vmdk") + "\n")) << seen;
    EXPECT_TRUE(seen.contains("of 900 MiB (")) << seen;
    EXPECT_EQ(filesIn(dir.path()), QStringList{});
    EXPECT_NE(dialog.result(), QDialog::Accepted) << "the dialog stays open after a cancel";
    EXPECT_TRUE(script.messages().empty());
}

}  // namespace
}  // namespace arden::gui::test

namespace arden::gui::test {
namespace {

// Opened for a disk on a node, the dialog warns while the chosen adapter is of the other bus.
TEST(CreateDiskDialog, AnAdapterOfTheOtherBusThanTheNodeIsWarnedOf) {
    const QString scsiNode = "Warning - the disk's node is on a SCSI controller, but the IDE adapter is chosen: the disk will not match its controller.";
    const QString ideNode = "Warning - the disk's node is on an IDE controller, but a SCSI adapter is chosen: the disk will not match its controller.";
    QStringList seen;
    for (disks::DiskBus bus : {disks::DiskBus::Scsi, disks::DiskBus::Ide}) {
        CreateDiskRequest preset;
        preset.nodeBus = bus;
        frmCreateHD dialog(preset);
        auto* warning = child<QLabel>(&dialog, "lblAdapterWarning");
        for (const char* option : {"optAdaptLsi", "optAdaptIde", "optAdaptBus"}) {
            child<QRadioButton>(&dialog, option)->click();
            seen << (warning->isVisibleTo(&dialog) ? warning->text() : "none");
        }
    }
    EXPECT_EQ(seen, QStringList({"none", scsiNode, "none", ideNode, "none", ideNode}));
    frmCreateHD unplaced({});
    EXPECT_FALSE(child<QLabel>(&unplaced, "lblAdapterWarning")->isVisibleTo(&unplaced)) << "a disk on no node: nothing to match";
}

}  // namespace
}  // namespace arden::gui::test

// The create-disk dialog and the disk summary, called as the hard-disk page calls them:
// validation order and texts at the size boundaries, unit conversion, adapter maxima,
// Cancel during a preallocation, the path handed back, the summary box.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <filesystem>

#include "GuiTestSupport.h"
#include "TestSupport.h"
#include "core/disks/DiskCreator.h"
#include "gui/disks/DiskDialogs.h"
#include "gui/disks/frmCreateHD.h"
#include "gui/support/Prompts.h"

namespace fs = std::filesystem;
using namespace arden::gui;
using arden::disks::DiskAdapter;
using arden::disks::DiskBus;
using arden::gui::test::child;
using arden::test::ScratchDir;

namespace {

std::vector<std::string> filesIn(const fs::path& dir) {
    std::vector<std::string> names;
    for (const auto& e : fs::directory_iterator(dir)) names.push_back(e.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> shownMessages(const PromptScript& script) {
    std::vector<std::string> out;
    for (const ShownPrompt& p : script.messages()) out.push_back((p.title + ": " + p.text).toStdString());
    return out;
}

// Fills the dialog's entries; `unit` and `type` are object names of the options to choose.
void fill(QWidget* dialog, const QString& name, const char* adapter, const QString& size, const char* unit, const char* type) {
    child<QLineEdit>(dialog, "txtNewDisk")->setText(name);
    child<QRadioButton>(dialog, adapter)->click();
    child<QRadioButton>(dialog, unit)->click();
    child<QLineEdit>(dialog, "txtDiskSize")->setText(size);
    child<QRadioButton>(dialog, type)->click();
}

}  // namespace

TEST(CreateDiskDialog, ValidationOrderAndTextsAtTheBoundaries) {
    struct Case {
        const char* name;
        const char* adapter;
        const char* size;
        const char* unit;
        const char* type;
        std::int64_t ideMaximum;
        std::vector<std::string> shown;
        bool created;
    };
    const std::string small = "Invalid Disk Size: Disk Size too small!  Minimum Size is 100 Mb";
    const std::string large = "Invalid Disk Size: Disk Size too large!  Maximum Size is 128/256/950 Gb";
    const Case cases[] = {
        {"a", "optAdaptIde", "204799", "optSizeSectors", "optTypeGrowSplit", 0, {small}, false},
        {"b", "optAdaptIde", "204800", "optSizeSectors", "optTypeGrowSplit", 0, {}, true},
        {"c", "optAdaptIde", "268435456", "optSizeSectors", "optTypeGrowSplit", 0, {}, true},
        {"d", "optAdaptIde", "268435457", "optSizeSectors", "optTypeGrowSplit", 0, {large}, false},
        {"e", "optAdaptLsi", "536870913", "optSizeSectors", "optTypeGrowSplit", 0, {large}, false},
        {"f", "optAdaptBus", "256", "optSizeGb", "optTypeGrowSplit", 0, {}, true},
        {"g", "optAdaptIde", "1e-400", "optSizeGb", "optTypeGrowSplit", 0, {small}, false},
        {"h", "optAdaptIde", "ten", "optSizeMb", "optTypeGrowSplit", 0, {"Invalid Disk Size: Disk Size must be Numeric! (\"ten\")"}, false},
        {"i\"q", "optAdaptIde", "ten", "optSizeMb", "optTypeGrowSplit", 0,
         {"Invalid Disk Name: The disk name \"i\"q.vmdk\" cannot be used: it holds a double quote (\"), which ends the name inside the descriptor."}, false},
        {"", "optAdaptIde", "100", "optSizeMb", "optTypeGrowSplit", 0,
         {"Invalid Disk Name: The disk name \".vmdk\" cannot be used: there is nothing before \".vmdk\"."}, false},
        {"j\tk", "optAdaptIde", "100", "optSizeMb", "optTypeGrowSplit", 0,
         {"Invalid Disk Name: The disk name \"j\tk.vmdk\" cannot be used: it holds a control character (a tab, a line break or another invisible character)."}, false},
        {"k", "optAdaptLsi", "4193793", "optSizeSectors", "optTypeFixed", 0,
         {"Disk larger than 1.99Gb: Warning - you need to have double this size available on your hard drive for temporary files.  Also, the append operation will be slow.  Do you want to continue?"}, false},
        {"l", "optAdaptIde", "268435457", "optSizeSectors", "optTypeGrowSplit", 950 * 2097152LL,
         {"Very Large Disk: Warning - Disk size large for IDE controller - do you want to contunue?"}, false},
        {"m", "optAdaptIde", "268435456", "optSizeSectors", "optTypeGrowSplit", 950 * 2097152LL, {}, true},
        {"exists", "optAdaptIde", "99", "optSizeMb", "optTypeGrowSplit", 0, {small}, false},
    };
    ScratchDir dir;
    arden::test::writeBytes(dir / "exists-s001.vmdk", "keep");
    for (const Case& c : cases) {
        PromptScript script;  // every question is answered No
        CreateDiskRequest preset;
        preset.folder = QString::fromStdString(dir.path().string());
        preset.ideMaximumSectors = c.ideMaximum;
        frmCreateHD dialog(preset);
        fill(&dialog, QString::fromUtf8(c.name), c.adapter, c.size, c.unit, c.type);
        child<QPushButton>(&dialog, "cmdOK")->click();
        EXPECT_EQ(shownMessages(script), c.shown) << c.name;
        EXPECT_EQ(dialog.result() == QDialog::Accepted, c.created) << c.name;
        EXPECT_EQ(fs::exists(dir / (std::string(c.name) + ".vmdk")), c.created) << c.name;
    }
    // An existing extent refuses the disk once the size passes; nothing is written over.
    PromptScript script;
    frmCreateHD dialog({QString::fromStdString(dir.path().string())});
    fill(&dialog, "exists", "optAdaptIde", "100", "optSizeMb", "optTypeGrowSplit");
    child<QPushButton>(&dialog, "cmdOK")->click();
    ASSERT_EQ(shownMessages(script).size(), 1u);
    EXPECT_EQ(shownMessages(script)[0].rfind("File Exists: Disk already exists!  Choose new name (", 0), 0u);
    EXPECT_EQ(arden::test::readBytes(dir / "exists-s001.vmdk"), "keep");
}

TEST(CreateDiskDialog, UnitConversionBothWaysAndAdapterMaxima) {
    frmCreateHD dialog({});
    auto* size = child<QLineEdit>(&dialog, "txtDiskSize");
    child<QRadioButton>(&dialog, "optSizeMb")->click();
    size->setText("100");
    const std::pair<const char*, const char*> steps[] = {
        {"optSizeSectors", "204800"}, {"optSizeKb", "102400"}, {"optSizeGb", "0.09765625"}, {"optSizeMb", "100"}, {"optSizeGb", "0.09765625"}, {"optSizeSectors", "204800"}};
    for (const auto& [unit, shown] : steps) {
        child<QRadioButton>(&dialog, unit)->click();
        EXPECT_EQ(size->text().toStdString(), shown) << unit;
    }
    size->setText("not yet");
    child<QRadioButton>(&dialog, "optSizeGb")->click();
    EXPECT_EQ(size->text().toStdString(), "not yet") << "a text that is no number is left for the user to correct";

    auto* range = child<QLabel>(&dialog, "lblSizeRange");
    const std::pair<const char*, const char*> adapters[] = {
        {"optAdaptIde", "100 Mb to 128 Gb"}, {"optAdaptLsi", "100 Mb to 256 Gb"}, {"optAdaptBus", "100 Mb to 256 Gb"}, {"optAdaptIde", "100 Mb to 128 Gb"}};
    for (const auto& [adapter, text] : adapters) {
        child<QRadioButton>(&dialog, adapter)->click();
        EXPECT_EQ(range->text().toStdString(), text) << adapter;
    }
    CreateDiskRequest raised;
    raised.ideMaximumSectors = 950 * 2097152LL;
    raised.adapter = DiskAdapter::BusLogic;
    frmCreateHD opened(raised);
    EXPECT_TRUE(child<QRadioButton>(&opened, "optAdaptBus")->isChecked()) << "the adapter preset is chosen";
    child<QRadioButton>(&opened, "optAdaptIde")->click();
    EXPECT_EQ(child<QLabel>(&opened, "lblSizeRange")->text().toStdString(), "100 Mb to 950 Gb");
    EXPECT_FALSE(child<QRadioButton>(&opened, "optMethodVMware")->isEnabled()) << "the VMware library is absent here";
    EXPECT_TRUE(child<QRadioButton>(&opened, "optMethodExternal")->isChecked());
    EXPECT_EQ(child<QLineEdit>(&opened, "txtHwVersion")->text(), "3");
}

TEST(CreateDiskDialog, CancelDuringALargePreallocationLeavesNoFile) {
    ScratchDir dir;
    PromptScript script;
    frmCreateHD dialog({QString::fromStdString(dir.path().string())});
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
    ASSERT_FALSE(seen.isEmpty()) << "the progress dialog showed the zeros being written";
    EXPECT_TRUE(seen.contains(QString::fromStdString((dir / "big-flat.vmdk").string()))) << seen.toStdString();
    EXPECT_TRUE(seen.contains("of 900 MiB (")) << seen.toStdString();
    EXPECT_TRUE(filesIn(dir.path()).empty()) << filesIn(dir.path()).front();
    EXPECT_NE(dialog.result(), QDialog::Accepted) << "the dialog stays open after a cancel";
    EXPECT_TRUE(script.messages().empty());
}

TEST(CreateDiskDialog, ThePathIsHandedBackToThePage) {
    ScratchDir dir;
    CreateDiskRequest preset;
    preset.folder = QString::fromStdString(dir.path().string());
    preset.adapter = arden::disks::adapterForNode(DiskBus::Scsi, "buslogic");
    QString path = "unchanged";
    auto answerWith = [&](const char* button) {
        QTimer::singleShot(0, [&, button] {
            auto* dialog = qobject_cast<frmCreateHD*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            child<QLineEdit>(dialog, "txtNewDisk")->setText("Data disk");
            child<QLineEdit>(dialog, "txtDiskSize")->setText("1");
            child<QPushButton>(dialog, button)->click();
        });
    };
    answerWith("cmdCancel");
    EXPECT_FALSE(createDiskFor(nullptr, preset, path));
    EXPECT_EQ(path, "unchanged");
    answerWith("cmdOK");
    ASSERT_TRUE(createDiskFor(nullptr, preset, path));
    EXPECT_EQ(path.toStdString(), (dir / "Data disk.vmdk").string());
    EXPECT_NE(arden::test::readBytes(path.toStdString()).find("ddb.adapterType = \"buslogic\""), std::string::npos);

    PromptScript script;
    showDiskInformation(nullptr, path, DiskBus::Scsi);
    showDiskInformation(nullptr, path, DiskBus::Ide);
    showDiskInformation(nullptr, QString::fromStdString((dir / "Data disk-s001.vmdk").string()), DiskBus::Scsi);
    auto shown = shownMessages(script);
    ASSERT_EQ(shown.size(), 3u);
    const std::string summary = "Current Disk Information: Disk Path: " + dir.path().string() +
                                "\r\nDisk Name: Data disk.vmdk\r\nDisk Type: twoGbMaxExtentSparse (1)\r\nAdapter Type: buslogic\r\n"
                                "Size: 2097152 sectors (1 Gb)\r\nGeometry: Cylinders 1024, Heads 64, Sectors 32\r\n"
                                "Hardware Version: 3\r\nCID: ";
    EXPECT_EQ(shown[0].rfind(summary, 0), 0u) << shown[0];
    EXPECT_EQ(shown[0].find("sits on"), std::string::npos);
    EXPECT_NE(shown[1].find("\r\n\r\nThis disk was made for a SCSI adapter (adapter type \"buslogic\"), but it sits on an IDE node."),
              std::string::npos) << shown[1];
    EXPECT_EQ(shown[2], "Current Disk Information: Unable to Read current disk (" + (dir / "Data disk-s001.vmdk").string() +
                            ": it is an extent of the disk Data disk.vmdk; choose " + (dir / "Data disk.vmdk").string() + " instead)");
}

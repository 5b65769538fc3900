// The editor's life cycle: a new machine's defaults, opening a real file (with and without the
// backup copy), saving and its refusals, and relabelling in another language.
#include <QCheckBox>
#include <QStackedWidget>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "BuilderTestSupport.h"
#include "core/config/ProductTables.h"

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;

constexpr const char* kSharedFolderFile = "golovitskydd__Windows-10-x64.vmx";

TEST(BuilderLifeCycle, NewMachineShowsTheDefaults) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Web Server", dir.path());
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtDisplayName")->text(), "Web Server");
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtVmxFileName")->text(), "Web Server.vmx");
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtVmxFolder")->text(), qpath(dir.path()));
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtWorkingDir")->text(), ".");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboTargetPlatform")->currentText(), "Workstation");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboPlatformVersion")->currentText(), "5.5x");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboGuestFamilies")->currentText(), "Microsoft Windows");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboGuestVersions")->currentIndex(), 9);
    EXPECT_EQ(b->configuration().product.guestId, "winXPPro");

    // Sharing, snapshots and the three interactions are allowed: their boxes are unchecked.
    for (const char* name : {"chkSharedDisable", "chkSnapshotsEnabled", "chkInteractDND", "chkInteractPaste",
                             "chkInteractCopy", "chkDebug", "chkTemplate", "chkClusterEnabled"})
        EXPECT_FALSE(child<QCheckBox>(b.get(), name)->isChecked()) << name;
    EXPECT_TRUE(child<QCheckBox>(b.get(), "chkLogging")->isChecked());
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optSnapPowerOff")->isChecked());
    EXPECT_EQ(child<QComboBox>(b.get(), "cboPowerOff")->currentText(), "Power Off");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboInputUngrabPri")->currentText(), "normal");

    auto* options = child<QTreeWidget>(b.get(), "lvwOptionsList");
    EXPECT_EQ(column(options, 0),
              QStringList({"General", "Power", "Shared Folders", "Snapshots", "Guest Isolation", "Advanced"}));
    for (int i = 0; i < 6; ++i) EXPECT_EQ(options->topLevelItem(i)->text(1), qs(optionSummary(b->configuration(), i)));

    auto* hardware = child<QTreeWidget>(b.get(), "lvwHardwareList");
    const auto devices = b->configuration().devices.hardwareList();
    ASSERT_EQ(hardware->topLevelItemCount(), static_cast<int>(devices.size()));
    EXPECT_EQ(hardware->currentItem(), hardware->topLevelItem(0));
    EXPECT_EQ(child<QStackedWidget>(b.get(), "sstHardware")->currentIndex(), typeNumber(devices.front().type));

    // A machine that exists only in the editor has unsaved changes from the start.
    EXPECT_TRUE(b->ChangesPending());
    EXPECT_TRUE(script.shown().empty());

    auto unnamed = newMachine("", dir.path());
    EXPECT_EQ(child<QLineEdit>(unnamed.get(), "txtVmxFileName")->text(), "New VM.vmx");
}

TEST(BuilderLifeCycle, OpeningAFileFillsThePagesAndLeavesNoChanges) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    PromptScript script;
    auto b = openCopy(kSharedFolderFile, dir.path());
    EXPECT_FALSE(b->ChangesPending());
    EXPECT_TRUE(script.shown().empty());
    EXPECT_FALSE(std::filesystem::exists(dir / (std::string(kSharedFolderFile) + ".bak")));

    EXPECT_EQ(child<QLineEdit>(b.get(), "txtDisplayName")->text(), "Windows 10 x64");
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtVmxFileName")->text(), kSharedFolderFile);
    EXPECT_TRUE(b->nameValid());
    auto* shares = child<QTreeWidget>(b.get(), "lvwSharedFolders");
    EXPECT_EQ(column(shares, 0), QStringList{"Games"});
    EXPECT_EQ(column(shares, 1), QStringList{"E:\\Games"});
    // "isolation.tools.hgfs.disable" is FALSE: sharing is allowed, the disable box unchecked.
    EXPECT_FALSE(child<QCheckBox>(b.get(), "chkSharedDisable")->isChecked());
    EXPECT_EQ(b->favoriteDisplayName(), "Windows 10 x64");
    EXPECT_EQ(b->vmxPath(), qpath(dir / kSharedFolderFile));
}

TEST(BuilderLifeCycle, BackupNoticeOnlyWhenBackupsAreOn) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    PromptScript script;
    auto b = openCopy(kSharedFolderFile, dir.path(), true);
    const auto copy = dir / (std::string(kSharedFolderFile) + ".bak");
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Backup Made");
    EXPECT_EQ(script.messages()[0].text, "Backup file created as: " + qpath(copy));
    EXPECT_EQ(script.messages()[0].kind, MessageKind::Information);
    EXPECT_EQ(readBytes(copy), readBytes(dir / kSharedFolderFile));
    EXPECT_FALSE(b->ChangesPending());
}

TEST(BuilderLifeCycle, UnreadableFileIsReportedAndRefused) {
    ScratchDir dir;
    PromptScript script;
    Builder b;
    b.EditExistingFile = true;
    b.ExistingVmxFileName = qpath(dir / "absent.vmx");
    EXPECT_FALSE(b.start());
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_TRUE(script.messages()[0].text.contains("absent.vmx")) << script.messages()[0].text.toStdString();
    EXPECT_FALSE(std::filesystem::exists(dir / "absent.vmx.bak"));
}

TEST(BuilderSave, WritesTheFileAndClearsChanges) {
    ScratchDir dir;
    PromptScript script;
    // The folder does not exist yet: the save makes it.
    auto b = newMachine("Saved", dir / "machines");
    QString writtenPath, writtenText;
    QObject::connect(b.get(), &Builder::written, [&](const QString& p, const QString& t) {
        writtenPath = p;
        writtenText = t;
    });
    ASSERT_TRUE(b->CreateVmxFile());
    const auto file = dir / "machines" / "Saved.vmx";
    EXPECT_EQ(writtenPath, qpath(file));
    EXPECT_EQ(writtenText.toStdString(), readBytes(file));
    EXPECT_NE(writtenText.indexOf("displayName = \"Saved\""), -1);
    EXPECT_FALSE(b->ChangesPending());
    EXPECT_EQ(b->configVersion(), productFigures(kWorkstation, 4)->configVersion);
    EXPECT_TRUE(script.messages().empty());

    // An edit after the save is a change again, and the next save writes it.
    child<QLineEdit>(b.get(), "txtWorkingDir")->setText("/srv/vm");
    EXPECT_TRUE(b->ChangesPending());
    ASSERT_TRUE(b->CreateVmxFile());
    EXPECT_NE(readBytes(file).find("workingDir = \"/srv/vm\""), std::string::npos);
}

TEST(BuilderSave, RefusedWithMissingDataWhenTheFileNameIsEmptied) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Nameless", dir.path());
    child<QLineEdit>(b.get(), "txtVmxFileName")->setText("");
    EXPECT_FALSE(b->nameValid());
    EXPECT_FALSE(b->CreateVmxFile());
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Missing Data");
    EXPECT_EQ(script.messages()[0].text, "Invalid VMX File Name and/or Folder");
    EXPECT_EQ(script.messages()[0].kind, MessageKind::Warning);
    EXPECT_TRUE(b->ChangesPending());
    EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
}

TEST(BuilderSave, AsksBeforeWritingOverAMachineInUse) {
    ScratchDir dir;
    PromptScript script;
    auto b = newMachine("Busy", dir.path());
    std::filesystem::create_directory(dir / "Busy.vmx.lck");
    script.answer(Answer::No);
    EXPECT_FALSE(b->CreateVmxFile());
    EXPECT_FALSE(std::filesystem::exists(dir / "Busy.vmx"));
    EXPECT_TRUE(b->ChangesPending());
    script.answer(Answer::Yes);
    EXPECT_TRUE(b->CreateVmxFile());
    EXPECT_TRUE(std::filesystem::exists(dir / "Busy.vmx"));
    ASSERT_EQ(script.messages().size(), 2u);
    EXPECT_EQ(script.messages()[1].kind, MessageKind::Question);
}

TEST(BuilderLabels, GermanEmptiesTheUntranslatedCaptionsAndEnglishRestoresThem) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    PromptScript script;
    auto b = openCopy("metasploitable2__Metasploitable.vmx", dir.path());
    auto* tabs = child<QTabWidget>(b.get(), "sstMain");
    auto* options = child<QTreeWidget>(b.get(), "lvwOptionsList");
    b->UpdateUILabels(500);
    EXPECT_EQ(tabs->tabText(0), "Wahlen");
    EXPECT_EQ(tabs->tabText(1), "");
    EXPECT_EQ(child<QLabel>(b.get(), "lblDisplayName")->text(), ":");
    EXPECT_EQ(child<QPushButton>(b.get(), "cmdBrowseVmxFolder")->text(), "...");
    EXPECT_EQ(child<QGroupBox>(b.get(), "fraPowerOptions")->title(), "");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboTargetPlatform")->currentText(), "");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboGuestFamilies")->currentText(), "");
    EXPECT_EQ(options->headerItem()->text(0), "");
    EXPECT_EQ(child<QGroupBox>(b.get(), "fraCPU")->title(), "");
    // The entries of the options list are fixed English.
    EXPECT_EQ(options->topLevelItem(3)->text(0), "Snapshots");
    EXPECT_EQ(b->LanguageOffset, 500);

    b->UpdateUILabels(0);
    EXPECT_EQ(tabs->tabText(0), "Options");
    EXPECT_EQ(tabs->tabText(1), "Hardware");
    EXPECT_EQ(child<QLabel>(b.get(), "lblDisplayName")->text(), "Display Name:");
    EXPECT_EQ(child<QPushButton>(b.get(), "cmdBrowseVmxFolder")->text(), "Browse...");
    EXPECT_EQ(child<QGroupBox>(b.get(), "fraPowerOptions")->title(), "Power Options");
    EXPECT_EQ(child<QLabel>(b.get(), "lblPriorityNote")->text(),
              "These settings override the global values specified in  Edit > Preferences > Priority.");
    EXPECT_EQ(child<QComboBox>(b.get(), "cboInputUngrabPri")->itemText(0), "low");
    EXPECT_EQ(child<QTreeWidget>(b.get(), "lvwHardwareList")->headerItem()->text(0), "Device");
    EXPECT_EQ(child<QGroupBox>(b.get(), "fraCPU")->title(), "Virtual Processor");
    // Relabelling changes nothing in the configuration.
    EXPECT_FALSE(b->ChangesPending());
}

}  // namespace
}  // namespace arden::gui::test

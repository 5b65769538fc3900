// The editor's pages: the lists that follow platform, version and family, the option pages
// with their inverted boxes and summaries, and the hardware list.
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>

#include "BuilderTestSupport.h"
#include "core/config/ProductTables.h"
#include "core/hardware/DeviceTexts.h"

namespace arden::gui::test {
namespace {

using arden::test::ScratchDir;

struct GeneralLists {
    QComboBox* platform;
    QComboBox* version;
    QComboBox* families;
    QComboBox* guests;
    explicit GeneralLists(Builder* b)
        : platform(child<QComboBox>(b, "cboTargetPlatform")),
          version(child<QComboBox>(b, "cboPlatformVersion")),
          families(child<QComboBox>(b, "cboGuestFamilies")),
          guests(child<QComboBox>(b, "cboGuestVersions")) {}
    void choose(int platformIndex, int versionIndex) {
        platform->setCurrentIndex(platformIndex);
        version->setCurrentIndex(versionIndex);
    }
};

QTreeWidgetItem* itemOfType(QTreeWidget* list, const Builder& b, DeviceType type) {
    const auto devices = b.configuration().devices.hardwareList();
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        if (devices[static_cast<std::size_t>(i)].type == type) return list->topLevelItem(i);
    }
    return nullptr;
}

TEST(BuilderGeneralPage, VersionsFamiliesAndGuestsFollowTheirLists) {
    ScratchDir dir;
    auto b = newMachine("Lists", dir.path());
    GeneralLists g(b.get());

    g.choose(kWorkstation, 0);  // 3.x
    EXPECT_EQ(entries(g.families), QStringList({"Microsoft Windows", "Linux", "NetWare", "Other"}));
    g.version->setCurrentIndex(2);  // 4.5x
    EXPECT_TRUE(entries(g.families).contains("Solaris"));

    // A new platform starts on its latest version and the families follow it.
    g.platform->setCurrentIndex(kPlayer);
    EXPECT_EQ(entries(g.version), QStringList{"1.x"});
    EXPECT_EQ(g.version->currentIndex(), 0);
    EXPECT_EQ(b->configuration().product.version, 0);
    EXPECT_TRUE(entries(g.families).contains("Solaris"));
    g.platform->setCurrentIndex(kGsxServer);
    EXPECT_EQ(entries(g.version), QStringList({"2.5x", "3.x"}));
    EXPECT_EQ(g.version->currentIndex(), 1);
    EXPECT_TRUE(entries(g.families).contains("Solaris"));
    g.version->setCurrentIndex(0);
    EXPECT_FALSE(entries(g.families).contains("Solaris"));
    EXPECT_EQ(b->configuration().product.platform, kGsxServer);
    EXPECT_EQ(b->configuration().product.version, 0);

    // A family refills the guest versions; the guest identifier follows the chosen cell.
    g.families->setCurrentIndex(g.families->findText("Linux"));
    const auto linux = guestVersions(kFamilyLinux);
    ASSERT_EQ(g.guests->count(), static_cast<int>(linux.size()));
    EXPECT_EQ(g.guests->itemText(1), qs(std::string(linux[1].name)));
    EXPECT_EQ(g.guests->currentIndex(), 0);
    EXPECT_EQ(b->configuration().product.guestId, linux[0].identifier);
    g.guests->setCurrentIndex(3);
    EXPECT_EQ(b->configuration().product.guestFamily, kFamilyLinux);
    EXPECT_EQ(b->configuration().product.guestId, linux[3].identifier);
    EXPECT_EQ(child<QTreeWidget>(b.get(), "lvwOptionsList")->topLevelItem(0)->text(1),
              qs(optionSummary(b->configuration(), 0)));
}

TEST(BuilderGeneralPage, AFamilyTheProductLacksStaysUntilAnotherIsChosen) {
    ScratchDir dir;
    auto b = newMachine("Solaris", dir.path());
    GeneralLists g(b.get());
    g.families->setCurrentIndex(g.families->findText("Solaris"));
    const std::string solarisGuest = b->configuration().product.guestId;
    g.choose(kWorkstation, 1);  // 4.0x offers no Solaris
    EXPECT_EQ(g.families->currentIndex(), -1);
    EXPECT_EQ(b->configuration().product.guestId, solarisGuest);
    g.guests->setCurrentIndex(1);
    EXPECT_EQ(b->configuration().product.guestId, guestVersions(kFamilySolaris)[1].identifier);
}

TEST(BuilderGeneralPage, MemoryLimitsAndDisplayNameFollowTheEdits) {
    ScratchDir dir;
    auto b = newMachine("Limits", dir.path());
    auto* hardware = child<QTreeWidget>(b.get(), "lvwHardwareList");
    QTreeWidgetItem* memory = itemOfType(hardware, *b, DeviceType::Memory);
    ASSERT_NE(memory, nullptr);
    hardware->setCurrentItem(memory);
    auto* range = child<QLabel>(b.get(), "lblMemoryRange");
    EXPECT_TRUE(range->text().contains("3600")) << range->text().toStdString();  // Workstation 5.5x
    GeneralLists(b.get()).choose(kWorkstation, 0);
    EXPECT_TRUE(range->text().contains("1024"))  // Workstation 3.x
        << range->text().toStdString();

    QStringList titles;
    QObject::connect(b.get(), &Builder::displayNameChanged, [&](const QString& n) { titles << n; });
    child<QLineEdit>(b.get(), "txtDisplayName")->setText("Renamed");
    EXPECT_EQ(titles, QStringList{"Renamed"});
    EXPECT_EQ(b->favoriteDisplayName(), "Renamed");

    child<QPlainTextEdit>(b.get(), "txtNotes")->setPlainText("first\nsecond");
    EXPECT_EQ(b->configuration().identity.notes, "first\r\nsecond");
}

TEST(BuilderOptionPages, InvertedBoxesStoreTheInverseAndRewriteEverySummary) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    auto b = openCopy("metasploitable2__Metasploitable.vmx", dir.path());
    auto* options = child<QTreeWidget>(b.get(), "lvwOptionsList");
    const VmConfiguration& c = b->configuration();
    const struct { const char* name; const bool* allowed; } boxes[] = {
        {"chkSharedDisable", &c.sharedFolders.allowed},
        {"chkSnapshotsEnabled", &c.snapshots.allowed},
        {"chkInteractDND", &c.isolation.dragAndDropAllowed},
        {"chkInteractPaste", &c.isolation.pasteAllowed},
        {"chkInteractCopy", &c.isolation.copyAllowed}};
    for (const auto& box : boxes) {
        auto* check = child<QCheckBox>(b.get(), box.name);
        ASSERT_EQ(check->isChecked(), !*box.allowed) << box.name;
        for (int i = 0; i < 6; ++i) options->topLevelItem(i)->setText(1, "stale");
        check->click();
        EXPECT_EQ(*box.allowed, !check->isChecked()) << box.name;
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(options->topLevelItem(i)->text(1), qs(optionSummary(c, i))) << box.name << " entry " << i;
    }
    EXPECT_FALSE(c.sharedFolders.allowed);
    EXPECT_EQ(options->topLevelItem(3)->text(1), "Disabled");
    EXPECT_TRUE(b->ChangesPending());

    child<QCheckBox>(b.get(), "chkDebug")->click();
    EXPECT_TRUE(c.advanced.debug);
    child<QComboBox>(b.get(), "cboInputUngrabPri")->setCurrentIndex(0);
    EXPECT_EQ(c.advanced.ungrabbedPriority, 0);
    child<QComboBox>(b.get(), "cboReset")->setCurrentIndex(1);
    EXPECT_EQ(c.power.reset, 1);
}

TEST(BuilderOptionPages, ClickingTheChosenOptionButtonStillMarksAChange) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    auto b = openCopy("metasploitable2__Metasploitable.vmx", dir.path());
    const int action = b->configuration().snapshots.action;
    const char* kButtons[] = {"optSnapPowerOff", "optSnapRevert", "optSnapTakeNew", "optSnapAsk"};
    auto* chosen = child<QRadioButton>(b.get(), kButtons[action]);
    ASSERT_TRUE(chosen->isChecked());
    chosen->click();
    EXPECT_TRUE(b->ChangesPending());
    EXPECT_EQ(b->configuration().snapshots.action, action);
    child<QRadioButton>(b.get(), "optSnapAsk")->click();
    EXPECT_EQ(b->configuration().snapshots.action, 3);

    // The action and the log settings are disabled while they do not apply.
    child<QCheckBox>(b.get(), "chkSnapshotsEnabled")->click();
    EXPECT_FALSE(child<QGroupBox>(b.get(), "fraPowerOffAction")->isEnabled());
    auto* logging = child<QCheckBox>(b.get(), "chkLogging");
    if (logging->isChecked()) logging->click();
    EXPECT_FALSE(child<QLineEdit>(b.get(), "txtLogFolder")->isEnabled());

    // Selecting an entry of the options list shows its page.
    auto* list = child<QTreeWidget>(b.get(), "lvwOptionsList");
    list->setCurrentItem(list->topLevelItem(4));
    EXPECT_EQ(child<QStackedWidget>(b.get(), "sstOptions")->currentIndex(), 4);
}

TEST(BuilderOptionPages, LogFolderPickerAndSharedFolderRemoval) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    auto b = openCopy("golovitskydd__Windows-10-x64.vmx", dir.path());
    PromptScript script;
    auto* browse = child<QPushButton>(b.get(), "cmdBrowseLogFolder");
    auto* folder = child<QLineEdit>(b.get(), "txtLogFolder");
    const QString before = folder->text();
    browse->click();  // cancelled
    EXPECT_EQ(folder->text(), before);
    EXPECT_FALSE(b->ChangesPending());
    script.folder("/var/log/machines");
    browse->click();
    EXPECT_EQ(b->configuration().advanced.logFolder, "/var/log/machines");
    ASSERT_EQ(script.shown().size(), 2u);
    EXPECT_EQ(script.shown()[1].title, "Log Files Location");
    EXPECT_EQ(script.shown()[1].text, before);
    EXPECT_TRUE(b->ChangesPending());

    auto* shares = child<QTreeWidget>(b.get(), "lvwSharedFolders");
    auto* remove = child<QPushButton>(b.get(), "cmdSharedRemove");
    EXPECT_FALSE(remove->isEnabled());
    shares->setCurrentItem(shares->topLevelItem(0));
    ASSERT_TRUE(remove->isEnabled());
    remove->click();
    EXPECT_EQ(shares->topLevelItemCount(), 0);
    EXPECT_TRUE(b->configuration().sharedFolders.folders.empty());
    EXPECT_EQ(child<QTreeWidget>(b.get(), "lvwOptionsList")->topLevelItem(2)->text(1),
              qs(optionSummary(b->configuration(), 2)));
}

TEST(BuilderHardwareList, EntriesSelectionAndRemoval) {
    ARDEN_REQUIRE_CORPUS();
    ScratchDir dir;
    auto b = openCopy("metasploitable2__Metasploitable.vmx", dir.path());
    auto* list = child<QTreeWidget>(b.get(), "lvwHardwareList");
    const auto entries = b->configuration().devices.hardwareList();
    ASSERT_EQ(list->topLevelItemCount(), static_cast<int>(entries.size()));
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        EXPECT_EQ(list->topLevelItem(i)->data(0, Qt::UserRole).toString(), qs(entries[static_cast<std::size_t>(i)].key));
        EXPECT_FALSE(list->topLevelItem(i)->icon(0).isNull());
    }
    auto* remove = child<QPushButton>(b.get(), "cmdHardwareRemove");
    list->setCurrentItem(itemOfType(list, *b, DeviceType::Cpu));
    EXPECT_FALSE(remove->isEnabled());

    // The CD-ROM drive sits on IDE 1:0.
    QTreeWidgetItem* cd = itemOfType(list, *b, DeviceType::CdRom);
    ASSERT_NE(cd, nullptr);
    list->setCurrentItem(cd);
    const Device& drive = b->configuration().devices.devices(DeviceType::CdRom).front();
    EXPECT_EQ(child<QStackedWidget>(b.get(), "sstHardware")->currentIndex(), 11);
    EXPECT_TRUE(child<QRadioButton>(b.get(), "optCDRIDE")->isChecked());
    EXPECT_FALSE(child<QRadioButton>(b.get(), "optCDRSCSI")->isChecked());
    EXPECT_TRUE(child<QComboBox>(b.get(), "cboCDRIDE")->currentText().startsWith("IDE 1:0"));
    EXPECT_EQ(child<QComboBox>(b.get(), "cboCDRSCSI")->currentText(), "N/A");
    EXPECT_FALSE(b->ChangesPending());

    const int row = list->indexOfTopLevelItem(cd);
    const std::string identifier = drive.identifier;
    ASSERT_TRUE(remove->isEnabled());
    remove->click();
    EXPECT_TRUE(b->ChangesPending());
    EXPECT_EQ(b->configuration().devices.find(DeviceType::CdRom, identifier), nullptr);
    EXPECT_EQ(list->topLevelItemCount(), static_cast<int>(entries.size()) - 1);
    ASSERT_NE(list->currentItem(), nullptr);
    EXPECT_EQ(list->indexOfTopLevelItem(list->currentItem()), std::min(row, list->topLevelItemCount() - 1));
    DeviceType shownType{};
    std::string shownIdentifier;
    ASSERT_TRUE(parseHardwareListKey(list->currentItem()->data(0, Qt::UserRole).toString().toStdString(), shownType,
                                     shownIdentifier));
    EXPECT_EQ(child<QStackedWidget>(b.get(), "sstHardware")->currentIndex(), typeNumber(shownType));
}

}  // namespace
}  // namespace arden::gui::test

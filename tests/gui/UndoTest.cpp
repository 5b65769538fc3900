// Undo and redo in an editor: twenty mixed edits, one step each and named as the menu shows
// them, undone back to the opened file's re-save and redone to the same text; the unsaved mark
// following the history; a node choice undone with the device it moved aside; the Edit menu,
// its keys and its texts in every language; the Changes window and a file another program
// wrote before Save.
#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QUndoStack>

#include "MainWindowFixture.h"
#include "core/config/VmxLoader.h"
#include "core/config/VmxWriter.h"
#include "gui/hardware/frmAddSharedFolder.h"
#include "gui/shell/frmChanges.h"

namespace fs = std::filesystem;

namespace arden::gui::test {
namespace {

using arden::test::readBytes;
using arden::test::ScratchDir;
using arden::test::writeBytes;

const char* const kMachine =
    "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\ndisplayName = \"Undo Me\"\r\nguestOS = \"winxppro\"\r\n"
    "numvcpus = \"1\"\r\nmemsize = \"256\"\r\nfloppy0.present = \"TRUE\"\r\nide0:0.present = \"TRUE\"\r\n"
    "ide0:0.fileName = \"disk.vmdk\"\r\nide1:0.present = \"TRUE\"\r\nide1:0.fileName = \"auto detect\"\r\n"
    "ide1:0.deviceType = \"cdrom-raw\"\r\nethernet0.present = \"TRUE\"\r\nethernet0.virtualDev = \"e1000\"\r\n"
    "usb.present = \"TRUE\"\r\nsvga.maxWidth = \"1024\"\r\nvmmouse.present = \"TRUE\"\r\ncustom.kept = \"yes\"\r\n";

std::string written(Builder* b) { return writeVmxText(b->configuration()); }

QString shownPage(Builder* b) {
    auto* main = child<QTabWidget>(b, "sstMain");
    if (main->currentIndex() == 0)
        return "Options " + QString::number(child<QStackedWidget>(b, "sstOptions")->currentIndex());
    return "Hardware " + child<QTreeWidget>(b, "lvwHardwareList")->currentItem()->text(0);
}

void clickBox(Builder* b, const char* name) { child<QCheckBox>(b, name)->click(); }

// Twenty user actions, each with the name its step shows and the page shown when it is undone.
struct Action {
    std::function<void(Builder*)> act;
    QString name;
    QString page;
};

std::vector<Action> twentyActions(const QString& shareFolder) {
    return {
        {[](Builder* b) {
             auto* box = child<QLineEdit>(b, "txtDisplayName");
             for (QChar c : QString(" Web")) box->insert(c);  // one keystroke at a time
         },
         "Display Name Undo Me Web", "Options 0"},
        {[](Builder* b) { clickBox(b, "chkSnapshotsEnabled"); }, "Disable Snapshots", "Options 3"},
        {[](Builder* b) { pick(child<QComboBox>(b, "cboPowerOff"), "Shut Down Guest"); }, "Power Off button Shut Down Guest",
         "Options 1"},
        {[](Builder* b) {
             chooseDevice(b, DeviceType::Memory);
             typeInto(child<QLineEdit>(b, "txtMemSize"), "512");
         },
         "Memory 512 MB", "Hardware Memory"},
        {[](Builder* b) { addThroughDialog(b, "Serial Port"); }, "Add Serial Port 1", "Hardware Hard Disk 1"},
        {[](Builder* b) {
             chooseDevice(b, DeviceType::HardDisk);
             pick(child<QComboBox>(b, "cboHDIDE"), "IDE 1:0 - CD-ROM 1");
         },
         "Hard Disk 1 IDE 1:0, disk.vmdk", "Hardware Hard Disk 1"},
        {[](Builder* b) {
             chooseDevice(b, DeviceType::Floppy);
             child<QPushButton>(b, "cmdHardwareRemove")->click();
         },
         "Remove Floppy 1", "Hardware Floppy 1"},
        {[shareFolder](Builder* b) {
             onNextModal([shareFolder](QWidget* d) {
                 typeInto(child<QLineEdit>(d, "txtShareName"), "Music");
                 typeInto(child<QLineEdit>(d, "txtHostFolder"), shareFolder);
                 child<QPushButton>(d, "cmdOK")->click();
             });
             child<QPushButton>(b, "cmdSharedAdd")->click();
         },
         "Add Music", "Options 2"},
        {[](Builder* b) {
             PromptScript::active()->answer(Answer::Yes);  // fit the machine to the older product
             pick(child<QComboBox>(b, "cboPlatformVersion"), "5.0x");
         },
         "Target Platform Workstation 5.0x",
         "Options 0"},
        {[](Builder* b) { pick(child<QComboBox>(b, "cboGuestFamilies"), "Linux"); }, "Guest Operating System Red Hat Linux", "Options 0"},
        {[](Builder* b) { clickBox(b, "chkInteractDND"); }, "Disable drag and drop to and from this virtual machine",
         "Options 4"},
        {[](Builder* b) { pick(child<QComboBox>(b, "cboInputUngrabPri"), "low"); }, "Input ungrabbed low", "Options 5"},
        {[](Builder* b) { clickBox(b, "chkDebug"); }, "Run with debugging information", "Options 5"},
        {[](Builder* b) { child<QLineEdit>(b, "txtLogFolder")->setText("/var/log/vm"); }, "Log Files Location /var/log/vm",
         "Options 5"},
        {[](Builder* b) {
             chooseDevice(b, DeviceType::Cpu);
             clickBox(b, "chkCPUPae");
         },
         "CPU 1 Virtual processor, PAE emulated", "Hardware CPU 1"},
        {[](Builder* b) {
             chooseDevice(b, DeviceType::Display);
             typeInto(child<QLineEdit>(b, "txtVRamSize"), "16");
         },
         "Display 16 MB video RAM", "Hardware Display"},
        {[](Builder* b) {
             chooseDevice(b, DeviceType::Usb);
             clickBox(b, "chkUsbAutoConnect");
         },
         "USB Controller Enabled, devices connect automatically", "Hardware USB Controller"},
        {[](Builder* b) { child<QLineEdit>(b, "txtWorkingDir")->setText("/srv"); }, "Working Directory /srv", "Options 0"},
        {[](Builder* b) { child<QPlainTextEdit>(b, "txtNotes")->setPlainText("a note"); }, "Notes", "Options 0"},
        {[](Builder* b) {
             chooseDevice(b, DeviceType::Mouse);
             clickBox(b, "chkMouseEnabled");
         },
         "Mouse Disabled", "Hardware Mouse"},
    };
}

TEST(Undo, TwentyMixedEditsUndoneGiveTheResavedFileAndRedoneGiveThemBack) {
    ScratchDir dir;
    PromptScript script;
    writeBytes(dir / "undo.vmx", kMachine);
    auto b = openFile(dir / "undo.vmx");
    const std::string resaved = writeVmxText(loadVmxFile(dir / "undo.vmx").config);
    const auto actions = twentyActions(qpath(dir.path()));
    ASSERT_EQ(actions.size(), 20u);

    std::vector<std::string> texts{written(b.get())};
    ASSERT_EQ(texts[0], resaved);
    for (const Action& a : actions) {
        a.act(b.get());
        texts.push_back(written(b.get()));
        EXPECT_NE(texts.back(), texts[texts.size() - 2]) << a.name;
        EXPECT_EQ(b->history()->count(), int(texts.size()) - 1) << "one action, one step: " << a.name;
        EXPECT_EQ(b->undoName(), a.name);
    }

    for (std::size_t i = actions.size(); i > 0; --i) {
        b->history()->undo();
        EXPECT_EQ(written(b.get()), texts[i - 1]) << "undoing " << actions[i - 1].name;
        EXPECT_EQ(shownPage(b.get()), actions[i - 1].page) << "undoing " << actions[i - 1].name;
    }
    EXPECT_EQ(written(b.get()), resaved);
    EXPECT_FALSE(b->history()->canUndo());
    EXPECT_FALSE(b->ChangesPending());
    EXPECT_EQ(child<QLineEdit>(b.get(), "txtDisplayName")->text(), "Undo Me") << "the pages show the machine";

    for (std::size_t i = 1; i <= actions.size(); ++i) {
        EXPECT_EQ(b->redoName(), actions[i - 1].name);
        b->history()->redo();
        EXPECT_EQ(written(b.get()), texts[i]) << "redoing " << actions[i - 1].name;
    }
    EXPECT_TRUE(b->ChangesPending());
    EXPECT_EQ(child<QTreeWidget>(b.get(), "lvwSharedFolders")->topLevelItemCount(), 1);
}

// A node taken from another device: one step puts both back, and redoing moves both again.
TEST(Undo, ANodeMoveIsUndoneWithTheDeviceItMovedAside) {
    ScratchDir dir;
    PromptScript script;
    writeBytes(dir / "nodes.vmx", kMachine);
    auto b = openFile(dir / "nodes.vmx");
    const VmConfiguration opened = b->configuration();
    chooseDevice(b.get(), DeviceType::CdRom);
    ASSERT_TRUE(pick(child<QComboBox>(b.get(), "cboCDRIDE"), "IDE 0:0 - Hard Disk 1"));
    const VmConfiguration moved = b->configuration();
    auto* list = child<QTreeWidget>(b.get(), "lvwHardwareList");
    const QStringList movedSummaries = column(list, 1);
    ASSERT_TRUE(movedSummaries.contains("IDE 0:0, auto detect") && movedSummaries.contains("IDE 0:1, disk.vmdk"))
        << movedSummaries.join(" | ");
    EXPECT_EQ(b->undoName(), "CD-ROM 1 IDE 0:0, auto detect");

    b->history()->undo();
    EXPECT_TRUE(b->configuration() == opened);
    EXPECT_TRUE(column(list, 1).contains("IDE 1:0, auto detect") && column(list, 1).contains("IDE 0:0, disk.vmdk"));
    EXPECT_EQ(child<QComboBox>(b.get(), "cboCDRIDE")->currentText(), "IDE 1:0 - CD-ROM 1") << "the page shows it too";
    b->history()->redo();
    EXPECT_TRUE(b->configuration() == moved);
    EXPECT_EQ(column(list, 1), movedSummaries);
}

// Typing that ends where it began is no step; a new machine exists only in the editor, and
// undoing its edits leaves it unsaved.
TEST(Undo, TypingBackToTheStartIsNoStepAndANewMachineStaysUnsaved) {
    ScratchDir dir;
    PromptScript script;
    writeBytes(dir / "typed.vmx", kMachine);
    auto b = openFile(dir / "typed.vmx");
    auto* box = child<QLineEdit>(b.get(), "txtDisplayName");
    box->end(false);
    box->insert("x");
    EXPECT_TRUE(b->ChangesPending());
    box->backspace();
    EXPECT_FALSE(b->history()->canUndo());
    EXPECT_FALSE(b->ChangesPending());

    auto fresh = newMachine("Fresh", dir.path());
    clickBox(fresh.get(), "chkDebug");
    fresh->history()->undo();
    EXPECT_TRUE(fresh->ChangesPending()) << "never saved";
    ASSERT_TRUE(fresh->CreateVmxFile());
    fresh->history()->redo();
    EXPECT_TRUE(fresh->ChangesPending());
    fresh->history()->undo();
    EXPECT_FALSE(fresh->ChangesPending()) << "back at the state just saved";
}

QString tabText(QTabWidget* tabs) { return tabs->tabText(tabs->currentIndex()); }

TEST_F(MainWindow, UndoingToTheSavedStateClearsTheMarkAndTheCloseQuestion) {
    writeVmx("vm/vm.vmx");
    open();
    Builder* editor = edit("vm/vm.vmx");
    auto* undo = child<QAction>(window.get(), "mnuEditUndo");
    auto* redo = child<QAction>(window.get(), "mnuEditRedo");
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_EQ(undo->text(), "&Undo");

    chooseDevice(editor, DeviceType::Memory);
    typeInto(child<QLineEdit>(editor, "txtMemSize"), "512");
    EXPECT_EQ(tabText(tabs()), "Small One *");
    EXPECT_EQ(undo->text(), "&Undo Memory 512 MB");
    undo->trigger();
    EXPECT_EQ(tabText(tabs()), "Small One");
    EXPECT_FALSE(editor->ChangesPending());
    EXPECT_EQ(redo->text(), "&Redo Memory 512 MB");
    redo->trigger();
    EXPECT_EQ(tabText(tabs()), "Small One *");

    // Saved: that is the clean state now; undoing leaves it, redoing comes back.
    window->saveConfiguration();
    EXPECT_EQ(tabText(tabs()), "Small One");
    undo->trigger();
    EXPECT_EQ(tabText(tabs()), "Small One *");
    redo->trigger();
    EXPECT_EQ(tabText(tabs()), "Small One");
    undo->trigger();
    redo->trigger();
    script.clear();
    EXPECT_TRUE(window->CloseEditorTab());
    EXPECT_EQ(said(script), QStringList{}) << "no question for a tab back at its saved state";
    EXPECT_FALSE(undo->isEnabled()) << "the Home tab has no steps";
}

// Ctrl+Z, Ctrl+Shift+Z and Ctrl+Y from the keyboard, and the Edit menu's words with their
// letters in the five languages.
TEST_F(MainWindow, TheEditMenuKeysAndTexts) {
    writeVmx("vm/vm.vmx");
    open();
    Builder* editor = edit("vm/vm.vmx");
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    chooseDevice(editor, DeviceType::Memory);
    typeInto(child<QLineEdit>(editor, "txtMemSize"), "128");
    typeInto(child<QLineEdit>(editor, "txtMemSize"), "512");
    child<QTreeWidget>(editor, "lvwHardwareList")->setFocus();
    auto memory = [&] { return settingsOf(editor, DeviceType::Memory).text("memsize"); };
    const std::pair<QKeySequence, std::string> keys[] = {
        {QKeySequence("Ctrl+Z"), "128"}, {QKeySequence("Ctrl+Z"), "256"}, {QKeySequence("Ctrl+Shift+Z"), "128"},
        {QKeySequence("Ctrl+Y"), "512"}};
    for (const auto& [key, expected] : keys) {
        QTest::keyClick(window.get(), key[0].key(), key[0].keyboardModifiers());
        EXPECT_EQ(memory(), expected) << key.toString();
    }

    struct Words { int offset; QString edit, undo, redo, changes; };
    const Words languages[] = {
        {0, "&Edit", "&Undo", "&Redo", "C&hanges..."},
        {500, "&Bearbeiten", QString::fromUtf8("&Rückgängig"), "&Wiederholen", QString::fromUtf8("&Änderungen...")},
        {1000, QString::fromUtf8("&Édition"), "&Annuler", QString::fromUtf8("&Rétablir"), "&Modifications..."},
        {1500, QString::fromUtf8("&Edición"), "&Deshacer", "&Rehacer", "C&ambios..."},
        {2000, "&Modifica", "&Annulla", "&Ripeti", "&Modifiche..."},
    };
    for (const Words& w : languages) {
        window->settings().LanguageOffset = w.offset;
        window->UpdateUILabels();
        EXPECT_EQ(child<QMenu>(window.get(), "mnuEdit")->title(), w.edit);
        EXPECT_EQ(child<QAction>(window.get(), "mnuEditUndo")->text(), w.undo + " Memory 512 MB");
        EXPECT_EQ(child<QAction>(window.get(), "mnuEditRedo")->text(), w.redo);
        EXPECT_EQ(child<QAction>(window.get(), "mnuVMChanges")->text(), w.changes) << w.offset;
    }
}

frmChanges* changesShown(frmMain& window) {
    window.showChanges();
    auto* changes = window.findChild<frmChanges*>("frmChanges");
    EXPECT_TRUE(changes && changes->isVisible());
    return changes;
}

TEST_F(MainWindow, ChangesShowsWhatASaveWouldWriteAndAFileChangedOnDiskIsAskedAbout) {
    const fs::path file = writeVmx("vm/vm.vmx", ".encoding = \"windows-1252\"\r\n" + std::string(kSmallVmx) + "annotation = \"caf\xe9\"\r\n");
    open();
    Builder* editor = edit("vm/vm.vmx");
    const std::string opened = readBytes(file);
    chooseDevice(editor, DeviceType::Memory);
    typeInto(child<QLineEdit>(editor, "txtMemSize"), "512");

    child<QAction>(window.get(), "tlbChanges")->trigger();
    frmChanges* changes = window->findChild<frmChanges*>("frmChanges");
    ASSERT_TRUE(changes && changes->isVisible());
    EXPECT_EQ(changes->windowTitle(), "Changes - Small One");
    EXPECT_EQ(changes->notes(), "");
    const QString shown = changes->changes();
    EXPECT_TRUE(shown.startsWith("--- " + at("vm/vm.vmx") + "\n+++ " + at("vm/vm.vmx") + "\n@@ -1,")) << shown;
    EXPECT_TRUE(shown.contains("\n-memsize = \"256\"\n")) << shown;
    EXPECT_TRUE(shown.contains("\n+memsize = \"512\"\n")) << shown;
    EXPECT_TRUE(shown.contains(QString::fromUtf8(" \"caf\xc3\xa9\""))) << "read in the file's own encoding: " << shown;
    EXPECT_EQ(readBytes(file), opened) << "nothing written";

    // Another program writes the file: the window says so first, and Save asks.
    writeBytes(file, opened + "# written by another program\r\n");
    EXPECT_EQ(changesShown(*window)->notes(),
              "The file on disk was changed by another program after it was opened.");
    EXPECT_TRUE(changes->changes().contains("\n-# written by another program\n"));
    script.answer(Answer::No);
    window->saveConfiguration();
    EXPECT_EQ(said(script), QStringList{"Changed on Disk: " + at("vm/vm.vmx") +
                                        "\n\nThe file on disk was changed by another program after it was opened.  "
                                        "Save over it anyway?"});
    EXPECT_EQ(readBytes(file), opened + "# written by another program\r\n");
    EXPECT_TRUE(editor->ChangesPending());
    script.answer(Answer::Yes);
    window->saveConfiguration();
    EXPECT_EQ(readBytes(file), writeVmxText(editor->configuration()));

    // Saved: nothing more to change, and no question at the next save.
    EXPECT_EQ(changesShown(*window)->notes(), "A save would change nothing: the file on disk already holds this text.");
    EXPECT_EQ(changes->changes(), "");
    script.clear();
    window->saveConfiguration();
    EXPECT_EQ(said(script), QStringList{});

    // A new machine: its file is not there yet.
    window->OpenEditorTab(false, {}, "Fresh", 8, at("new"));
    EXPECT_EQ(changesShown(*window)->notes(), "The file does not exist yet: a save creates it.");
    EXPECT_TRUE(changes->changes().startsWith("--- /dev/null\n+++ " + at("new/Fresh.vmx") + "\n@@ -0,0 +1,"));
}

}  // namespace
}  // namespace arden::gui::test

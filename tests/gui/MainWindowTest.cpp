// The main window driven as a user would: command line, New, Open, Save, Close, shut-down, the
// favourites list, drops, pickers, placement and launching. Every prompt is scripted and recorded.
#include <QAction>
#include <QCloseEvent>
#include <QDropEvent>
#include <QScreen>
#include <QMimeData>
#include <QUrl>

#include "MainWindowFixture.h"
#include "gui/shell/VmLauncher.h"
#include "gui/shell/frmSummary.h"

namespace fs = std::filesystem;

namespace arden::gui::test {
namespace {

// Runs the test body from another current folder and goes back afterwards.
struct InFolder {
    explicit InFolder(const fs::path& folder) : before(fs::current_path()) { fs::current_path(folder); }
    ~InFolder() { fs::current_path(before); }
    fs::path before;
};

void drop(QWidget* window, const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &enter);
    EXPECT_TRUE(enter.isAccepted()) << "a drag holding a .vmx file is welcome";
    QDropEvent dropped(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window, &dropped);
}

TEST_F(MainWindow, TheCommandLineOpensItsFileAfterTheDelayOrWarns) {
    writeVmx("with blanks/My Machine.vmx");
    InFolder cwd(home.path() / "with blanks");
    const QString full = at("with blanks/My Machine.vmx");
    for (const QString& line : {"\"" + full + "\"", full, QString("My Machine.vmx"), QString("\"./My Machine.vmx\"")}) {
        open(line);
        ASSERT_TRUE(QTest::qWaitFor([&] { return tabs()->count() == 2; }, 5000)) << line;
        EXPECT_EQ(tabs()->tabText(1), "Small One");
        EXPECT_EQ(window->activeEditor()->vmxPath(), full);
    }
    EXPECT_TRUE(script.messages().empty());
    open(at("gone.vmx"));
    EXPECT_EQ(said(script), QStringList{"Invalid Command Arguments passed: Unable to locate file " + at("gone.vmx")});
    QTest::qWait(400);
    EXPECT_EQ(tabs()->count(), 1);
}

TEST_F(MainWindow, NewAsksFolderAndNameAndTheTabShowsTheUnsavedMachine) {
    fs::create_directories(home.path() / "a");
    InFolder cwd(home.path());
    open();
    script.folder("a");  // made absolute
    script.input(std::nullopt);
    window->newConfiguration();
    EXPECT_EQ(tabs()->tabText(1), "New VM *");
    EXPECT_EQ(tabs()->tabToolTip(1), at("a/New VM.vmx"));
    ASSERT_EQ(script.shown().size(), 2u);
    EXPECT_EQ(script.shown()[1].title + ": " + script.shown()[1].text, "Display Name?: Enter Display Name for VM");
    script.folder(at("a"));
    script.input(QString("Fresh"));
    window->newConfiguration();
    EXPECT_EQ(tabs()->tabText(2), "Fresh *");
}

TEST_F(MainWindow, OpenTakesThePickedFileAndSaveAddsOneFavourite) {
    const fs::path file = writeVmx("vm1/vm1.vmx");
    InFolder cwd(home.path() / "vm1");
    open();
    script.file("vm1.vmx");  // made absolute
    window->openConfiguration();
    EXPECT_EQ(script.shown()[0].title + ": " + script.shown()[0].text,
              "Select Existing Virtual Machine Configuration: VMware Configuration File (*.vmx)");
    EXPECT_EQ(window->activeEditor()->vmxPath(), qpath(file));

    EXPECT_EQ(favourites()->topLevelItemCount(), 0);
    window->saveConfiguration();
    window->saveConfiguration();  // the same name replaces its row
    EXPECT_EQ(column(favourites(), 0) + column(favourites(), 1) + column(favourites(), 2),
              QStringList({"Small One", at("vm1/vm1.vmx"), "8"}));
}

TEST_F(MainWindow, OpeningShowsTheLoaderNoticesAndCloseAsksWhenChanged) {
    const std::string odd = std::string(kSmallVmx) + "this line has no equals sign\r\n";
    const fs::path file = writeVmx("vm3/vm3.vmx", odd);
    open();
    Builder* editor = edit("vm3/vm3.vmx");
    const QString notices = window->notesWindow()->output();
    EXPECT_TRUE(window->notesWindow()->isVisible() && notices.contains("---- " + at("vm3/vm3.vmx")) &&
                notices.contains("line 6: ")) << notices << " (what the loader noticed)";
    EXPECT_EQ(tabs()->tabText(1), "Small One") << "just opened: nothing to save";
    typeKeys(editor, "txtDisplayName", " Changed");
    EXPECT_EQ(tabs()->tabText(1), "Small One Changed *");

    script.answer(Answer::No);
    EXPECT_FALSE(window->CloseEditorTab());
    EXPECT_EQ(tabs()->count(), 2);
    EXPECT_EQ(said(script), QStringList{"Unsaved Changes exist - Small One Changed: You currently have outstanding changes.  "
                                        "Do you  really want to exit without saving?  If you want to continue anyway, "
                                        "click Yes.  If you want to go back and Save, click No."});
    script.answer(Answer::Yes);
    EXPECT_TRUE(window->CloseEditorTab());
    EXPECT_EQ(tabs()->count(), 1);
    EXPECT_FALSE(window->CloseEditorTab()) << "the Home tab never closes";
    EXPECT_EQ(arden::test::readBytes(file), odd) << "closing without saving leaves the file alone";
}

TEST_F(MainWindow, ShutDownAsksLastTabFirstNoCancelsItAndThePlacementIsRemembered) {
    writeVmx("a/a.vmx");
    writeVmx("b/b.vmx");
    open();
    for (const char* name : {"a", "b"}) typeKeys(edit(std::string(name) + "/" + name + ".vmx"), "txtDisplayName", name);
    script.answer(Answer::Yes);  // last tab: close it
    script.answer(Answer::No);   // first tab: keep it, which cancels the exit
    QCloseEvent event;
    QApplication::sendEvent(window.get(), &event);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_EQ(QStringList({said(script).value(0).left(39), said(script).value(1).left(39)}),
              QStringList({"Unsaved Changes exist - Small Oneb: You", "Unsaved Changes exist - Small Onea: You"}));
    EXPECT_EQ(tabs()->count(), 2);
    EXPECT_FALSE(settingsWritten()) << "a cancelled exit skips SaveSettings";

    script.answer(Answer::Yes);
    // A placement within the screen (one beyond it is made to fit: WindowUsabilityTest).
    const QRect area = window->screen()->availableGeometry();
    const QRect placed(area.left() + 10, area.top() + 20, area.width() - 30, area.height() - 40);
    window->setGeometry(placed);
    QCloseEvent again;
    QApplication::sendEvent(window.get(), &again);
    EXPECT_TRUE(again.isAccepted() && settingsWritten());
    open();
    EXPECT_EQ(window->geometry(), placed) << "the placement is remembered";
}

TEST_F(MainWindow, FavouritesShowMissingFilesAndRemoveLeavesTheFile) {
    const fs::path kept = writeVmx("kept/kept.vmx");
    open();
    AddFavorite(window->settings().Favorites, {"Present", kept.string(), 8, 0});
    AddFavorite(window->settings().Favorites, {"Old Gone", (home.path() / "gone.vmx").string(), 7, 0});
    window->UpdateFavoritesList();
    auto* list = favourites();
    EXPECT_EQ(QStringList({list->topLevelItem(0)->data(0, Qt::UserRole).toString(),
                           list->topLevelItem(1)->data(0, Qt::UserRole).toString()}),
              QStringList({"VM", "OldVMMissing"})) << "the icons";
    list->setCurrentItem(list->topLevelItem(0));
    child<QAction>(window.get(), "mnuPopupRemove")->trigger();
    EXPECT_EQ(column(list, 0), QStringList{"Old Gone"});
    EXPECT_TRUE(fs::exists(kept));

    list->setCurrentItem(list->topLevelItem(0));
    writeVmx("gone.vmx");
    child<QAction>(window.get(), "mnuPopupEdit")->trigger();
    EXPECT_EQ(tabs()->tabToolTip(1), at("gone.vmx"));
}

TEST_F(MainWindow, AFileAlreadyOpenShowsItsTabAndOnlyVmxFilesAreDropped) {
    writeVmx("vm/vm.vmx");
    const fs::path other = writeVmx("vm/readme.txt", "not a configuration");
    fs::create_directory_symlink(home.path() / "vm", home.path() / "link");
    open({}, true);
    drop(window.get(), {QUrl::fromLocalFile(qpath(other)), QUrl::fromLocalFile(at("vm/vm.vmx"))});
    ASSERT_EQ(tabs()->count(), 2);
    Builder* first = window->activeEditor();
    EXPECT_EQ(first->vmxPath(), at("vm/vm.vmx"));
    window->OpenEditorTab(false, {}, "Other", 8, at(""));  // another tab in front
    for (const QString& path : {at("vm/../vm/./vm.vmx"), at("link/vm.vmx")}) {
        tabs()->setCurrentIndex(2);
        EXPECT_EQ(window->OpenEditorTab(true, path, {}, 8, {}), first) << path;
        EXPECT_EQ(tabs()->currentIndex(), 1) << path;
    }
    tabs()->setCurrentIndex(2);
    drop(window.get(), {QUrl::fromLocalFile(at("link/vm.vmx"))});
    EXPECT_EQ(tabs()->count(), 3);
    EXPECT_EQ(tabs()->currentIndex(), 1);
    EXPECT_EQ(script.messages().size(), 1u) << "one backup for one open file";
}

TEST_F(MainWindow, PickersStartWhereTheUserLastWasThenAtTheMachineThenHome) {
    writeVmx("m1/m1.vmx");
    fs::create_directory(home.path() / "chosen");
    open();
    script.folder(at("chosen"));
    window->newConfiguration();
    EXPECT_EQ(script.shown()[0].startFolder, QDir::homePath()) << "nothing used yet, no machine: home";
    tabs()->setCurrentIndex(0);
    window->openConfiguration();  // cancelled
    EXPECT_EQ(script.shown().back().startFolder, at("chosen")) << "the folder last used";

    PromptScript fresh;  // nothing picked in this script yet
    edit("m1/m1.vmx");
    window->openConfiguration();
    child<QPushButton>(window->activeEditor(), "cmdBrowseVmxFolder")->click();
    fresh.folder(at("chosen"));
    child<QPushButton>(window->activeEditor(), "cmdBrowseLogFolder")->click();
    window->openConfiguration();
    ASSERT_EQ(fresh.shown().size(), 4u);
    EXPECT_EQ(fresh.shown()[0].startFolder, at("m1")) << "the current machine's folder";
    EXPECT_EQ(fresh.shown()[1].startFolder, at("m1")) << "Browse too";
    EXPECT_EQ(fresh.shown()[3].startFolder, at("chosen")) << "the folder last used comes before the machine's";
}

TEST_F(MainWindow, LaunchingUsesTheConfiguredProgramOrSaysWhatWasTried) {
    const LaunchPlan plans[] = {planLaunch("/vms/My VM/My VM.vmx ", "/opt/vmware/bin/vmplayer"), planLaunch("/vms/a/a.vmx", "  ")};
    EXPECT_EQ(QStringList({plans[0].program, plans[0].argument, plans[0].workingDir, plans[1].program, plans[1].argument,
                           plans[1].workingDir}),
              QStringList({"/opt/vmware/bin/vmplayer", "/vms/My VM/My VM.vmx", "/opt/vmware/bin", "", "/vms/a/a.vmx", "/vms/a"}));
    writeVmx("vm/vm.vmx");
    open();
    edit("vm/vm.vmx");
    window->settings().LaunchApplication = at("no-such-launcher").toStdString();
    window->launchConfiguration();
    window->settings().LaunchApplication.clear();
    window->launchConfiguration();  // offscreen there is no desktop opener
    const QString vmx = at("vm/vm.vmx");
    ASSERT_EQ(said(script).size(), 2);
    EXPECT_EQ(script.messages()[0].kind, MessageKind::Warning);
    EXPECT_TRUE(said(script)[0].startsWith("Launch Virtual Machine: Could not start \"" + at("no-such-launcher") +
                                           "\" to launch \"" + vmx + "\": ")) << said(script)[0];
    EXPECT_EQ(said(script)[1], "Launch Virtual Machine: Could not launch \"" + vmx + "\": no program is set under Options "
                               "(\"Target Platform to Launch VMX files\") and the desktop has no application to open .vmx files with.");
}

}  // namespace
}  // namespace arden::gui::test

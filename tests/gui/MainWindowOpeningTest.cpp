// How configurations reach the main window: relative paths from the command line, pickers and
// drops are made absolute; a file already open shows its tab instead of a second one; pickers
// start where the user was; a tab tells its unsaved changes and its file.
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QTreeWidget>
#include <QUrl>
#include <unistd.h>

#include "MainWindowFixture.h"

namespace fs = std::filesystem;

namespace arden::gui::test {
namespace {

// Runs the test body from another current folder and goes back afterwards.
struct InFolder {
    explicit InFolder(const fs::path& folder) : before(fs::current_path()) { fs::current_path(folder); }
    ~InFolder() { fs::current_path(before); }
    fs::path before;
};

TEST_F(MainWindow, RelativePathsAreMadeAbsoluteBeforeUse) {
    writeVmx("vms/Test WS55.vmx");
    writeVmx("vms/x.vmx");
    const QString vms = at("vms");
    InFolder cwd(home.path() / "vms");

    struct Case { const char* what; QString commandLine; QString expected; };
    const Case cases[] = {
        {"a bare name with a blank", "Test WS55.vmx", vms + "/Test WS55.vmx"},
        {"a quoted bare name", "\"Test WS55.vmx\"", vms + "/Test WS55.vmx"},
        {"a ./ path", "./x.vmx", vms + "/x.vmx"},
    };
    for (const Case& c : cases) {
        open(c.commandLine);
        window->settings().CreateBackups = false;
        EXPECT_EQ(window->ExistingVmxFileName(), c.expected) << c.what;
        QTRY_COMPARE_WITH_TIMEOUT(tabs()->count(), 2, 5000);
        EXPECT_EQ(window->activeEditor()->vmxPath(), c.expected) << c.what;
        window->saveConfiguration();
        auto* list = child<QTreeWidget>(window.get(), "lvwVMs");
        ASSERT_EQ(list->topLevelItemCount(), 1) << c.what << ": the save went through";
        EXPECT_EQ(list->topLevelItem(0)->text(1), c.expected) << c.what << ": the favourite is found from anywhere";
        window.reset();
    }

    // A picker's answer and a new machine's folder are made absolute too.
    open();
    window->settings().CreateBackups = false;
    script.file("x.vmx");
    window->openConfiguration();
    EXPECT_EQ(window->activeEditor()->vmxPath(), vms + "/x.vmx");
    fs::create_directory(home.path() / "vms" / "new");
    script.folder("new");
    script.input(QString("Fresh"));
    window->newConfiguration();
    EXPECT_EQ(window->activeEditor()->vmxPath(), vms + "/new/Fresh.vmx");
}

TEST_F(MainWindow, AFileAlreadyOpenShowsItsTabInsteadOfASecond) {
    const fs::path file = writeVmx("vm/vm.vmx");
    fs::create_directory_symlink(home.path() / "vm", home.path() / "link");
    open();
    script.file(at("vm/vm.vmx"));
    window->openConfiguration();
    ASSERT_EQ(tabs()->count(), 2);
    Builder* first = window->activeEditor();
    window->OpenEditorTab(false, {}, "Other", 8, at(""));  // another tab in front
    ASSERT_EQ(tabs()->count(), 3);

    const QString sameFile[] = {at("vm/vm.vmx"), at("vm/../vm/./vm.vmx"), at("link/vm.vmx")};
    for (const QString& path : sameFile) {
        tabs()->setCurrentIndex(2);
        EXPECT_EQ(window->OpenEditorTab(true, path, {}, 8, {}), first) << path.toStdString();
        EXPECT_EQ(tabs()->count(), 3) << path.toStdString();
        EXPECT_EQ(tabs()->currentIndex(), 1) << path.toStdString();
    }
    // A drop and the Home list take the same way.
    tabs()->setCurrentIndex(2);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(at("link/vm.vmx"))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    EXPECT_EQ(tabs()->count(), 3);
    EXPECT_EQ(tabs()->currentIndex(), 1);

    int backups = 0;
    for (const auto& m : script.messages()) backups += m.title == "Backup Made";
    EXPECT_EQ(backups, 1) << "one backup for one open file";
}

TEST_F(MainWindow, PickersStartWhereTheUserLastWasThenAtTheMachineThenHome) {
    writeVmx("m1/m1.vmx");
    fs::create_directory(home.path() / "chosen");
    open();
    window->settings().CreateBackups = false;

    script.folder(at("chosen"));
    script.input(QString("A"));
    window->newConfiguration();
    ASSERT_EQ(script.shown()[0].type, ShownPrompt::Folder);
    EXPECT_EQ(script.shown()[0].startFolder, QDir::homePath()) << "nothing used yet, no machine: home";

    script.clear();
    tabs()->setCurrentIndex(0);  // Home, nothing selected: no current machine
    window->openConfiguration();  // cancelled
    EXPECT_EQ(script.shown()[0].startFolder, at("chosen")) << "the folder last used";

    PromptScript fresh;  // nothing picked in this script yet
    window->OpenEditorTab(true, at("m1/m1.vmx"), {}, 8, {});
    window->openConfiguration();
    ASSERT_EQ(fresh.shown().size(), 1u);
    EXPECT_EQ(fresh.shown()[0].startFolder, at("m1")) << "the current machine's folder";
    fresh.clear();
    Builder* editor = window->activeEditor();
    child<QPushButton>(editor, "cmdBrowseVmxFolder")->click();
    ASSERT_EQ(fresh.shown().size(), 1u);
    EXPECT_EQ(fresh.shown()[0].startFolder, at("m1")) << "Browse too";
}

TEST_F(MainWindow, TabsShowUnsavedChangesAndTheirFileAsTip) {
    fs::create_directories(home.path() / "a");
    fs::create_directories(home.path() / "b");
    const fs::path file = writeVmx("vm/vm.vmx");
    open();
    window->settings().CreateBackups = false;
    for (const char* folder : {"a", "b"}) {
        script.folder(at(folder));
        script.input(std::nullopt);
        window->newConfiguration();
    }
    EXPECT_EQ(tabs()->tabText(1), "New VM *");
    EXPECT_EQ(tabs()->tabText(2), "New VM *");
    EXPECT_EQ(tabs()->tabToolTip(1), at("a/New VM.vmx"));
    EXPECT_EQ(tabs()->tabToolTip(2), at("b/New VM.vmx"));

    Builder* editor = window->OpenEditorTab(true, at("vm/vm.vmx"), {}, 8, {});
    EXPECT_EQ(tabs()->tabText(3), "Small One") << "just opened: nothing to save";
    typeInto(editor, "txtDisplayName", " Changed");
    EXPECT_EQ(tabs()->tabText(3), "Small One Changed *");
    auto* name = child<QLineEdit>(editor, "txtVmxFileName");
    name->selectAll();
    QTest::keyClicks(name, "renamed.vmx");
    QMetaObject::invokeMethod(name, "editingFinished");
    EXPECT_EQ(tabs()->tabToolTip(3), at("vm/renamed.vmx")) << "the tip follows the file name";
    window->saveConfiguration();
    EXPECT_EQ(tabs()->tabText(3), "Small One Changed");
}

}  // namespace
}  // namespace arden::gui::test

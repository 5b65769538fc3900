// The Shared Folders page and frmAddSharedFolder: add, properties, cancel and remove, the
// dialog's refusals and question, and shares with awkward host paths through save and reopen.
#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "BuilderTestSupport.h"
#include "gui/hardware/frmAddSharedFolder.h"

using namespace arden;
using namespace arden::gui;
using namespace arden::gui::test;
using arden::test::ScratchDir;

namespace {

// What the user does in the dialog once it shows; the dialog is found as the active modal
// window. A step that leaves the dialog open is followed by a click on Cancel, so a test
// never hangs in exec().
void whenDialogShows(std::function<void(frmAddSharedFolder*)> act) {
    QTimer::singleShot(0, [act] {
        auto* dialog = qobject_cast<frmAddSharedFolder*>(QApplication::activeModalWidget());
        if (!dialog) {
            ADD_FAILURE() << "the shared-folder dialog is not showing";
            return;
        }
        act(dialog);
        if (dialog->isVisible()) child<QPushButton>(dialog, "cmdCancel")->click();
    });
}

// Types `text` into a box and leaves it.
void typeAndLeave(QWidget* dialog, const char* box, const QString& text) {
    auto* edit = child<QLineEdit>(dialog, box);
    edit->setText(text);
    emit edit->editingFinished();
}

void fillShare(frmAddSharedFolder* d, const QString& name, const QString& host, bool readOnly = false,
               bool thisSession = false) {
    typeAndLeave(d, "txtShareName", name);
    typeAndLeave(d, "txtHostFolder", host);
    if (readOnly != child<QCheckBox>(d, "chkShareReadOnly")->isChecked()) child<QCheckBox>(d, "chkShareReadOnly")->click();
    if (thisSession != child<QCheckBox>(d, "chkShareDisableAfterSession")->isChecked())
        child<QCheckBox>(d, "chkShareDisableAfterSession")->click();
}

void clickOK(frmAddSharedFolder* d) { child<QPushButton>(d, "cmdOK")->click(); }

struct SharesPage {
    Builder* b;
    QTreeWidget* list() const { return child<QTreeWidget>(b, "lvwSharedFolders"); }
    void click(const char* button) const { child<QPushButton>(b, button)->click(); }
    void select(int row) const { list()->setCurrentItem(list()->topLevelItem(row)); }
};

// A saved new machine: nothing pending, no shares.
std::unique_ptr<Builder> savedMachine(const std::filesystem::path& folder) {
    auto b = newMachine("Shares", folder);
    EXPECT_TRUE(b->CreateVmxFile());
    EXPECT_FALSE(b->ChangesPending());
    return b;
}

}  // namespace

TEST(SharedFolders, AddShowsTheShareAndCancelLeavesTheListAlone) {
    ScratchDir dir;
    PromptScript script;
    auto b = savedMachine(dir.path());
    SharesPage page{b.get()};

    whenDialogShows([](frmAddSharedFolder* d) {
        EXPECT_EQ(d->windowTitle(), "Shared Folder");
        EXPECT_EQ(child<QGroupBox>(d, "fraShareLocation")->title(), "Name/Location");
        EXPECT_EQ(child<QGroupBox>(d, "fraShareAttributes")->title(), "Attributes");
        EXPECT_EQ(child<QCheckBox>(d, "chkShareEnabled")->text(), "Enable this share");
        EXPECT_TRUE(child<QCheckBox>(d, "chkShareEnabled")->isChecked());
        EXPECT_EQ(child<QCheckBox>(d, "chkShareReadOnly")->text(), "Read-Only");
        EXPECT_EQ(child<QCheckBox>(d, "chkShareDisableAfterSession")->text(), "Disable after this session");
        fillShare(d, "Projects", "/tmp/never-written", true);
        child<QPushButton>(d, "cmdCancel")->click();
    });
    page.click("cmdSharedAdd");
    EXPECT_EQ(page.list()->topLevelItemCount(), 0);
    EXPECT_FALSE(b->ChangesPending());

    const QString host = qpath(dir.path());
    whenDialogShows([host](frmAddSharedFolder* d) {
        fillShare(d, "Projects", host, true, true);
        clickOK(d);
    });
    page.click("cmdSharedAdd");
    ASSERT_EQ(page.list()->topLevelItemCount(), 1);
    EXPECT_EQ(page.list()->topLevelItem(0)->text(0), "Projects");
    EXPECT_EQ(page.list()->topLevelItem(0)->text(1), host);
    EXPECT_EQ(page.list()->topLevelItem(0)->text(2), "Enabled, Read-Only, Disable after this session");
    EXPECT_EQ(page.list()->headerItem()->text(2), "Attributes");
    const SharedFolder& f = b->configuration().sharedFolders.folders.at(0);
    EXPECT_EQ(f.name, "Projects");
    EXPECT_TRUE(f.readOnly);
    EXPECT_TRUE(f.disableAfterSession);
    EXPECT_TRUE(b->ChangesPending());
    EXPECT_EQ(child<QTreeWidget>(b.get(), "lvwOptionsList")->topLevelItem(2)->text(1), "Enabled, 1 folder");
    EXPECT_TRUE(script.messages().empty());
}

TEST(SharedFolders, PropertiesStartFromTheShareAndAnEmptiedNameKeepsTheOldOne) {
    ScratchDir dir;
    PromptScript script;
    auto b = savedMachine(dir.path());
    SharesPage page{b.get()};
    const QString host = qpath(dir.path());
    whenDialogShows([host](frmAddSharedFolder* d) {
        fillShare(d, "Music", host);
        clickOK(d);
    });
    page.click("cmdSharedAdd");
    ASSERT_TRUE(b->CreateVmxFile());
    page.list()->clearSelection();
    EXPECT_FALSE(child<QPushButton>(b.get(), "cmdSharedProps")->isEnabled());
    EXPECT_FALSE(child<QPushButton>(b.get(), "cmdSharedRemove")->isEnabled());
    page.select(0);
    ASSERT_TRUE(child<QPushButton>(b.get(), "cmdSharedProps")->isEnabled());

    whenDialogShows([host](frmAddSharedFolder* d) {
        EXPECT_EQ(child<QLineEdit>(d, "txtShareName")->text(), "Music");
        EXPECT_EQ(child<QLineEdit>(d, "txtHostFolder")->text(), host);
        EXPECT_FALSE(child<QCheckBox>(d, "chkShareReadOnly")->isChecked());
        typeAndLeave(d, "txtShareName", "");
        EXPECT_EQ(child<QLineEdit>(d, "txtShareName")->text(), "Music");
        child<QCheckBox>(d, "chkShareEnabled")->click();
        clickOK(d);
    });
    page.click("cmdSharedProps");
    const SharedFolder& f = b->configuration().sharedFolders.folders.at(0);
    EXPECT_EQ(f.name, "Music");
    EXPECT_FALSE(f.enabled);
    EXPECT_EQ(page.list()->topLevelItem(0)->text(2), "Disabled");
    EXPECT_TRUE(b->ChangesPending());

    // Cancelled properties change nothing.
    ASSERT_TRUE(b->CreateVmxFile());
    page.select(0);
    whenDialogShows([](frmAddSharedFolder* d) { fillShare(d, "Other", "/elsewhere", true); });
    page.click("cmdSharedProps");
    EXPECT_EQ(b->configuration().sharedFolders.folders.at(0).name, "Music");
    EXPECT_EQ(page.list()->topLevelItem(0)->text(0), "Music");
    EXPECT_FALSE(b->ChangesPending());

    // Remove takes the selected share away and marks the change.
    page.select(0);
    page.click("cmdSharedRemove");
    EXPECT_EQ(page.list()->topLevelItemCount(), 0);
    EXPECT_TRUE(b->configuration().sharedFolders.folders.empty());
    EXPECT_TRUE(b->ChangesPending());
}

TEST(SharedFolders, OkRefusesWhatTheFileCannotHoldAndAsksForAMissingFolder) {
    ScratchDir dir;
    auto b = savedMachine(dir.path());
    SharesPage page{b.get()};
    const QString host = qpath(dir.path());
    struct Case {
        QString name;
        QString host;
        const char* message;
    };
    const Case refused[] = {
        {"", host, "Enter a name for the shared folder: the guest sees the folder under this name."},
        {"a=b", host, "The share name \"a=b\" contains \"=\". Use letters, digits, blanks and punctuation other than \"=\"."},
        {"Data", "", "Enter the host folder to share, or choose it with Browse."},
    };
    for (const Case& c : refused) {
        PromptScript script;
        bool stayedOpen = false;
        whenDialogShows([&](frmAddSharedFolder* d) {
            fillShare(d, c.name, c.host);
            clickOK(d);
            stayedOpen = d->isVisible();
        });
        page.click("cmdSharedAdd");
        EXPECT_TRUE(stayedOpen) << c.message;
        ASSERT_EQ(script.messages().size(), 1u) << c.message;
        EXPECT_EQ(script.messages()[0].title, "Shared Folder");
        EXPECT_EQ(script.messages()[0].text, c.message);
        EXPECT_EQ(page.list()->topLevelItemCount(), 0);
    }

    // A folder that does not exist here is the user's call: No keeps the dialog open, Yes stores it.
    const QString missing = host + "/not here";
    PromptScript script;
    script.answer(Answer::No);
    script.answer(Answer::Yes);
    whenDialogShows([&](frmAddSharedFolder* d) {
        fillShare(d, "Guest side", missing);
        clickOK(d);
        EXPECT_TRUE(d->isVisible());
        clickOK(d);
    });
    page.click("cmdSharedAdd");
    ASSERT_EQ(script.messages().size(), 2u);
    EXPECT_EQ(script.messages()[0].kind, MessageKind::Question);
    EXPECT_EQ(script.messages()[0].text, "The folder " + missing +
                                              " does not exist on this computer. The guest may run on a host where "
                                              "it does.  Share it anyway?");
    ASSERT_EQ(page.list()->topLevelItemCount(), 1);
    EXPECT_EQ(page.list()->topLevelItem(0)->text(1), missing);

    // A second share may not take the same name.
    PromptScript again;
    whenDialogShows([&](frmAddSharedFolder* d) {
        fillShare(d, "GUEST SIDE", host);
        clickOK(d);
    });
    page.click("cmdSharedAdd");
    ASSERT_EQ(again.messages().size(), 1u);
    EXPECT_EQ(again.messages()[0].text,
              "Another shared folder of this virtual machine is already named \"Guest side\". Choose a name of its own.");
    EXPECT_EQ(page.list()->topLevelItemCount(), 1);
}

TEST(SharedFolders, BrowseFillsTheHostFolder) {
    ScratchDir dir;
    auto b = savedMachine(dir.path());
    PromptScript script;
    const QString host = qpath(dir.path());
    script.folder(host);
    whenDialogShows([](frmAddSharedFolder* d) {
        typeAndLeave(d, "txtShareName", "Picked");
        child<QPushButton>(d, "cmdBrowseForHostFolder")->click();
        clickOK(d);
    });
    SharesPage{b.get()}.click("cmdSharedAdd");
    ASSERT_EQ(b->configuration().sharedFolders.folders.size(), 1u);
    EXPECT_EQ(qs(b->configuration().sharedFolders.folders[0].hostPath), host);
    ASSERT_FALSE(script.shown().empty());
    EXPECT_EQ(script.shown()[0].type, ShownPrompt::Folder);
    EXPECT_EQ(script.shown()[0].title, "Host Folder");
}

TEST(SharedFolders, OddHostPathsSurviveSaveAndReopen) {
    ScratchDir dir;
    PromptScript script;
    for (int i = 0; i < 3; ++i) script.answer(Answer::Yes);  // the folders exist on another host
    auto b = savedMachine(dir.path());
    SharesPage page{b.get()};
    struct Share {
        QString name;
        QString host;
        bool readOnly;
        bool session;
    };
    const Share shares[] = {
        {"My Documents", "/home/user/My Documents/with  two blanks ", false, false},
        {"Quoted", "/srv/\"quoted\" folder", true, false},
        {QString::fromUtf8("Données"), QString::fromUtf8("/mnt/Übergröße/日本語"), false, true},
    };
    for (const Share& s : shares) {
        whenDialogShows([&](frmAddSharedFolder* d) {
            fillShare(d, s.name, s.host, s.readOnly, s.session);
            clickOK(d);
        });
        page.click("cmdSharedAdd");
    }
    ASSERT_EQ(page.list()->topLevelItemCount(), 3);
    ASSERT_TRUE(b->CreateVmxFile());

    auto reopened = std::make_unique<Builder>();
    reopened->EditExistingFile = true;
    reopened->ExistingVmxFileName = b->vmxPath();
    reopened->CreateBackups = false;
    ASSERT_TRUE(reopened->start());
    SharesPage again{reopened.get()};
    ASSERT_EQ(again.list()->topLevelItemCount(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(again.list()->topLevelItem(i)->text(0), shares[i].name);
        EXPECT_EQ(again.list()->topLevelItem(i)->text(1), shares[i].host);
    }
    EXPECT_EQ(column(again.list(), 2),
              QStringList({"Enabled", "Enabled, Read-Only", "Enabled, Disable after this session"}));
    EXPECT_EQ(reopened->configuration().sharedFolders, b->configuration().sharedFolders);
    EXPECT_TRUE(reopened->loadNotices().isEmpty()) << reopened->loadNotices().join("\n").toStdString();
}

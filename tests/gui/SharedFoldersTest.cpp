// The Shared Folders page and frmAddSharedFolder: add, properties, cancel and remove, a refusal
// and the question the dialog shows from the core, and a share that goes through save and reopen.
#include <QCheckBox>

#include "GuiTestSupport.h"
#include "gui/hardware/frmAddSharedFolder.h"

namespace arden::gui::test {
namespace {

using arden::test::ScratchDir;

// Fills the dialog once it shows (name, host folder, the read-only and this-session boxes),
// lets `then` press its buttons, and cancels a dialog left open so no test hangs in exec().
void inDialog(Builder* b, const char* button, const QString& name, const QString& host, bool readOnly, bool session,
              std::function<void(frmAddSharedFolder*)> then) {
    onNextModal([=](QWidget* modal) {
        auto* d = qobject_cast<frmAddSharedFolder*>(modal);
        ASSERT_NE(d, nullptr) << "the shared-folder dialog is not showing";
        typeInto(child<QLineEdit>(d, "txtShareName"), name);
        typeInto(child<QLineEdit>(d, "txtHostFolder"), host);
        if (readOnly != child<QCheckBox>(d, "chkShareReadOnly")->isChecked()) child<QCheckBox>(d, "chkShareReadOnly")->click();
        if (session != child<QCheckBox>(d, "chkShareDisableAfterSession")->isChecked())
            child<QCheckBox>(d, "chkShareDisableAfterSession")->click();
        then(d);
        if (d->isVisible()) child<QPushButton>(d, "cmdCancel")->click();
    });
    child<QPushButton>(b, button)->click();
}

void ok(frmAddSharedFolder* d) { child<QPushButton>(d, "cmdOK")->click(); }
void cancel(frmAddSharedFolder*) {}

std::unique_ptr<Builder> savedMachine(const std::filesystem::path& folder) {
    auto b = newMachine("Shares", folder);
    EXPECT_TRUE(b->CreateVmxFile());
    return b;
}

// The shares as the page lists them: name | host folder | attributes.
QStringList rows(Builder* b) {
    auto* list = child<QTreeWidget>(b, "lvwSharedFolders");
    QStringList out;
    for (QTreeWidgetItem* i = list->topLevelItem(0); i; i = list->itemBelow(i))
        out << i->text(0) + " | " + i->text(1) + " | " + i->text(2);
    return out;
}

TEST(SharedFolders, AddPropertiesAndRemoveShowTheShareAndCancelChangesNothing) {
    ScratchDir dir;
    PromptScript script;
    auto b = savedMachine(dir.path());
    const QString host = qpath(dir.path());
    inDialog(b.get(), "cmdSharedAdd", "Projects", host, true, false, cancel);
    EXPECT_EQ(rows(b.get()), QStringList{});
    EXPECT_FALSE(b->ChangesPending());

    const QString odd = QString::fromUtf8("Données"), oddHost = host + QString::fromUtf8("/\"Übergröße\"  two blanks ");
    std::filesystem::create_directory(oddHost.toStdString());
    inDialog(b.get(), "cmdSharedAdd", odd, oddHost, true, true, ok);
    EXPECT_EQ(rows(b.get()), QStringList{odd + " | " + oddHost + " | Enabled, Read-Only, Disable after this session"});
    EXPECT_EQ(child<QTreeWidget>(b.get(), "lvwOptionsList")->topLevelItem(2)->text(1), "Enabled, 1 folder");
    EXPECT_TRUE(b->ChangesPending());
    ASSERT_TRUE(b->CreateVmxFile());
    EXPECT_EQ(rows(openFile(dir / "Shares.vmx").get()), rows(b.get())) << "the share survives save and reopen";

    auto* list = child<QTreeWidget>(b.get(), "lvwSharedFolders");
    list->setCurrentItem(list->topLevelItem(0));
    inDialog(b.get(), "cmdSharedProps", "Other", "/elsewhere", false, false, cancel);
    EXPECT_FALSE(b->ChangesPending()) << "cancelled properties change nothing";
    EXPECT_TRUE(rows(b.get())[0].startsWith(odd));

    inDialog(b.get(), "cmdSharedProps", "", host, false, false, [&](frmAddSharedFolder* d) {
        EXPECT_EQ(child<QLineEdit>(d, "txtShareName")->text(), odd) << "an emptied name keeps the old one";
        child<QCheckBox>(d, "chkShareEnabled")->click();
        ok(d);
    });
    EXPECT_EQ(rows(b.get()), QStringList{odd + " | " + host + " | Disabled"});
    EXPECT_TRUE(b->ChangesPending());
    EXPECT_TRUE(script.messages().empty());

    ASSERT_TRUE(b->CreateVmxFile());
    list->setCurrentItem(list->topLevelItem(0));
    child<QPushButton>(b.get(), "cmdSharedRemove")->click();
    EXPECT_EQ(rows(b.get()), QStringList{});
    EXPECT_TRUE(b->ChangesPending());
}

TEST(SharedFolders, OkShowsTheRefusalOrAsksForAMissingFolderAndBrowseFillsTheHost) {
    ScratchDir dir;
    auto b = savedMachine(dir.path());
    const QString missing = qpath(dir / "not here");
    PromptScript script;
    script.answer(Answer::No);
    script.answer(Answer::Yes);
    inDialog(b.get(), "cmdSharedAdd", "Guest side", missing, false, false, [](frmAddSharedFolder* d) {
        ok(d);
        EXPECT_TRUE(d->isVisible()) << "No keeps the dialog open";
        ok(d);
    });
    inDialog(b.get(), "cmdSharedAdd", "GUEST SIDE", qpath(dir.path()), false, false, [](frmAddSharedFolder* d) {
        ok(d);
        EXPECT_TRUE(d->isVisible()) << "a refusal keeps the dialog open";
    });
    const QString question = "Shared Folder: The folder " + missing +
                             " does not exist on this computer. The guest may run on a host where it does.  Share it anyway?";
    EXPECT_EQ(said(script), QStringList({question, question,
                                         "Shared Folder: Another shared folder of this virtual machine is already "
                                         "named \"Guest side\". Choose a name of its own."}));
    EXPECT_EQ(rows(b.get()), QStringList{"Guest side | " + missing + " | Enabled"});

    script.clear();
    script.folder(qpath(dir.path()));
    inDialog(b.get(), "cmdSharedAdd", "Picked", "", false, false, [](frmAddSharedFolder* d) {
        child<QPushButton>(d, "cmdBrowseForHostFolder")->click();
        ok(d);
    });
    EXPECT_EQ(script.shown()[0].title + ": " + rows(b.get()).last(), "Host Folder: Picked | " + qpath(dir.path()) + " | Enabled");
}

}  // namespace
}  // namespace arden::gui::test

// The main window driven as a user would: command line, New, Open, Save, Close, shut-down,
// the favourites list and the language switch. Every prompt is scripted and recorded.
#include <gtest/gtest.h>

#include <QAction>
#include <QCloseEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QLineEdit>
#include <QMenuBar>
#include <QRadioButton>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <filesystem>
#include <memory>

#include "MainWindowFixture.h"
#include "gui/config/Builder.h"
#include "gui/shell/frmMain.h"
#include "gui/shell/frmOptions.h"
#include "gui/shell/VmLauncher.h"
#include "gui/shell/frmSummary.h"
#include "gui/support/Prompts.h"

namespace fs = std::filesystem;
using arden::gui::Answer;
using arden::gui::Builder;
using arden::gui::frmMain;
using arden::gui::PromptScript;
using arden::gui::test::child;
using arden::gui::test::settle;

namespace {

using arden::gui::test::MainWindow;
using arden::gui::test::kSmallVmx;

TEST_F(MainWindow, CommandLinePathWithBlanksOpensAfterTheDelay) {
    fs::path file = writeVmx("with blanks/My Machine.vmx");
    for (QString line : {"\"" + QString::fromStdString(file.string()) + "\"", QString::fromStdString(file.string())}) {
        window = std::make_unique<frmMain>(line);
        frmMain& w = *window;
        EXPECT_EQ(tabs()->count(), 1) << "nothing is opened before the delay";
        w.show();
        EXPECT_EQ(w.ExistingVmxFileName(), QString::fromStdString(file.string()));
        QTRY_COMPARE_WITH_TIMEOUT(tabs()->count(), 2, 5000);
        EXPECT_EQ(tabs()->tabText(1), "Small One");
        EXPECT_TRUE(script.messages().empty() || script.messages().back().title == "Backup Made");
        window.reset();
    }
}

TEST_F(MainWindow, CommandLineNamingAMissingFileWarnsAndStaysHome) {
    const QString missing = QString::fromStdString((home.path() / "gone.vmx").string());
    open(missing);
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Invalid Command Arguments passed");
    EXPECT_EQ(script.messages()[0].text, "Unable to locate file " + missing);
    EXPECT_EQ(script.messages()[0].kind, arden::MessageKind::Warning);
    QTest::qWait(400);
    EXPECT_EQ(tabs()->count(), 1);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(MainWindow, NewWithTheNameBoxCancelledStillMakesNewVm) {
    open();
    script.folder(QString::fromStdString(home.path().string()));
    script.input(std::nullopt);
    window->newConfiguration();
    ASSERT_EQ(tabs()->count(), 2);
    EXPECT_EQ(tabs()->tabText(1), "New VM *") << "a new machine is unsaved";
    Builder* editor = window->activeEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->objectName(), "Builder1");
    EXPECT_EQ(editor->favoriteDisplayName(), "New VM");
    EXPECT_EQ(editor->vmxPath(), QString::fromStdString((home.path() / "New VM.vmx").string()));
    const auto& shown = script.shown();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].title, "New Virtual Machine Location");
    EXPECT_EQ(shown[1].title, "Display Name?");
    EXPECT_EQ(shown[1].text, "Enter Display Name for VM");
}

TEST_F(MainWindow, OpenMakesTheBackupAndSaveAddsAFavourite) {
    fs::path file = writeVmx("vm1/vm1.vmx");
    open();
    script.file(QString::fromStdString(file.string()));
    window->openConfiguration();
    ASSERT_EQ(tabs()->count(), 2);
    EXPECT_EQ(script.shown()[0].title, "Select Existing Virtual Machine Configuration");
    EXPECT_EQ(script.shown()[0].text, "VMware Configuration File (*.vmx)");
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Backup Made");
    EXPECT_EQ(script.messages()[0].text, "Backup file created as: " + QString::fromStdString(file.string()) + ".bak");
    EXPECT_TRUE(fs::exists(file.string() + ".bak"));

    auto* list = child<QTreeWidget>(window.get(), "lvwVMs");
    EXPECT_EQ(list->topLevelItemCount(), 0);
    window->saveConfiguration();
    ASSERT_EQ(list->topLevelItemCount(), 1);
    EXPECT_EQ(list->topLevelItem(0)->text(0), "Small One");
    EXPECT_EQ(list->topLevelItem(0)->text(1), QString::fromStdString(file.string()));
    EXPECT_EQ(list->topLevelItem(0)->text(2), "8");
    EXPECT_EQ(list->topLevelItem(0)->data(0, Qt::UserRole).toString(), "VM");

    // A second save under the same name replaces the row instead of adding one.
    window->saveConfiguration();
    EXPECT_EQ(list->topLevelItemCount(), 1);
}

TEST_F(MainWindow, CloseAsksWhenChangedAndHonoursBothAnswers) {
    fs::path file = writeVmx("vm3/vm3.vmx");
    open();
    window->settings().CreateBackups = false;
    script.file(QString::fromStdString(file.string()));
    window->openConfiguration();
    Builder* editor = window->activeEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_FALSE(editor->ChangesPending());
    typeInto(editor, "txtDisplayName", " Changed");
    ASSERT_TRUE(editor->ChangesPending());

    script.answer(Answer::No);
    EXPECT_FALSE(window->CloseEditorTab());
    EXPECT_EQ(tabs()->count(), 2);
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "Unsaved Changes exist - Small One Changed");
    EXPECT_EQ(script.messages()[0].text,
              "You currently have outstanding changes.  Do you  really want to exit without saving?  If you want "
              "to continue anyway, click Yes.  If you want to go back and Save, click No.");

    script.answer(Answer::Yes);
    EXPECT_TRUE(window->CloseEditorTab());
    EXPECT_EQ(tabs()->count(), 1);
    EXPECT_FALSE(window->CloseEditorTab()) << "the Home tab never closes";
    EXPECT_EQ(arden::test::readBytes(file), kSmallVmx) << "closing without saving leaves the file alone";
}

TEST_F(MainWindow, ShutDownAsksLastTabFirstAndNoCancelsIt) {
    fs::path a = writeVmx("a/a.vmx"), b = writeVmx("b/b.vmx");
    open();
    window->settings().CreateBackups = false;
    for (const fs::path& p : {a, b}) {
        script.file(QString::fromStdString(p.string()));
        window->openConfiguration();
        typeInto(window->activeEditor(), "txtDisplayName", QString::fromStdString(p.stem().string()));
    }
    ASSERT_EQ(tabs()->count(), 3);
    script.clear();

    script.answer(Answer::Yes);  // last tab: close it
    script.answer(Answer::No);   // first tab: keep it, which cancels the exit
    QCloseEvent event;
    QApplication::sendEvent(window.get(), &event);
    EXPECT_FALSE(event.isAccepted());
    ASSERT_EQ(script.messages().size(), 2u);
    EXPECT_TRUE(script.messages()[0].title.endsWith("Small Oneb"));
    EXPECT_TRUE(script.messages()[1].title.endsWith("Small Onea"));
    EXPECT_EQ(tabs()->count(), 2);
    EXPECT_FALSE(settingsWritten()) << "a cancelled exit skips SaveSettings";

    script.answer(Answer::Yes);
    QCloseEvent again;
    QApplication::sendEvent(window.get(), &again);
    EXPECT_TRUE(again.isAccepted());
    EXPECT_TRUE(settingsWritten());
}

TEST_F(MainWindow, FavouritesShowMissingFilesAndRemoveLeavesTheFile) {
    fs::path kept = writeVmx("kept/kept.vmx");
    open();
    arden::FavoriteRecord present{"Present", kept.string(), 8, 0};
    arden::FavoriteRecord old{"Old Gone", (home.path() / "gone.vmx").string(), 7, 0};
    arden::AddFavorite(window->settings().Favorites, present);
    arden::AddFavorite(window->settings().Favorites, old);
    window->UpdateFavoritesList();
    auto* list = child<QTreeWidget>(window.get(), "lvwVMs");
    ASSERT_EQ(list->topLevelItemCount(), 2);
    EXPECT_EQ(list->topLevelItem(0)->data(0, Qt::UserRole).toString(), "VM");
    EXPECT_EQ(list->topLevelItem(1)->data(0, Qt::UserRole).toString(), "OldVMMissing");

    list->setCurrentItem(list->topLevelItem(0));
    child<QAction>(window.get(), "mnuPopupRemove")->trigger();
    ASSERT_EQ(list->topLevelItemCount(), 1);
    EXPECT_EQ(list->topLevelItem(0)->text(0), "Old Gone");
    EXPECT_TRUE(fs::exists(kept));

    // Editing an old configuration from the list opens it with the old-machine icon.
    list->setCurrentItem(list->topLevelItem(0));
    window->settings().CreateBackups = false;
    writeVmx("gone.vmx");
    child<QAction>(window.get(), "mnuPopupEdit")->trigger();
    EXPECT_EQ(tabs()->count(), 2);
}

TEST_F(MainWindow, LanguageSwitchRelabelsAtOnceAndBack) {
    open();
    auto* options = child<QAction>(window.get(), "mnuOptions");
    EXPECT_EQ(options->iconText(), "Options");
    EXPECT_EQ(tabs()->tabText(0), "Home");

    auto choose = [&](const char* language) {
        QTimer::singleShot(0, [language] {
            for (QWidget* w : QApplication::topLevelWidgets()) {
                if (w->objectName() != "frmOptions" || !w->isVisible()) continue;
                child<QRadioButton>(w, language)->setChecked(true);
                child<QPushButton>(w, "cmdOK")->click();
            }
        });
        window->showOptions();
    };
    choose("optLangDe");
    EXPECT_EQ(window->settings().LanguageOffset, 500);
    EXPECT_EQ(window->windowTitle(), "Arden Forge");
    EXPECT_EQ(options->iconText(), "Wahlen");
    EXPECT_EQ(tabs()->tabText(0), "") << "no fall-back to English";
    EXPECT_EQ(child<QAction>(window.get(), "mnuFileNew")->iconText(), "");

    choose("optLangEn");
    EXPECT_EQ(window->settings().LanguageOffset, 0);
    EXPECT_EQ(options->iconText(), "Options");
    EXPECT_EQ(tabs()->tabText(0), "Home");
    EXPECT_EQ(child<QAction>(window.get(), "mnuFileNew")->iconText(), "Create New Virtual Machine");
}

TEST_F(MainWindow, WhatTheLoaderNoticedIsShownInTheSummary) {
    fs::path file = writeVmx("odd/odd.vmx", std::string(kSmallVmx) + "this line has no equals sign\r\n");
    open();
    window->settings().CreateBackups = false;
    script.file(QString::fromStdString(file.string()));
    window->openConfiguration();
    ASSERT_EQ(tabs()->count(), 2);
    const QString out = window->summaryWindow()->output();
    EXPECT_TRUE(out.contains(QString::fromStdString(file.string()))) << out.toStdString();
    EXPECT_TRUE(out.contains("line 6: ")) << out.toStdString();
    EXPECT_TRUE(window->summaryWindow()->isVisible());
}

TEST_F(MainWindow, DroppedVmxFilesOpenAndOtherFilesDoNot) {
    fs::path vmx = writeVmx("drop/drop.vmx");
    fs::path other = writeVmx("drop/readme.txt", "not a configuration");
    open();
    window->settings().CreateBackups = false;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(other.string())),
                  QUrl::fromLocalFile(QString::fromStdString(vmx.string()))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted()) << "a drag holding a .vmx file is welcome";
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    ASSERT_EQ(tabs()->count(), 2);
    EXPECT_EQ(window->activeEditor()->vmxPath(), QString::fromStdString(vmx.string()));
}

TEST_F(MainWindow, PlacementIsRememberedAcrossRuns) {
    open();
    window->setGeometry(40, 50, 900, 640);
    QCloseEvent bye;
    QApplication::sendEvent(window.get(), &bye);
    ASSERT_TRUE(bye.isAccepted());
    window.reset();
    open();
    EXPECT_EQ(window->geometry().size(), QSize(900, 640));
    EXPECT_EQ(window->geometry().topLeft(), QPoint(40, 50));
}

TEST(Launch, ConfiguredProgramOrTheDesktopsOpener) {
    auto withProgram = arden::gui::planLaunch("/vms/My VM/My VM.vmx ", "/opt/vmware/bin/vmplayer");
    EXPECT_EQ(withProgram.program, "/opt/vmware/bin/vmplayer");
    EXPECT_EQ(withProgram.argument, "/vms/My VM/My VM.vmx") << "one argument, blanks and all";
    EXPECT_EQ(withProgram.workingDir, "/opt/vmware/bin");
    auto opener = arden::gui::planLaunch("/vms/a/a.vmx", "  ");
    EXPECT_TRUE(opener.program.isEmpty());
    EXPECT_EQ(opener.argument, "/vms/a/a.vmx");
    EXPECT_EQ(opener.workingDir, "/vms/a");
    EXPECT_EQ(arden::gui::LaunchVmx(arden::gui::planLaunch("", "")), "No configuration is selected to launch.");
}

TEST_F(MainWindow, HelpTellsWhereToLook) {
    open();
    window->showHelp();
    ASSERT_EQ(script.messages().size(), 1u);
    EXPECT_EQ(script.messages()[0].title, "No Help Yet");
    EXPECT_EQ(script.messages()[0].text, "Coming soon.  For good information, read the VMware documentation.");
}

}  // namespace

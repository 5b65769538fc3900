// The windows around the editor: the language switch reaches every tab, the summary after a
// save waits centred over the main window, the options dialog keeps the favourites when the
// settings folder moves, and the small boxes are sized for their texts.
#include <QDialog>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>

#include "MainWindowFixture.h"
#include "gui/shell/frmSummary.h"

namespace fs = std::filesystem;

namespace arden::gui::test {
namespace {

// Opens the options dialog, lets `edit` change it and presses OK.
void inOptions(frmMain& window, const std::function<void(QWidget*)>& edit) {
    onNextModal([edit](QWidget* dialog) {
        edit(dialog);
        child<QPushButton>(dialog, "cmdOK")->click();
    });
    window.showOptions();
}

TEST_F(MainWindow, LanguageSwitchRelabelsEveryEditorTab) {
    writeVmx("a/a.vmx");
    writeVmx("b/b.vmx");
    open();
    window->settings().CreateBackups = false;
    Builder* first = window->OpenEditorTab(true, at("a/a.vmx"), {}, 8, {});
    Builder* second = window->OpenEditorTab(true, at("b/b.vmx"), {}, 8, {});
    ASSERT_EQ(window->activeEditor(), second);

    struct Step { const char* option; const char* optionsTab; const char* hardwareTab; };
    for (const Step& step : {Step{"optLangDe", "Wahlen", ""}, Step{"optLangEn", "Options", "Hardware"}}) {
        inOptions(*window, [&](QWidget* d) { child<QRadioButton>(d, step.option)->setChecked(true); });
        for (Builder* editor : {first, second}) {
            auto* pages = child<QTabWidget>(editor, "sstMain");
            EXPECT_EQ(pages->tabText(0), step.optionsTab) << editor->objectName().toStdString() << " " << step.option;
            EXPECT_EQ(pages->tabText(1), step.hardwareTab) << editor->objectName().toStdString() << " " << step.option;
        }
    }
}

TEST_F(MainWindow, TheSummaryAfterASaveWaitsCentredOverTheWindow) {
    writeVmx("vm/vm.vmx");
    open();
    window->settings().CreateBackups = false;
    window->setGeometry(40, 40, 720, 700);  // the summary fits on the screen when centred
    window->OpenEditorTab(true, at("vm/vm.vmx"), {}, 8, {});
    script.letWindowsBlock(true);

    bool saveReturned = false, seen = false;
    onNextModal([&](QWidget* modal) {
        auto* summary = qobject_cast<frmSummary*>(modal);
        ASSERT_NE(summary, nullptr) << modal->objectName().toStdString();
        seen = true;
        EXPECT_FALSE(saveReturned) << "the save waits for the window";
        EXPECT_TRUE(summary->output().contains("memsize = \"256\""));
        const QPoint offset = summary->geometry().center() - window->geometry().center();
        EXPECT_LE(offset.manhattanLength(), 10) << "centred over the main window";
        summary->close();
    });
    window->saveConfiguration();
    saveReturned = true;
    EXPECT_TRUE(seen) << "the summary was shown as a window the save waits on";
    EXPECT_EQ(child<QTreeWidget>(window.get(), "lvwVMs")->topLevelItemCount(), 1) << "the favourite after the window";
}

TEST_F(MainWindow, MovingTheSettingsFolderTakesTheFavouritesAlong) {
    arden::test::writeBytes(home.path() / "tmp" / "ArdenForge.ini",
                            "[General]\r\nCreateBackups=-1\r\n[Favorites]\r\nFavorite0=Kept\t/home/user/vms/k.vmx\t8\r\n");
    fs::create_directory(home.path() / "shared");
    fs::create_directory(home.path() / "own");
    arden::test::writeBytes(home.path() / "own" / "ArdenForge.ini", "[General]\r\nLanguageOffset=0\r\n");
    open();
    QString note;
    inOptions(*window, [&](QWidget* d) {
        EXPECT_EQ(child<QLabel>(d, "lblIniNote")->text(), "Settings are read from " + at("tmp/ArdenForge.ini") +
                                                             " and written to " + at("tmp/ArdenForge.ini") +
                                                             " when Arden Forge closes.");
        child<QLineEdit>(d, "txtIniPath")->setText(at("shared"));
        note = child<QLabel>(d, "lblIniNote")->text();
    });
    EXPECT_EQ(note, "Settings are read from " + at("shared/ArdenForge.ini") + " and written to " +
                        at("tmp/ArdenForge.ini") + " when Arden Forge closes.");
    EXPECT_EQ(arden::test::readBytes(home.path() / "shared" / "ArdenForge.ini"),
              arden::test::readBytes(home.path() / "tmp" / "ArdenForge.ini"));

    // A folder with its own settings file keeps it.
    inOptions(*window, [&](QWidget* d) { child<QLineEdit>(d, "txtIniPath")->setText(at("own")); });
    EXPECT_EQ(arden::test::readBytes(home.path() / "own" / "ArdenForge.ini"), "[General]\r\nLanguageOffset=0\r\n");
    inOptions(*window, [&](QWidget* d) { child<QLineEdit>(d, "txtIniPath")->setText(at("shared")); });
    EXPECT_TRUE(script.messages().empty());

    window->close();
    open();
    auto* list = child<QTreeWidget>(window.get(), "lvwVMs");
    ASSERT_EQ(list->topLevelItemCount(), 1) << "the next start reads the new folder and finds the favourite";
    EXPECT_EQ(list->topLevelItem(0)->text(0), "Kept");
}

TEST_F(MainWindow, TheSummaryColumnFitsItsTextsAndTellsThemAsTips) {
    const fs::path sample = arden::test::corpusDir() / "vmx" / "ubuntuforumsarchive__WinXPPro-server104-hw4.vmx";
    ASSERT_TRUE(fs::exists(sample));
    fs::copy_file(sample, home.path() / "xp.vmx");
    open();
    window->settings().CreateBackups = false;
    Builder* editor = window->OpenEditorTab(true, at("xp.vmx"), {}, 8, {});
    settle();
    auto* list = child<QTreeWidget>(editor, "lvwOptionsList");
    const QFontMetrics metrics(list->font());
    const int visibleEnd = list->header()->sectionViewportPosition(1) + list->header()->sectionSize(1);
    EXPECT_LE(visibleEnd, list->viewport()->width());
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* row = list->topLevelItem(i);
        ASSERT_FALSE(row->text(1).isEmpty());
        EXPECT_GE(list->header()->sectionSize(1), metrics.horizontalAdvance(row->text(1)) + 8)
            << row->text(1).toStdString();
        EXPECT_EQ(row->toolTip(0), row->text(1));
        EXPECT_EQ(row->toolTip(1), row->text(1));
    }
}

TEST_F(MainWindowReal, SmallBoxesAreSizedForTheirTexts) {
    open();
    int width = 0, titleWidth = 0;
    onNextModal([&](QWidget* modal) {
        QFont bold = modal->font();
        bold.setBold(true);
        titleWidth = QFontMetrics(bold).horizontalAdvance("Display Name?");
        width = modal->width();
        qobject_cast<QDialog*>(modal)->reject();
    });
    EXPECT_EQ(askText(window.get(), "Enter Display Name for VM", "Display Name?", "New VM"), std::nullopt);
    EXPECT_GE(width, titleWidth + 200) << "room for the title beside the title bar's icon and buttons";

    QString version;
    onNextModal([&](QWidget* about) {
        version = child<QLabel>(about, "lblVersion")->text();
        about->close();
    });
    window->showAbout();
    EXPECT_EQ(version, "v1.0.0 by BRK/WN");
}

}  // namespace
}  // namespace arden::gui::test

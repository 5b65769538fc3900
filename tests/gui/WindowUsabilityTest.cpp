// The windows as a user meets them: the summary window's Close button, the notes on an opened
// file shown from their first line in a window of their own, letters to reach every control
// with Alt that no two controls shown together share, and a window size from a larger screen
// made to fit the screen it opens on.
#include <QAbstractButton>
#include <QFile>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabBar>
#include <QTextBlock>

#include "MainWindowFixture.h"
#include "core/support/cInifile.h"
#include "gui/disks/frmCreateHD.h"
#include "gui/hardware/frmAddHardware.h"
#include "gui/shell/frmSummary.h"
#include "gui/support/FormPosition.h"

namespace arden::gui::test {
namespace {

// The line shown at the top of a text window, and how far it is scrolled sideways.
QString topLine(frmSummary* w) {
    auto* text = child<QPlainTextEdit>(w, "txtOutput");
    return text->cursorForPosition(QPoint(2, 2)).block().text() + " @" + QString::number(text->horizontalScrollBar()->value());
}

TEST_F(MainWindow, NotesOfEachOpenedFileStartAtTheirFirstLineInTheirOwnWindow) {
    std::string odd = std::string(kSmallVmx);
    for (int i = 0; i < 60; ++i) odd += "a line the loader cannot read, long enough to reach past the right edge of the window " + std::to_string(i) + "\r\n";
    writeVmx("one/one.vmx", odd);
    writeVmx("two/two.vmx", odd);
    open();
    edit("one/one.vmx");
    frmSummary* notes = window->notesWindow();
    ASSERT_TRUE(notes->isVisible());
    EXPECT_EQ(topLine(notes), "---- " + at("one/one.vmx") + " @0");
    edit("two/two.vmx");
    settle();
    EXPECT_EQ(topLine(notes), "---- " + at("two/two.vmx") + " @0") << "the newest file's notes from their heading";
    EXPECT_NE(notes, window->summaryWindow()) << "not under the text of a save";
    EXPECT_FALSE(window->summaryWindow()->output().contains("cannot read"));
    EXPECT_EQ(notes->windowTitle(), "Notes on the Opened Files");
    auto* close = child<QPushButton>(notes, "cmdClose");
    EXPECT_EQ(close->text().remove('&'), "Close");
    close->click();
    EXPECT_FALSE(notes->isVisible());
}

TEST_F(MainWindow, TheSummaryOfASaveHasACloseButtonAndStartsAtItsFile) {
    writeVmx("vm/vm.vmx");
    open();
    edit("vm/vm.vmx");
    script.letWindowsBlock(true);
    QString top, title;
    onNextModal([&](QWidget* summary) {
        auto* s = qobject_cast<frmSummary*>(summary);
        top = s ? topLine(s) : "not the summary";
        title = summary->windowTitle();
        child<QPushButton>(summary, "cmdClose")->click();
    });
    window->saveConfiguration();
    EXPECT_EQ(top, "---- " + at("vm/vm.vmx") + " @0");
    EXPECT_EQ(title, "Summary");
    EXPECT_FALSE(window->summaryWindow()->isVisible()) << "Close closed it and the save went on";
    EXPECT_EQ(favourites()->topLevelItemCount(), 1);
}

// The letters a window's shown controls are reached by (each with the control's name); the
// menus' letters first.
QStringList shownLetters(QWidget* window) {
    QStringList letters;
    auto letterOf = [](const QString& caption) -> QString {
        for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
            if (caption[i] == '&' && caption[i + 1] != '&') return caption[i + 1].toLower();
            if (caption[i] == '&') ++i;
        }
        return {};
    };
    if (auto* bar = window->findChild<QMenuBar*>()) {
        for (QAction* a : bar->actions()) letters << letterOf(a->text()) + " menu " + a->text();
    }
    for (QTabBar* bar : window->findChildren<QTabBar*>()) {
        if (!bar->isVisibleTo(window) || bar->documentMode()) continue;
        for (int i = 0; i < bar->count(); ++i) letters << letterOf(bar->tabText(i)) + " tab " + bar->tabText(i);
    }
    for (QAbstractButton* b : window->findChildren<QAbstractButton*>()) {
        if (b->isVisibleTo(window) && !b->text().isEmpty() && !b->inherits("QToolButton"))
            letters << letterOf(b->text()) + " " + b->objectName() + " " + b->text();
    }
    for (QLabel* l : window->findChildren<QLabel*>()) {
        if (l->isVisibleTo(window) && l->buddy()) letters << letterOf(l->text()) + " " + l->objectName() + " " + l->text();
    }
    return letters;
}

// Letters missing or taken twice among `letters`.
QStringList clashes(const QStringList& letters) {
    QStringList bad;
    QMap<QString, QString> holder;
    for (const QString& entry : letters) {
        const QString letter = entry.section(' ', 0, 0);
        const QString caption = entry.section(' ', 2);
        const bool markable = std::any_of(caption.begin(), caption.end(), [](QChar c) { return c.isLetterOrNumber(); });
        if (letter.isEmpty() && markable) bad << "no letter: " + entry;
        else if (letter.isEmpty()) continue;  // "...": nothing to underline
        else if (holder.contains(letter)) bad << holder[letter] + " and " + entry;
        else holder[letter] = entry;
    }
    return bad;
}

TEST_F(MainWindow, EveryShownControlHasItsOwnLetter) {
    writeVmx("vm/vm.vmx");
    open();
    Builder* editor = edit("vm/vm.vmx");
    settle();
    EXPECT_EQ(clashes(shownLetters(window.get())), QStringList{}) << "the Options tab";
    child<QTabWidget>(editor, "sstMain")->setCurrentIndex(1);
    for (const char* type : {"Parallel Port", "Serial Port", "SCSI Controller", "Hard Disk", "Generic SCSI Device"})
        addThroughDialog(editor, type);
    for (int type = 0; type < kDeviceTypeCount; ++type) {
        if (!chooseDevice(editor, *deviceTypeFromNumber(type))) continue;
        settle();
        const QStringList letters = shownLetters(window.get());
        EXPECT_EQ(clashes(letters), QStringList{}) << "page of type " << type << ": " << letters.join(" | ");
    }
    // The dialogs, each a window of its own.
    frmSummary summary(window.get());
    frmAddHardware add(editor->configuration().devices.counts(), DeviceMaxima{2, 4, 4}, 0, window.get());
    CreateDiskRequest preset;
    frmCreateHD create(preset, window.get());
    for (QWidget* dialog : std::initializer_list<QWidget*>{&summary, &add, &create})
        EXPECT_EQ(clashes(shownLetters(dialog)), QStringList{}) << dialog->objectName();
}

TEST(WindowPlacement, ASizeFromALargerScreenFitsTheScreen) {
    arden::test::ScratchDir dir;
    const QString ini = qpath(dir / "placement.ini");
    QWidget window;
    const QRect area = window.screen()->availableGeometry();
    cInifile file;
    file.setPath((dir / "placement.ini").string());
    file.setSection("Main");
    WindowPlacement big;
    big.Left = area.left() + 40;
    big.Top = area.top() + 30;
    big.Width = area.width() * 2;
    big.Height = area.height() * 2;
    ASSERT_TRUE(file.SaveFormPosition(big));
    ASSERT_TRUE(loadFormPosition(window, ini, "Main"));
    EXPECT_TRUE(area.contains(window.geometry())) << "placed at " << window.geometry().x() << "," << window.geometry().y()
                                                   << " size " << window.width() << "x" << window.height();
    EXPECT_EQ(window.size(), area.size()) << "screen " << area.width() << "x" << area.height();
}

}  // namespace
}  // namespace arden::gui::test

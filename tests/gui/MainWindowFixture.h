#pragma once
// The main window under test: its own temporary folder and per-user store, so settings start
// from scratch, and a small configuration to open. MainWindowReal shows real dialogs (a test
// answers them itself); MainWindow scripts and records every prompt.
#include <QTabWidget>
#include <QTest>

#include "GuiTestSupport.h"
#include "gui/shell/frmMain.h"

namespace arden::gui::test {

inline const char* const kSmallVmx =
    "config.version = \"8\"\r\nvirtualHW.version = \"4\"\r\ndisplayName = \"Small One\"\r\n"
    "guestOS = \"winxppro\"\r\nmemsize = \"256\"\r\n";

class MainWindowReal : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(home.path() / "tmp");
        qputenv("TMPDIR", QByteArray::fromStdString((home.path() / "tmp").string() + "/"));
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString((home.path() / "config").string()));
    }
    void TearDown() override {
        window.reset();
        qunsetenv("TMPDIR");
        qunsetenv("XDG_CONFIG_HOME");
    }

    // A fresh main window, shown; backups on opening off unless a test wants them.
    frmMain& open(const QString& commandLine = {}, bool backups = false) {
        window = std::make_unique<frmMain>(commandLine);
        window->settings().CreateBackups = backups;
        window->show();
        settle();
        return *window;
    }
    Builder* edit(const std::string& name) { return window->OpenEditorTab(true, at(name), {}, 8, {}); }
    QTabWidget* tabs() { return child<QTabWidget>(window.get(), "sstMain"); }
    QTreeWidget* favourites() { return child<QTreeWidget>(window.get(), "lvwVMs"); }
    QString at(const std::string& name) const { return qpath(home.path() / name); }
    std::filesystem::path writeVmx(const std::string& name, const std::string& text = kSmallVmx) {
        std::filesystem::path p = home.path() / name;
        std::filesystem::create_directories(p.parent_path());
        arden::test::writeBytes(p, text);
        return p;
    }
    // A settings file in the temporary folder means SaveSettings ran.
    bool settingsWritten() { return std::filesystem::exists(home.path() / "tmp" / "ArdenForge.ini"); }
    void typeKeys(Builder* editor, const char* name, const QString& text) {
        auto* box = child<QLineEdit>(editor, name);
        box->setFocus();
        QTest::keyClicks(box, text);
        QMetaObject::invokeMethod(box, "editingFinished");
    }

    arden::test::ScratchDir home;
    std::unique_ptr<frmMain> window;
};

class MainWindow : public MainWindowReal {
protected:
    PromptScript script;
};

}  // namespace arden::gui::test

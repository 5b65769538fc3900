#pragma once
// Editors for the Builder tests: a new machine in a scratch folder, or a scratch copy of a
// real configuration file opened for editing.
#include <QComboBox>
#include <QTreeWidget>
#include <filesystem>
#include <memory>
#include <string>

#include "GuiTestSupport.h"
#include "TestSupport.h"
#include "gui/config/Builder.h"
#include "gui/support/Prompts.h"
#include "gui/support/UiText.h"

namespace arden::gui::test {

inline QString qpath(const std::filesystem::path& p) { return QString::fromStdString(p.string()); }

inline std::unique_ptr<Builder> newMachine(const QString& name, const std::filesystem::path& folder, int offset = 0) {
    auto b = std::make_unique<Builder>();
    b->DisplayName = name;
    b->NewVmxPath = qpath(folder);
    b->LanguageOffset = offset;
    EXPECT_TRUE(b->start());
    return b;
}

// Opens a file for editing; the script records the prompts.
inline std::unique_ptr<Builder> openFile(const std::filesystem::path& file, bool backups = false) {
    auto b = std::make_unique<Builder>();
    b->EditExistingFile = true;
    b->ExistingVmxFileName = qpath(file);
    b->CreateBackups = backups;
    EXPECT_TRUE(b->start());
    return b;
}

// Copies a corpus file into `folder` and opens the copy.
inline std::unique_ptr<Builder> openCopy(const std::string& corpusName, const std::filesystem::path& folder,
                                         bool backups = false) {
    const std::filesystem::path copy = folder / corpusName;
    std::filesystem::copy_file(arden::test::corpusDir() / "vmx" / corpusName, copy,
                               std::filesystem::copy_options::overwrite_existing);
    return openFile(copy, backups);
}

inline QStringList entries(QComboBox* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i) out << list->itemText(i);
    return out;
}

inline QStringList column(QTreeWidget* list, int col) {
    QStringList out;
    for (int i = 0; i < list->topLevelItemCount(); ++i) out << list->topLevelItem(i)->text(col);
    return out;
}

}  // namespace arden::gui::test

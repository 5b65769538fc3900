#include "gui/support/Prompts.h"


#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>

#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

PromptScript* g_script = nullptr;
QString g_lastFolder;  // the folder of what a picker last returned

// Room a title bar needs beside its text: the window icon and the three window buttons.
constexpr int kTitleBarExtras = 200;

QString remembered(const QString& picked, bool isFolder) {
    if (!picked.isEmpty()) g_lastFolder = isFolder ? picked : QFileInfo(picked).absolutePath();
    return picked;
}

QMessageBox::Icon iconOf(MessageKind kind) {
    switch (kind) {
        case MessageKind::Warning: return QMessageBox::Warning;
        case MessageKind::Critical: return QMessageBox::Critical;
        case MessageKind::Question: return QMessageBox::Question;
        case MessageKind::Information: break;
    }
    return QMessageBox::Information;
}

}  // namespace

PromptScript::PromptScript() : previous_(g_script), previousLastFolder_(g_lastFolder) {
    g_script = this;
    g_lastFolder.clear();
}
PromptScript::~PromptScript() {
    g_script = previous_;
    g_lastFolder = previousLastFolder_;
}
PromptScript* PromptScript::active() { return g_script; }

std::vector<ShownPrompt> PromptScript::messages() const {
    std::vector<ShownPrompt> out;
    for (const ShownPrompt& p : shown_) {
        if (p.type == ShownPrompt::MessageBox) out.push_back(p);
    }
    return out;
}

QString PromptScript::takePath(ShownPrompt prompt) {
    shown_.push_back(std::move(prompt));
    if (paths_.empty()) return {};
    QString path = paths_.front();
    paths_.pop_front();
    return path;
}

Answer showMessage(QWidget* parent, MessageKind kind, const QString& title, const QString& text) {
    const bool question = kind == MessageKind::Question;
    if (PromptScript* s = g_script) {
        s->shown_.push_back({ShownPrompt::MessageBox, kind, title, text, {}});
        if (!question) return Answer::Ok;
        if (s->answers_.empty()) return Answer::No;
        Answer a = s->answers_.front();
        s->answers_.pop_front();
        return a;
    }
    QMessageBox box(iconOf(kind), title, text,
                    question ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, parent);
    box.setObjectName("msgBox");
    if (question) box.setDefaultButton(QMessageBox::No);
    int result = box.exec();
    if (!question) return Answer::Ok;
    return result == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

Answer showMessage(QWidget* parent, const Message& message, int languageOffset) {
    return showMessage(parent, message.kind, uiText(message.title, languageOffset),
                       uiText(message.text, languageOffset));
}

void showAndWait(QDialog& window) {
    if (PromptScript* s = g_script) {
        s->shown_.push_back({ShownPrompt::Window, MessageKind::Information, window.windowTitle(), {}, {}});
        if (!s->windowsBlock_) {
            window.show();
            return;
        }
    }
    if (window.isVisible()) window.hide();  // modality takes effect when the window is shown
    window.setWindowModality(Qt::ApplicationModal);
    window.exec();
}

QString pickerStartFolder(const QString& machineFolder) {
    for (const QString& folder : {g_lastFolder, machineFolder}) {
        if (!folder.isEmpty() && QFileInfo(folder).isDir()) return QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    }
    return QDir::homePath();
}

QString pickFolder(QWidget* parent, const QString& title, const QString& startFolder) {
    if (g_script)
        return remembered(g_script->takePath({ShownPrompt::Folder, MessageKind::Information, title, {}, startFolder}), true);
    return remembered(QFileDialog::getExistingDirectory(parent, title, startFolder), true);
}

QString pickOpenFile(QWidget* parent, const QString& title, const QString& filter, const QString& startFolder) {
    if (g_script)
        return remembered(
            g_script->takePath({ShownPrompt::OpenFile, MessageKind::Information, title, filter, startFolder}), false);
    return remembered(QFileDialog::getOpenFileName(parent, title, startFolder, filter), false);
}

std::optional<QString> askText(QWidget* parent, const QString& prompt, const QString& title,
                               const QString& proposal) {
    if (PromptScript* s = g_script) {
        s->shown_.push_back({ShownPrompt::Input, MessageKind::Question, title, prompt, {}});
        std::optional<QString> answer;
        if (!s->inputs_.empty()) {
            answer.swap(s->inputs_.front());
            s->inputs_.pop_front();
        }
        return answer;
    }
    QInputDialog box(parent);
    box.setObjectName("inputBox");
    box.setWindowTitle(title);
    box.setLabelText(prompt);
    box.setTextValue(proposal);
    QFont titleFont = box.font();
    titleFont.setBold(true);  // title bars commonly draw their text in bold
    // The dialog's layout fixes its minimum size from its contents, so the text box is widened.
    if (auto* edit = box.findChild<QLineEdit*>())
        edit->setMinimumWidth(QFontMetrics(titleFont).horizontalAdvance(title) + kTitleBarExtras);
    if (box.exec() != QDialog::Accepted) return std::nullopt;
    return box.textValue();
}

}  // namespace arden::gui

#include "gui/support/Prompts.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

#include "gui/support/UiText.h"

namespace arden::gui {
namespace {

PromptScript* g_script = nullptr;

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

PromptScript::PromptScript() : previous_(g_script) { g_script = this; }
PromptScript::~PromptScript() { g_script = previous_; }
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
    int result = box.exec();
    if (!question) return Answer::Ok;
    return result == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

Answer showMessage(QWidget* parent, const Message& message, int languageOffset) {
    return showMessage(parent, message.kind, uiText(message.title, languageOffset),
                       uiText(message.text, languageOffset));
}

QString pickFolder(QWidget* parent, const QString& title, const QString& startFolder) {
    if (g_script) return g_script->takePath({ShownPrompt::Folder, MessageKind::Information, title, startFolder, startFolder});
    return QFileDialog::getExistingDirectory(parent, title, startFolder);
}

QString pickOpenFile(QWidget* parent, const QString& title, const QString& filter, const QString& startFolder) {
    if (g_script) return g_script->takePath({ShownPrompt::OpenFile, MessageKind::Information, title, filter, startFolder});
    return QFileDialog::getOpenFileName(parent, title, startFolder, filter);
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
    bool ok = false;
    QString text = QInputDialog::getText(parent, title, prompt, QLineEdit::Normal, proposal, &ok);
    if (!ok) return std::nullopt;
    return text;
}

}  // namespace arden::gui

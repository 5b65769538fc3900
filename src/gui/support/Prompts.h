#pragma once
// Every message box, file or folder picker and input box of the program goes through these
// functions. In normal use they show the Qt dialogs; while a PromptScript is active (in
// tests) nothing is shown: each call is recorded and answered from the script.
#include <QString>
#include <QStringList>
#include <deque>
#include <optional>
#include <vector>

#include "core/support/Message.h"

class QWidget;

namespace arden::gui {

enum class Answer { Ok, Yes, No };

// Asks (Yes/No) for a Question, otherwise shows the box with an OK button.
Answer showMessage(QWidget* parent, MessageKind kind, const QString& title, const QString& text);
// A core message, its ids resolved with the language offset.
Answer showMessage(QWidget* parent, const Message& message, int languageOffset);

// Folder picker; empty when cancelled.
QString pickFolder(QWidget* parent, const QString& title, const QString& startFolder);
// Open-file picker; `filter` in Qt form ("VMware Configuration File (*.vmx)"); empty when cancelled.
QString pickOpenFile(QWidget* parent, const QString& title, const QString& filter, const QString& startFolder);
// Input box; nothing when cancelled.
std::optional<QString> askText(QWidget* parent, const QString& prompt, const QString& title,
                               const QString& proposal);

// What a prompt showed, as a test reads it back.
struct ShownPrompt {
    enum Type { MessageBox, Folder, OpenFile, Input } type = MessageBox;
    MessageKind kind = MessageKind::Information;
    QString title;
    QString text;  // message text, input prompt or picker filter
    QString start; // the folder an open-file picker starts in
};

// A test's script: while one exists, prompts are answered from its queues (in call order)
// and recorded. An empty queue answers as a user who cancels (No for questions).
class PromptScript {
public:
    PromptScript();
    ~PromptScript();
    PromptScript(const PromptScript&) = delete;
    PromptScript& operator=(const PromptScript&) = delete;

    void answer(Answer a) { answers_.push_back(a); }
    void folder(const QString& path) { paths_.push_back(path); }
    void file(const QString& path) { paths_.push_back(path); }
    void input(std::optional<QString> text) { inputs_.push_back(std::move(text)); }

    const std::vector<ShownPrompt>& shown() const { return shown_; }
    std::vector<ShownPrompt> messages() const;  // message boxes only
    void clear() { shown_.clear(); }

    static PromptScript* active();

private:
    friend Answer showMessage(QWidget*, MessageKind, const QString&, const QString&);
    friend QString pickFolder(QWidget*, const QString&, const QString&);
    friend QString pickOpenFile(QWidget*, const QString&, const QString&, const QString&);
    friend std::optional<QString> askText(QWidget*, const QString&, const QString&, const QString&);

    QString takePath(ShownPrompt prompt);  // records a picker and answers it from the queue

    std::deque<Answer> answers_;
    std::deque<QString> paths_;
    std::deque<std::optional<QString>> inputs_;
    std::vector<ShownPrompt> shown_;
    PromptScript* previous_ = nullptr;
};

}  // namespace arden::gui

#include "gui/support/Mnemonics.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QHash>
#include <QSet>
#include <QStackedWidget>
#include <QTabBar>
#include <QToolButton>
#include <functional>

namespace arden::gui {
namespace {

using Taken = QSet<QChar>;

// `text` with "&" before the first occurrence of `letter` (none when null), a literal "&" doubled.
QString markedAt(const QString& text, QChar letter) {
    QString out;
    bool placed = letter.isNull();
    for (const QChar c : text) {
        if (!placed && c.toLower() == letter) {
            out += QLatin1Char('&');
            placed = true;
        }
        out += c;
        if (c == QLatin1Char('&')) out += c;
    }
    return out;
}

// The letters and digits of a caption (lower case), in the order they appear, each once.
QList<QChar> lettersOf(const QString& text) {
    QList<QChar> letters;
    for (const QChar c : text) {
        if (c.isLetterOrNumber() && !letters.contains(c.toLower())) letters << c.toLower();
    }
    return letters;
}

// `text` marked at its first letter or digit not in `taken` (then taken).
QString marked(const QString& text, Taken& taken) {
    for (const QChar c : lettersOf(text)) {
        if (taken.contains(c)) continue;
        taken.insert(c);
        return markedAt(text, c);
    }
    return markedAt(text, QChar());
}

// A letter for each of `texts`, none in `taken` and no two alike, for as many texts as can have
// one: a text whose letters are all held moves a holder to another of its letters (augmenting
// paths), each text's earlier letters tried first. The letters given are added to `taken`.
QList<QChar> matchLetters(const QStringList& texts, Taken& taken) {
    QList<QList<QChar>> options;
    for (const QString& t : texts) {
        QList<QChar> free;
        for (const QChar c : lettersOf(t)) {
            if (!taken.contains(c)) free << c;
        }
        options << free;
    }
    QHash<QChar, qsizetype> holder;
    QList<QChar> given(texts.size());
    std::function<bool(qsizetype, Taken&)> place = [&](qsizetype i, Taken& seen) {
        for (const QChar c : options[i]) {
            if (seen.contains(c)) continue;
            seen.insert(c);
            const auto held = holder.constFind(c);
            if (held == holder.constEnd() || place(*held, seen)) {
                holder[c] = i;
                given[i] = c;
                return true;
            }
        }
        return false;
    };
    for (qsizetype i = 0; i < texts.size(); ++i) {
        Taken seen;
        place(i, seen);
    }
    for (const QChar c : given) {
        if (!c.isNull()) taken.insert(c);
    }
    return given;
}

// A caption as shown, without its mnemonic mark ("&&" shows as "&").
QString shownText(const QString& caption) {
    QString out;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption[i] == QLatin1Char('&') && i + 1 < caption.size()) ++i;
        out += caption[i];
    }
    return out;
}

// The letter a caption's mark stands for, if it has one.
std::optional<QChar> markedLetter(const QString& caption) {
    for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != QLatin1Char('&')) continue;
        if (caption[i + 1] != QLatin1Char('&')) return caption[i + 1].toLower();
        ++i;
    }
    return std::nullopt;
}

// One caption that takes a mnemonic: how to read and replace it.
struct Caption {
    std::function<QString()> get;
    std::function<void(const QString&)> set;
};

// The captions of `root`'s level (not inside a page stack below it), tab titles first, and
// the stacks whose pages are levels of their own.
void collect(QWidget* root, QList<Caption>& tabs, QList<Caption>& others, QList<QStackedWidget*>& stacks) {
    for (QObject* child : root->children()) {
        auto* w = qobject_cast<QWidget*>(child);
        if (!w || w->isWindow()) continue;
        if (auto* stack = qobject_cast<QStackedWidget*>(w)) {
            stacks << stack;
            continue;
        }
        if (auto* bar = qobject_cast<QTabBar*>(w)) {
            // The machines' tabs (document mode) are named by their machines and change with them.
            for (int i = 0; i < bar->count() && !bar->documentMode(); ++i)
                tabs << Caption{[bar, i] { return bar->tabText(i); }, [bar, i](const QString& t) { bar->setTabText(i, t); }};
            continue;  // its scroll buttons carry no captions
        }
        if (qobject_cast<QMenuBar*>(w)) continue;
        auto* button = qobject_cast<QAbstractButton*>(w);
        if (button && !qobject_cast<QToolButton*>(w) && !button->text().isEmpty()) {
            others << Caption{[button] { return button->text(); }, [button](const QString& t) { button->setText(t); }};
        } else if (auto* label = qobject_cast<QLabel*>(w); label && label->buddy() && !label->text().isEmpty()) {
            others << Caption{[label] { return label->text(); }, [label](const QString& t) { label->setText(t); }};
        }
        collect(w, tabs, others, stacks);
    }
}

void assignLevel(QWidget* root, Taken taken) {
    QList<Caption> tabs, others;
    QList<QStackedWidget*> stacks;
    collect(root, tabs, others, stacks);
    const QList<Caption> captions = tabs + others;
    QStringList texts;
    for (const Caption& c : captions) texts << shownText(c.get());
    const QList<QChar> letters = matchLetters(texts, taken);
    for (qsizetype i = 0; i < captions.size(); ++i) captions[i].set(markedAt(texts[i], letters[i]));
    for (QStackedWidget* stack : stacks) {
        for (int i = 0; i < stack->count(); ++i) assignLevel(stack->widget(i), taken);
    }
}

}  // namespace

QStringList withMnemonics(const QStringList& texts) {
    Taken taken;
    QStringList out;
    out.reserve(texts.size());
    for (const QString& text : texts) out << marked(text, taken);
    return out;
}

void assignMnemonics(QWidget* window) {
    Taken taken;
    for (const QMenuBar* bar : window->findChildren<QMenuBar*>(Qt::FindDirectChildrenOnly)) {
        for (const QAction* a : bar->actions()) {
            if (auto letter = markedLetter(a->text())) taken.insert(*letter);
        }
    }
    assignLevel(window, taken);
}

}  // namespace arden::gui

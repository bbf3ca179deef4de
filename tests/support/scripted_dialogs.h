#pragma once

#include "session/dialogs.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace velmora::test {

/// Answers the questions of the program in place of a person, in the order in which answers were queued, and remembers
/// what was asked. In use while it lives. Answers arrive at once. A question without a queued answer is left without
/// one, as if a person had closed the window, and is remembered all the same.
class ScriptedDialogs final : public Dialogs {
public:
    struct Asked {
        QString title;
        QString text;        ///< the message, the file filter or the label of the line
        QString start;       ///< what a file or text question begins with
        QStringList choices; ///< of `ask` only
        int minimum = 0;     ///< of `askNumber` only
        int maximum = 0;
        QWidget *parent = nullptr;
    };

    ScriptedDialogs() { install(this); }
    ~ScriptedDialogs() override { install(nullptr); }

    /// Queues the answer to a file or folder question.
    void answerPath(const QString &path) { m_answers.append(path); }
    /// Queues the answer to a choice, as its number, or to a number question.
    void answerNumber(int number) { m_answers.append(number); }
    /// Queues the answer to a question for a text.
    void answerText(const QString &text) { m_answers.append(text); }
    /// Queues a cancelled window.
    void answerNothing() { m_answers.append(QVariant()); }

    [[nodiscard]] const QList<Asked> &asked() const { return m_asked; }
    [[nodiscard]] QStringList titles() const
    {
        QStringList titles;
        for (const Asked &question : m_asked)
            titles.append(question.title);
        return titles;
    }
    [[nodiscard]] qsizetype answersLeft() const { return m_answers.size(); }

    void tell(QWidget *parent, Tone, const QString &title, const QString &text, std::function<void()> closed) override
    {
        m_asked.append({title, text, {}, {}, 0, 0, parent});
        if (closed)
            closed();
    }

    void ask(QWidget *parent, Tone, const QString &title, const QString &text, const QList<Choice> &choices,
             ChoiceAnswer answered) override
    {
        Asked question{title, text, {}, {}, 0, 0, parent};
        for (const Choice &choice : choices)
            question.choices.append(choice.text);
        m_asked.append(question);
        const QVariant answer = nextAnswer();
        for (const Choice &choice : choices) {
            if (answer.isValid() ? choice.answer == answer.toInt() : choice.isEscape) {
                answered(choice.answer);
                return;
            }
        }
    }

    void openFile(QWidget *parent, const QString &title, const QString &start, const QString &filter,
                  PathAnswer chosen) override
    {
        answerPathQuestion({title, filter, start, {}, 0, 0, parent}, chosen);
    }

    void openFolder(QWidget *parent, const QString &title, const QString &start, PathAnswer chosen) override
    {
        answerPathQuestion({title, {}, start, {}, 0, 0, parent}, chosen);
    }

    void saveFile(QWidget *parent, const QString &title, const QString &start, const QString &filter,
                  PathAnswer chosen) override
    {
        answerPathQuestion({title, filter, start, {}, 0, 0, parent}, chosen);
    }

    void askNumber(QWidget *parent, const QString &title, const QString &label, int, int minimum, int maximum,
                   NumberAnswer answered) override
    {
        m_asked.append({title, label, {}, {}, minimum, maximum, parent});
        const QVariant answer = nextAnswer();
        if (answer.isValid())
            answered(answer.toInt());
    }

    void askText(QWidget *parent, const QString &title, const QString &label, const QString &value,
                 TextAnswer answered) override
    {
        m_asked.append({title, label, value, {}, 0, 0, parent});
        const QVariant answer = nextAnswer();
        if (answer.isValid())
            answered(answer.toString());
    }

    void askPassword(QWidget *parent, const QString &title, const QString &label, TextAnswer answered) override
    {
        askText(parent, title, label, {}, std::move(answered));
    }

private:
    QVariant nextAnswer() { return m_answers.isEmpty() ? QVariant() : m_answers.takeFirst(); }

    void answerPathQuestion(const Asked &question, const PathAnswer &chosen)
    {
        m_asked.append(question);
        const QVariant answer = nextAnswer();
        if (answer.isValid())
            chosen(answer.toString());
    }

    QList<Asked> m_asked;
    QVariantList m_answers;
};

} // namespace velmora::test

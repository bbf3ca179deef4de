#pragma once

#include "session/dialogs.h"

#include <QStringList>

/// Answers questions in place of a person, and writes down what was asked and told. In use while it lives.
class ScriptedDialogs final : public velmora::Dialogs {
public:
    ScriptedDialogs() { install(this); }
    ~ScriptedDialogs() override { install(nullptr); }

    void tell(QWidget * /*parent*/, Tone /*tone*/, const QString &title, const QString &text,
              std::function<void()> closed) override
    {
        said.append(title + QStringLiteral(": ") + text);
        if (closed)
            closed();
    }

    void ask(QWidget * /*parent*/, Tone /*tone*/, const QString &title, const QString &text,
             const QList<Choice> &choices, ChoiceAnswer answered) override
    {
        const auto standard =
            std::find_if(choices.begin(), choices.end(), [](const Choice &choice) { return choice.isDefault; });
        const bool yesIsDefault = standard != choices.end() && standard->answer == 1;
        said.append(title + QStringLiteral(": ") + text +
                    (yesIsDefault ? QStringLiteral(" [Yes]") : QStringLiteral(" [No]")));
        if (answersLater)
            waiting.append(std::move(answered));
        else
            answered(answers.isEmpty() ? 0 : answers.takeFirst());
    }

    void openFile(QWidget *parent, const QString &title, const QString &start, const QString &filter,
                  PathAnswer chosen) override
    {
        choosePath(parent, title, start, filter, chosen);
    }

    void saveFile(QWidget *parent, const QString &title, const QString &start, const QString &filter,
                  PathAnswer chosen) override
    {
        choosePath(parent, title, start, filter, chosen);
    }

    QStringList said;   ///< "title: text" of each box, and what a file was asked for
    QList<int> answers; ///< to the next questions; the last choice is 0, also when none is left
    bool answersLater = false;
    QList<ChoiceAnswer> waiting; ///< the questions that are open, when answers come later
    QStringList paths;           ///< for the next file questions; without one they are cancelled

private:
    void choosePath(QWidget * /*parent*/, const QString &title, const QString &start, const QString &filter,
                    const PathAnswer &chosen)
    {
        said.append(QStringLiteral("%1 <%2> %3").arg(title, start, filter));
        if (!paths.isEmpty())
            chosen(paths.takeFirst());
    }
};

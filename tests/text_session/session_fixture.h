#pragma once

#include "session/pane/text_pane.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "text/text_compare_widget.h"
#include "text/view/diff_view.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

namespace velmora::test {

/// "line 1", "line 2" and so on.
inline QByteArray numberedLines(int count, const QByteArray &text = "line ")
{
    QByteArray result;
    for (int k = 1; k <= count; ++k)
        result += text + QByteArray::number(k) + '\n';
    return result;
}

/// A text session with files of its own and scripted answers.
class SessionFixture {
public:
    /// Unsaved texts are kept in `store`, which outlives the fixture, when there is one.
    explicit SessionFixture(RecoveryStore *store = nullptr) : host(store) { session.resize(1000, 600); }

    /// Writes a file into the fixture's folder and returns its path.
    QString file(const QString &name, const QByteArray &content)
    {
        const QString path = folder.filePath(name);
        if (!makeFile(path, content))
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }
    QString file(const char *name, const QByteArray &content) { return file(word(name), content); }

    [[nodiscard]] QString path(const char *name) const { return folder.filePath(word(name)); }

    /// Sets the options that a JSON object names.
    void setOptions(const char *json)
    {
        QJsonObject options = session.options();
        const QJsonObject chosen = QJsonDocument::fromJson(json).object();
        for (const QString &key : chosen.keys())
            options[key] = chosen.value(key);
        session.setOptions(options);
    }

    /// Compares two paths and waits for the end.
    void compare(const QString &left, const QString &right)
    {
        session.setPaths({left, right, {}});
        session.onCompare();
        wait();
    }

    void wait()
    {
        QVERIFY(QTest::qWaitFor([this] { return !session.isComparing(); }, 60000));
    }

    /// Compares two texts, as files "a" and "b".
    void compareTexts(const QByteArray &leftText, const QByteArray &rightText)
    {
        compare(file("a", leftText), file("b", rightText));
    }
    /// The number of differing rows in the status line; -1 when that says something else.
    [[nodiscard]] int diffs() const
    {
        const bool done = status().startsWith(word("Compare done: "));
        return done ? status().section(u' ', 2, 2).toInt() : -1;
    }

    template <typename Child>
    [[nodiscard]] Child *child(const char *name)
    {
        return session.findChild<Child *>(QLatin1String(name));
    }
    TextPane &pane(Side side) { return session.view().pane(side); }
    PaneScene &scene() { return session.view().scene(); }
    /// Line `line`, counted from 0, as it is now.
    [[nodiscard]] QString text(Side side, qsizetype line) { return scene().document()->source(side).text(line); }

    [[nodiscard]] QString label(const char *name) const { return session.findChild<QLabel *>(word(name))->text(); }
    [[nodiscard]] QString status() const { return label("statusLabel"); }
    [[nodiscard]] QString format() const { return label("formatLabel"); }
    [[nodiscard]] QString position() const { return label("differencePosition"); }
    [[nodiscard]] QString banner() const { return label("verdictBarText"); }
    /// What was asked last.
    [[nodiscard]] QString question() const { return dialogs.asked().last().text; }

    QTemporaryDir folder;
    ScriptedDialogs dialogs;
    RecordingHost host;
    TextCompareWidget session{host};
};

} // namespace velmora::test

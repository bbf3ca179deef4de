#pragma once

#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "text/text_compare_widget.h"
#include "text/view/diff_pane.h"
#include "text/view/diff_view.h"

#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

namespace velmora::test {

/// A text session with files of its own and scripted answers.
class SessionFixture {
public:
    /// Unsaved texts are kept in `store`, which outlives the fixture, when there is one.
    explicit SessionFixture(RecoveryStore *store = nullptr) : host(store) { session.resize(1000, 600); }

    /// Writes a file into the fixture's folder and returns its path.
    QString file(const QString &name, const QByteArray &content)
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    [[nodiscard]] QString path(const QString &name) const { return folder.filePath(name); }

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
        compare(file(QStringLiteral("a"), leftText), file(QStringLiteral("b"), rightText));
    }
    /// The number of differing rows in the status line; -1 when that says something else.
    [[nodiscard]] int diffs() const
    {
        const bool done = status().startsWith(QStringLiteral("Compare done: "));
        return done ? status().section(u' ', 2, 2).toInt() : -1;
    }

    template <typename Child>
    [[nodiscard]] Child *child(const char *name)
    {
        return session.findChild<Child *>(QLatin1String(name));
    }
    DiffPane &pane(Side side) { return session.view().pane(side); }
    DiffScene &scene() { return session.view().scene(); }

    [[nodiscard]] QString label(const QString &name) const { return session.findChild<QLabel *>(name)->text(); }
    [[nodiscard]] QString status() const { return label(QStringLiteral("statusLabel")); }
    [[nodiscard]] QString format() const { return label(QStringLiteral("formatLabel")); }
    [[nodiscard]] QString position() const { return label(QStringLiteral("differencePosition")); }

    QTemporaryDir folder;
    ScriptedDialogs dialogs;
    RecordingHost host;
    TextCompareWidget session{host};
};

} // namespace velmora::test

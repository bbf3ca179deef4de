#include "folder/snapshot/folder_snapshot_widget.h"
#include "session/list/list_model.h"
#include "session/list/list_view.h"
#include "session/session_record.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QCheckBox>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>

using namespace velmora;
using namespace velmora::test;

class FolderSnapshotWidgetTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<FolderSnapshotWidget> m_session;

    [[nodiscard]] QString at(const char *name) const { return m_folder->filePath(word(name)); }
    template <typename Part = QAction>
    [[nodiscard]] Part &part(const char *name)
    {
        return *m_session->findChild<Part *>(word(name));
    }
    void trigger(const char *action)
    {
        part(action).trigger();
        QTRY_VERIFY(!m_session->isReading());
    }
    [[nodiscard]] QString message() { return part<QLabel>("statusLabel").text(); }
    [[nodiscard]] QStringList shown(int column) const
    {
        QStringList texts;
        for (int row = 0; row < m_session->rows().rowCount(); ++row)
            texts.append(m_session->rows().index(row, column).data().toString());
        return texts;
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_folder->path()).mkpath(word("tree/sub")));
        for (const char *name : {"tree/kept", "tree/gone", "tree/touched", "tree/quiet"})
            QVERIFY(makeFile(at(name), name));
        m_host = std::make_unique<RecordingHost>();
        m_session = std::make_unique<FolderSnapshotWidget>(*m_host);
        m_session->resize(800, 600);
        m_session->show();
    }

    void cleanup() { m_session.reset(); }

    void aFolderIsRecordedAndComparedLater()
    {
        ScriptedDialogs dialogs;
        trigger("createAction");
        QCOMPARE(message(), word("Enter a folder path on the left to snapshot."));
        m_session->setPaths({at("tree"), {}, {}});
        m_session->setOptions({{word("computeSha256"), true}});
        dialogs.answerPath(at("then")); // without the extension
        trigger("createAction");
        QCOMPARE(dialogs.asked().last().start, at("tree.kvsnapshot"));
        QCOMPARE(message(),
                 word("Snapshot saved: %1 (4 file(s))").arg(QDir::toNativeSeparators(at("then.kvsnapshot"))));

        const QDateTime before = QFileInfo(at("tree/quiet")).lastModified();
        QVERIFY(makeFile(at("tree/quiet"), "TREE/QUIET") && makeFile(at("tree/touched"), "longer than before"));
        QFile quiet(at("tree/quiet"));
        QVERIFY(quiet.open(QIODevice::ReadWrite) && quiet.setFileTime(before, QFileDevice::FileModificationTime));
        quiet.close();
        QVERIFY(QFile::rename(at("tree/gone"), at("tree/sub/come")) && makeFile(at("tree/new"), "new"));

        QSignalSpy titles(m_session.get(), &SessionWidget::tabTitleChanged);
        QSignalSpy finished(m_session.get(), &SessionWidget::comparisonFinished);
        m_session->setPaths({at("then.kvsnapshot"), at("tree"), {}});
        trigger("compareAction");
        QCOMPARE(message(), word("Compare finished — right only 2, left only 1, changed 2, same 1"));
        QCOMPARE(titles.value(0).value(0).toString(), word("Folder snapshot compare"));
        QCOMPARE(finished.size(), 1);
        QCOMPARE(shown(0), words("Left only|Same|Right only|Changed|Right only|Changed"));
        QCOMPARE(shown(1), words("gone|kept|new|quiet|sub/come|touched"));
        QCOMPARE(shown(3).first(), word("Moved to sub/come"));
        QCOMPARE(shown(2)[4], word("Moved from gone"));
        QVERIFY(m_session->rows().rowAt(3).note.startsWith(word("Other contents")));

        // Steps from difference to difference, the details beside them.
        auto &view = part<ListView>("listRows");
        view.goToRow(1);
        for (const char *path : {"new", "quiet", "sub/come", "touched"}) {
            part("nextAction").trigger();
            QCOMPARE(part<QLabel>("detailsTitle").text(), word(path));
        }
        QVERIFY(part<QPlainTextEdit>("rightValue").toPlainText().contains(word("SHA-256: ")));
        auto &filter = part<QLineEdit>("rowFilter");
        QTest::keyClicks(&filter, word("moved"));
        QCOMPARE(shown(1), words("gone|sub/come"));
        filter.clear();

        // Of a snapshot and its own folder both sides are one file.
        view.goToRow(int(shown(1).indexOf(word("quiet"))));
        QTest::keyClick(&view, Qt::Key_Return);
        QTRY_VERIFY(message().startsWith(word("Both sides lead to one file")));
        QVERIFY(m_host->opened.isEmpty());
    }

    void liveFilesOfTwoFoldersAreCompared()
    {
        QVERIFY(QDir(m_folder->path()).mkpath(word("other")) && makeFile(at("other/kept"), "other"));
        m_session->setPaths({at("tree"), at("other"), {}});
        trigger("compareAction");
        auto &view = part<ListView>("listRows");
        view.goToRow(int(shown(1).indexOf(word("kept"))));
        part("openAction").trigger();
        QTRY_COMPARE(m_host->opened.size(), 1);
        QCOMPARE(m_host->opened.first().second, (SessionPaths{at("tree/kept"), at("other/kept"), {}}));
    }

    void whatFailsLeavesTheResult()
    {
        m_session->setPaths({at("tree"), at("tree"), {}});
        trigger("compareAction");
        QCOMPARE(m_session->rows().rowCount(), 4);
        QVERIFY(makeFile(at("bad.kvsnapshot"), "{\"version\": 1}"));
        const auto fails = [&](const QString &right, const char *text) {
            m_session->setPaths({at("tree"), right, {}});
            trigger("compareAction");
            QCOMPARE(message(), word(text));
            QCOMPARE(m_session->rows().rowCount(), 4);
        };
        fails(at("bad.kvsnapshot"), "Invalid snapshot format");
        fails(at("missing"), "Folder does not exist");
        fails({}, "Enter left and right paths");
    }

    void foldersOfOtherComputersAreLeftAlone()
    {
        QCOMPARE(livePath(word("/home/a"), word("b/c")), word("/home/a/b/c"));
        for (const char *root : {"", "relative", "//server/share", "\\\\server\\share"})
            QCOMPARE(livePath(word(root), word("b")).startsWith(word("//")), false);
        QCOMPARE(livePath(word("//server/share"), word("b")), QString());
        QCOMPARE(livePath(word("relative"), word("b")), QString());
    }
};

VELMORA_TEST(FolderSnapshotWidgetTest)
#include "folder_snapshot_widget_test.moc"

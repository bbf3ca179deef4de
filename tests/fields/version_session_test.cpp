#include "filetypes/version/version_compare_widget.h"
#include "support/files.h"
#include "support/made_program.h"
#include "support/recording_host.h"
#include "support/test_main.h"

#include <QAction>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

using namespace velmora;
using namespace velmora::test;

class VersionSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comparesWalksAndSwaps()
    {
        QTemporaryDir folder;
        MadeProgram newer;
        ++newer.version;
        const QString one = folder.filePath(word("one.dll"));
        const QString two = folder.filePath(word("two.dll"));
        QVERIFY(makeFile(one, madeProgram()) && makeFile(two, madeProgram(newer)));
        RecordingHost host;
        VersionCompareWidget session(host);
        session.resize(1000, 600);
        session.show();
        const auto label = [&](const char *name) { return session.findChild<QLabel *>(QLatin1String(name))->text(); };
        QSignalSpy titles(&session, &SessionWidget::tabTitleChanged);
        session.dropPaths({one, two}, {});
        QTRY_COMPARE(titles.size(), 1);
        QCOMPARE(titles.first().first(), word("one.dll <-> two.dll"));
        QCOMPARE(label("verdictBarText"), word("The right file is newer: version 1.2.3.5 against 1.2.3.4."));

        auto *next = session.findChild<QAction *>(QStringLiteral("nextAction"));
        auto *view = session.findChild<QTreeView *>();
        view->setCurrentIndex(view->model()->index(2, 1));
        next->trigger();
        QCOMPARE(session.rows().rowAt(view->currentIndex().row()).key, word("Checksum, computed"));
        session.setOptions({{word("onlyDifferences"), true}});
        view->setCurrentIndex(view->model()->index(0, 1));
        QCOMPARE(session.rows().rowAt(0).key, word("File version"));
        QCOMPARE(session.findChild<QPlainTextEdit *>(QStringLiteral("rightValue"))->toPlainText(), word("1.2.3.5"));
        QVERIFY(session.rows().rowAt(0).note.startsWith(word("Version resource, fixed numbers, at 0x")));

        session.findChild<QAction *>(QStringLiteral("swapAction"))->trigger();
        QTRY_COMPARE(label("verdictBarText"), word("The left file is newer: version 1.2.3.5 against 1.2.3.4."));

        QByteArray narrow = madeProgram(newer);
        narrow.replace(narrow.indexOf("PE\0\0") + 4, 2, "\x4c\x01");
        QVERIFY(makeFile(two, narrow));
        session.start();
        QTRY_VERIFY(label("verdictBarText")
                        .contains(word("\nFor different machines: left I386 (0x14c), right AMD64 (0x8664).")));

        // What fails leaves what is shown.
        QVERIFY(makeFile(two, madeProgram().first(0x100)));
        session.start();
        QTRY_VERIFY(label("statusLabel").startsWith(word("The headers of this program are damaged or cut off: ")));
        QCOMPARE(session.rows().rowAt(0).key, word("File version"));
        QVERIFY(makeFile(two, madeProgram().first(0x300)));
        session.start();
        QTRY_VERIFY(label("verdictBarText").contains(word("Damaged or cut off in ")));
    }
};

VELMORA_TEST(VersionSessionTest)
#include "version_session_test.moc"

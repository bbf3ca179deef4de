#include "archive/made_archive.h"
#include "folder/compare/archive_compare_widget.h"
#include "folder/compare/folder_view.h"
#include "session/frame/path_edit.h"
#include "session/passing_copies.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace velmora;
using namespace velmora::test;

namespace {

class SessionFixture {
public:
    SessionFixture() : session(host) { session.resize(1000, 600); }

    [[nodiscard]] QString put(const char *name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
    }
    [[nodiscard]] QString path(const char *name) const { return folder.filePath(QString::fromLatin1(name)); }

    void compare(const QString &left, const QString &right)
    {
        session.setPaths({left, right, {}});
        session.start();
        QTRY_VERIFY_WITH_TIMEOUT(!session.isComparing() && session.logText().count(QLatin1String("load dirs")) > 0,
                                 20000);
    }

    QTemporaryDir folder;
    ScriptedDialogs dialogs;
    RecordingHost host;
    ArchiveCompareWidget session;
};

} // namespace

class ArchiveSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theVerdictTellsBytesContentsAndNamesApart()
    {
        SessionFixture f;
        const QString zip = f.put("a.zip", packed(plainFiles, "zip"));
        const QString twin = f.put("twin.zip", packed(plainFiles, "zip"));
        auto changed = plainFiles;
        changed[1].content[7] = 'c';
        const struct {
            QString right;
            const char *words;
        } cases[] = {{twin, "Same bytes"},
                     {f.put("a.tgz", packed(plainFiles, "ustar", "gzip")), "Same contents"},
                     {f.put("b.tgz", packed(changed, "ustar", "gzip")), "Same names, different contents"},
                     {f.put("c.zip", packed(plainFiles.first(2), "zip")), "Different names"},
                     {f.put("cut.tgz", packed(plainFiles, "ustar", "gzip").first(300)), "Damaged"}};
        for (const auto &[right, words] : cases) {
            f.compare(zip, right);
            QTRY_VERIFY2_WITH_TIMEOUT(f.session.status().contains(QLatin1String(words)), qPrintable(f.session.status()),
                                      10000);
        }
        f.compare(zip, f.put("text", "no archive"));
        QTRY_VERIFY(f.session.status().contains(QLatin1String("Neither an archive nor a folder")));
    }

    void entriesOpenGoDownAndAreUnpacked()
    {
        SessionFixture f;
        const QString zip = f.put("a.zip", packed(plainFiles, "zip"));
        const QString tar = f.put("a.tar", packed(plainFiles, "pax"));
        f.compare(zip, tar);
        FolderView &view = f.session.view();
        QTRY_VERIFY(f.session.comparison().tree().find(QStringLiteral("empty")) >= 0);
        view.goToNode(f.session.comparison().tree().find(QStringLiteral("docs")));
        QVERIFY(QDir().mkpath(f.path("target")));
        f.dialogs.answerPath(f.path("target"));
        auto *copyTo = f.session.findChild<QAction *>(QStringLiteral("copyToAction"));
        QTRY_VERIFY(copyTo->isEnabled());
        copyTo->trigger();
        QTRY_VERIFY2_WITH_TIMEOUT(QFile::exists(f.path("target/docs/deep/b.bin")),
                                  qPrintable(f.session.status() + f.session.logText()), 10000);
        QFile unpacked(f.path("target/docs/a.txt"));
        QVERIFY(unpacked.open(QIODevice::ReadOnly));
        QCOMPARE(unpacked.readAll(), QByteArray("alpha\n"));

        f.session.onItemDoubleClicked(view.rows().index(view.rows().rowOf(view.currentNode()), 0), 0);
        QTRY_COMPARE(f.session.paths().left, zip + QStringLiteral("/docs"));
        QTRY_VERIFY(f.session.comparison().tree().find(QStringLiteral("a.txt")) >= 0 && !f.session.isComparing());
        view.goToNode(f.session.comparison().tree().find(QStringLiteral("a.txt")));
        f.session.onItemDoubleClicked(view.rows().index(view.rows().rowOf(view.currentNode()), 0), 0);
        QTRY_COMPARE(f.host.opened.size(), 1);
        QCOMPARE(f.host.opened.first().first, QStringLiteral("text"));
        QVERIFY(QFile::exists(f.host.opened.first().second.left) && QFile::exists(f.host.opened.first().second.right));
        const SessionPaths copies = f.host.opened.first().second;
        PathEdit edit({}, {});
        edit.setPath(copies.left);
        QCOMPARE(edit.lineEdit().text(), QDir::toNativeSeparators(zip) + QStringLiteral("/docs/a.txt"));
        QVERIFY(edit.path() == copies.left && isOnCopies(copies));
        edit.lineEdit().setText(QStringLiteral("/elsewhere"));
        QCOMPARE(edit.path(), QStringLiteral("/elsewhere"));
    }
};

VELMORA_TEST(ArchiveSessionTest)
#include "archive_session_test.moc"

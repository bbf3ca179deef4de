#include "core/passing_folder.h"
#include "support/test_main.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

using namespace velmora;

class PassingFolderTest : public QObject {
    Q_OBJECT

private:
    static void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

private Q_SLOTS:
    /// Only those are swept whose process is gone, and nothing behind a link.
    void sweepsWhatTheDeadHaveLeft()
    {
        const QTemporaryDir place;
        const QByteArray before = qgetenv("TMPDIR");
        qputenv("TMPDIR", place.path().toUtf8());
        if (QDir::tempPath() != place.path())
            QSKIP("the place of temporary files is fixed here");
        const auto restored = qScopeGuard([&] { qputenv("TMPDIR", before); });
        QProcess dead;
        dead.start(QCoreApplication::applicationFilePath(), {QStringLiteral("-functions")});
        const QByteArray deadId = QByteArray::number(dead.processId());
        QVERIFY(dead.waitForFinished());

        const PassingFolder living;
        QVERIFY(living.isValid() && isInPassingFolder(living.filePath(QStringLiteral("a"))));
        write(living.filePath(QStringLiteral("a")), "kept");
        QFile lock(living.path() + QStringLiteral("/../lock"));
        QVERIFY(lock.open(QIODevice::ReadOnly));
        const QByteArray held = lock.readAll();
        const QByteArray left = deadId + held.mid(held.indexOf('\n'));

        const QDir temp(place.path());
        write(temp.filePath(QStringLiteral("user's")), "sacred");
        const auto leave = [&](const QString &name, QFileDevice::Permissions permissions, const QByteArray &lockText) {
            QVERIFY(temp.mkpath(name + QStringLiteral("/files/deep")));
            write(temp.filePath(name + QStringLiteral("/files/deep/copy")), "copy");
            QFile::setPermissions(temp.filePath(name + QStringLiteral("/files/deep/copy")), QFileDevice::ReadOwner);
            QFile::link(place.path(), temp.filePath(name + QStringLiteral("/files/out")));
            if (!lockText.isEmpty())
                write(temp.filePath(name + QStringLiteral("/lock")), lockText);
            QFile::setPermissions(temp.filePath(name), permissions);
        };
        const QFileDevice::Permissions own = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
        leave(QStringLiteral("velmora-copies-aaaaaa"), own, left);
        leave(QStringLiteral("velmora-scp-bbbbbb"), own, left);
        leave(QStringLiteral("velmora-copies-cccccc"), own, {});                            // no lock
        leave(QStringLiteral("velmora-copies-dddddd"), own | QFileDevice::ReadOther, left); // not private
        leave(QStringLiteral("velmora-copies-longer"), own, held);                          // of this process
        leave(QStringLiteral("velmora-another"), own, left);
        QFile::link(temp.filePath(QStringLiteral("velmora-another")),
                    temp.filePath(QStringLiteral("velmora-scp-eeeeee")));

        sweepPassingFolders();
        QStringList names = temp.entryList({QStringLiteral("velmora-*")}, QDir::AllEntries, QDir::Name);
        names.removeOne(QFileInfo(QFileInfo(living.path()).path()).fileName());
        QCOMPARE(names, QStringList({QStringLiteral("velmora-another"), QStringLiteral("velmora-copies-cccccc"),
                                     QStringLiteral("velmora-copies-dddddd"), QStringLiteral("velmora-copies-longer"),
                                     QStringLiteral("velmora-scp-eeeeee")}));
        QVERIFY(QFile::exists(living.filePath(QStringLiteral("a"))));
        QVERIFY(temp.exists(QStringLiteral("velmora-another/files/deep/copy")) &&
                temp.exists(QStringLiteral("user's")));

        removePassingFolders();
        QVERIFY(!QFile::exists(living.path() + QStringLiteral("/..")));
    }
};

VELMORA_TEST(PassingFolderTest)
#include "passing_folder_test.moc"

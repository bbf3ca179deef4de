#include "core/recovery_store.h"
#include "core/save_probe.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace velmora;
using namespace velmora::test;

namespace {

RecoveryRecord sample()
{
    return {{{QStringLiteral("kind"), QStringLiteral("text")}, {QStringLiteral("left"), QStringLiteral("/a\nb")}},
            {"first\r\ntext\n", QByteArray(), QByteArray("\0\xFF\n", 3)}};
}

} // namespace

class RecoveryStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void givesBackWhatItKept()
    {
        RecoveryStore store(root());
        QVERIFY2(!QFileInfo::exists(root()), "made with the first file");
        const QString file = store.newFile();
        QVERIFY(writeRecoveryRecord(file, sample()).ok());
        QCOMPARE(readRecoveryRecord(file), sample());
        QVERIFY(store.newFile() != file);
#ifdef Q_OS_UNIX
        QCOMPARE(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        QCOMPARE(QFile::permissions(QFileInfo(file).path()) & (QFile::ExeGroup | QFile::ExeOther),
                 QFile::Permissions());
#endif
    }

    void takesNoDamagedFile()
    {
        const QString file = m_folder->filePath(QStringLiteral("record"));
        QVERIFY(writeRecoveryRecord(file, sample()).ok());
        const QByteArray whole = contentsOf(file);
        for (qsizetype size = 0; size < whole.size(); ++size) {
            QVERIFY(makeFile(file, whole.left(size)));
            QVERIFY2(!readRecoveryRecord(file), qPrintable(QString::number(size)));
        }
        for (qsizetype at = whole.size() - 15; at < whole.size(); ++at) { // within the texts
            QByteArray changed = whole;
            changed[at] = char(changed[at] ^ 1);
            QVERIFY(makeFile(file, changed));
            QVERIFY2(!readRecoveryRecord(file), qPrintable(QString::number(at)));
        }
        const QByteArray sized = R"(Velmora recovery 1
{"description":{"a":1},"texts":[{"size":%1,"crc32":0}]}
)";
        for (const QByteArray &bytes :
             {whole + "x", QByteArray("Velmora recovery 1\n{}\n"), QByteArray("Velmora recovery 2\n{}\n"),
              QByteArray(sized).replace("%1", "1e300"), QByteArray(sized).replace("%1", "-1")}) {
            QVERIFY(makeFile(file, bytes));
            QVERIFY(!readRecoveryRecord(file));
        }
        QVERIFY(!readRecoveryRecord(m_folder->filePath(QStringLiteral("missing"))));
    }

    void writesNothingTooLargeOrCancelled()
    {
        const QString file = m_folder->filePath(QStringLiteral("record"));
        QVERIFY(!writeRecoveryRecord(file, {sample().description, {QByteArray(recoveryLimit + 1, ' ')}}).ok());
        const auto uninstall = qScopeGuard([] { installSaveProbe({}); });
        for (const SaveStep last : {SaveStep::Open, SaveStep::Write, SaveStep::Flush, SaveStep::Replace}) {
            CancelFlag cancel;
            installSaveProbe([&cancel, last](SaveStep step) {
                if (step == last)
                    cancel.cancel();
                return true;
            });
            QVERIFY(!writeRecoveryRecord(file, sample(), cancel).ok());
            QCOMPARE(entriesOf(m_folder->path()), QStringList());
        }
    }

    void offersOnlyWhatNoRunningInstanceHolds()
    {
        RecoveryStore running(root());
        QVERIFY(writeRecoveryRecord(running.newFile(), sample()).ok());
        RecoveryStore second(root());
        QCOMPARE(second.abandonedFiles(), QStringList());
        QCOMPARE(running.abandonedFiles(), QStringList());

        QVERIFY(QDir().mkpath(root() + QStringLiteral("/left")));
        const QString left = root() + QStringLiteral("/left/one.unsaved");
        QVERIFY(makeFile(left, "x"));
        QCOMPARE(second.abandonedFiles(), QStringList{left});
        QCOMPARE(second.abandonedFiles(), QStringList{left});
        QCOMPARE(running.abandonedFiles(), QStringList()); // taken
        {
            RecoveryStore third(root());
            QVERIFY(!third.newFile().isEmpty());
        }
    }

    void leavesNoEmptyFolders()
    {
        const QString left = root() + QStringLiteral("/left/one.unsaved");
        QVERIFY(QDir().mkpath(QFileInfo(left).path()));
        QVERIFY(makeFile(left, "x"));
        {
            RecoveryStore store(root());
            const QString own = store.newFile();
            QVERIFY(writeRecoveryRecord(own, sample()).ok());
            QCOMPARE(store.abandonedFiles(), QStringList{left});
            QVERIFY(QFile::remove(own));
        }
        QCOMPARE(QDir(root()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), words("left"));
        {
            RecoveryStore store(root());
            QCOMPARE(store.abandonedFiles(), QStringList{left}); // nobody has decided yet
            const QString aside = store.setAside(left);
            QVERIFY(QFileInfo::exists(aside));
            QCOMPARE(store.abandonedFiles(), QStringList());
        }
        QCOMPARE(QDir(root()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList());
    }

    void offersWhatAKilledProcessHasLeft()
    {
#ifdef Q_OS_UNIX
        const pid_t child = ::fork();
        if (child == 0) {
            RecoveryStore store(root());
            const bool written = writeRecoveryRecord(store.newFile(), sample()).ok();
            ::_exit(written ? 0 : 1); // no destructor runs
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QCOMPARE(status, 0);
        RecoveryStore store(root());
        const QStringList files = store.abandonedFiles();
        QCOMPARE(files.size(), 1);
        QCOMPARE(readRecoveryRecord(files.first()), sample());
#else
        QSKIP("needs a process that can be forked");
#endif
    }

private:
    [[nodiscard]] QString root() const
    {
        return m_folder->filePath(QStringLiteral("recovery"));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

VELMORA_TEST(RecoveryStoreTest)
#include "recovery_store_test.moc"

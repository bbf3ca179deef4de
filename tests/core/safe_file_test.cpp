#include "core/html.h"
#include "core/safe_file.h"
#include "core/save_probe.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QScopeGuard>
#include <QTemporaryDir>

#ifdef Q_OS_LINUX
#include "support/linux_attributes.h"

#include <sys/sysmacros.h>
#endif
#ifdef Q_OS_UNIX
#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace velmora;
using namespace velmora::test;

class SafeFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("file"));
    }

    /// Lets the first step fail, then the second, and so on until all succeed.
    void aStepThatFailsLeavesTheFileAlone()
    {
        const QFile::Permissions narrow = QFile::ReadOwner | QFile::WriteOwner;
        const auto uninstall = qScopeGuard([] { installSaveProbe({}); });
        for (const bool exists : {false, true}) {
            if (exists)
                QVERIFY(saveFile(m_path, "old").ok() && QFile::setPermissions(m_path, narrow));
            const QFile::Permissions permissions = QFile::permissions(m_path);
            const QStringList before = entries();
            QList<SaveStep> failed;
            for (int good = 0; good < 20; ++good) {
                int left = good;
                SaveStep last = SaveStep::Open;
                installSaveProbe([&left, &last](SaveStep step) {
                    last = step;
                    return left-- > 0;
                });
                const SaveResult saved = saveFile(m_path, [](QIODevice &device) {
                    return device.write("first ") == 6 && device.write("second") == 6;
                });
                if (saved.ok())
                    break;
                failed.append(last);
                QCOMPARE(entries(), before);
                QCOMPARE(contentsOf(m_path), exists ? QByteArray("old") : QByteArray("(unreadable)"));
            }
            installSaveProbe({});
            // So does a writer that gives up.
            QVERIFY(!saveFile(m_path, [](QIODevice &device) { return device.write("half") < 0; }).ok());
            QCOMPARE(contentsOf(m_path), QByteArray("first second"));
            QCOMPARE(entries(), words("file"));
            QVERIFY(!exists || QFile::permissions(m_path) == permissions);
            QCOMPARE(failed, (QList<SaveStep>{SaveStep::Open, SaveStep::Write, SaveStep::Write, SaveStep::Flush,
                                              SaveStep::Access, SaveStep::Replace}));
        }
    }

#ifdef Q_OS_UNIX
    /// A limit on the size of files stands in for a disk that is full at any byte.
    void aFullDiskLeavesTheFileAlone()
    {
        QVERIFY(saveFile(m_path, "old").ok());
        struct rlimit usual = {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &usual), 0);
        const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
        const auto restore = qScopeGuard([&usual, ignored] {
            setrlimit(RLIMIT_FSIZE, &usual);
            std::signal(SIGXFSZ, ignored);
        });
        const QByteArray bytes(300'000, 'x');
        for (const rlim_t room : {1, 4096, 16'384, 100'000, 299'999}) {
            struct rlimit limit = usual;
            limit.rlim_cur = room;
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
            const SaveResult saved = saveFile(m_path, bytes);
            setrlimit(RLIMIT_FSIZE, &usual);
            QVERIFY(!saved.ok());
            QVERIFY2(!saved.error.contains(QLatin1String("cancel"), Qt::CaseInsensitive), qPrintable(saved.error));
            QCOMPARE(contentsOf(m_path), QByteArray("old"));
            QCOMPARE(entries(), words("file"));
        }
        QVERIFY(saveFile(m_path, bytes).ok());
    }

    void aProtectedFileIsNotReplaced()
    {
        if (::geteuid() == 0)
            QSKIP("this user may write everything");
        QVERIFY(saveFile(m_path, "old").ok());
        QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner));
        QVERIFY(!saveFile(m_path, "new").ok());
        QCOMPARE(contentsOf(m_path), QByteArray("old"));

        // Nobody could put the new file beside it.
        QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner));
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::ExeOwner));
        const bool saved = saveFile(m_path, "new").ok();
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QVERIFY(!saved);
        QCOMPARE(contentsOf(m_path), QByteArray("old"));
    }

    void keepsOwnerAndAllAccessBits()
    {
        QVERIFY(saveFile(m_path, "old").ok());
        const QByteArray name = QFile::encodeName(m_path);
        const bool mayGiveAway = ::geteuid() == 0;
        if (mayGiveAway)
            QCOMPARE(::chown(name.constData(), 12'345, 12'346), 0);
        QCOMPARE(::chmod(name.constData(), 02751), 0);
        QVERIFY(saveFile(m_path, "new").ok());
        struct stat after = {};
        QCOMPARE(::stat(name.constData(), &after), 0);
        QCOMPARE(after.st_mode & 07777, mode_t(02751));
        QVERIFY(!mayGiveAway || (after.st_uid == 12'345 && after.st_gid == 12'346));
    }
#endif

#ifdef Q_OS_LINUX
    void keepsAttributesAndTheAccessList()
    {
        QVERIFY(saveFile(m_path, "old").ok());
        if (!setAttribute(m_path, "user.note", "kept") || !setAttribute(m_path, accessListName, accessListOf(4, 0, 4)))
            QSKIP("the file system for temporary files has no such attributes");
        // What is made in the folder inherits rights that the file does not give.
        QVERIFY(setAttribute(m_folder->path(), defaultListName, accessListOf(6, 6, 6)));
        const QMap<QByteArray, QByteArray> before = attributesOf(m_path);
        QVERIFY(saveFile(m_path, "new").ok());
        QCOMPARE(attributesOf(m_path), before);
        QCOMPARE(::removexattr(QFile::encodeName(m_path).constData(), accessListName), 0);
        QVERIFY(saveFile(m_path, "newer").ok());
        QCOMPARE(attributesOf(m_path).keys(), QList<QByteArray>{"user.note"});
    }
#endif

    void aLinkStaysALink()
    {
#ifdef Q_OS_WIN
        QSKIP("makes shortcuts here");
#endif
        const QString target = m_folder->filePath(QStringLiteral("target"));
        const QString second = m_folder->filePath(QStringLiteral("second"));
        if (!QFile::link(target, second) || !QFile::link(second, m_path))
            QSKIP("no links here");
        for (const QByteArray &text : {QByteArray("new"), QByteArray("newer")}) {
            QVERIFY(saveFile(m_path, text).ok());
            QVERIFY(QFileInfo(m_path).isSymLink());
            QVERIFY(QFileInfo(second).isSymLink());
            QCOMPARE(contentsOf(target), text);
        }
    }

    void namesWhyItFailed()
    {
        QVERIFY(!saveFile(QString(), "x").ok());
        QVERIFY(!saveFile(m_folder->path(), "x").ok());
        QVERIFY(!saveFile(m_folder->filePath(QStringLiteral("no/such/folder")), "x").ok());
#ifdef Q_OS_LINUX
        const QString null = device("null", 3);
        if (null.isEmpty())
            QSKIP("no device here that a fault may cost");
        QVERIFY(saveFile(null, "x").ok());
        QVERIFY(!QFileInfo(null).isFile());
        QVERIFY(!saveFile(device("full", 7), "x").ok());
#endif
    }

    void escapesHtml()
    {
        QByteArray html = ">";
        appendHtmlEscaped(html, "a<b> & \"c\" 'd'\t\xC3\xA9");
        QCOMPARE(html, QByteArray(">a&lt;b&gt; &amp; &quot;c&quot; &#39;d&#39;\t\xC3\xA9"));
        html.clear();
        appendHtmlEscaped(html, std::string_view("\0\x01", 2));
        QCOMPARE(html, QByteArray("\xEF\xBF\xBD\xEF\xBF\xBD"));
    }

private:
#ifdef Q_OS_LINUX
    /// A character device to write to. Who may replace the system's own gets a copy; empty where there can be none.
    [[nodiscard]] QString device(const char *name, unsigned minor) const
    {
        if (::geteuid() != 0)
            return QStringLiteral("/dev/") + word(name);
        const QString copy = m_folder->filePath(word(name));
        const bool made = ::mknod(QFile::encodeName(copy).constData(), S_IFCHR | 0666, makedev(1, minor)) == 0;
        return made && QFile(copy).open(QIODevice::WriteOnly) ? copy : QString();
    }
#endif

    [[nodiscard]] QStringList entries() const
    {
        return entriesOf(m_folder->path());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

VELMORA_TEST(SafeFileTest)
#include "safe_file_test.moc"

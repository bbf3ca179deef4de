#include "core/html.h"
#include "core/safe_file.h"
#include "support/test_main.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace velmora;

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(unreadable)");
}

} // namespace

class SafeFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("file"));
    }

    void replacesWholeFilesAndKeepsPermissions()
    {
        QVERIFY(saveFile(m_path, "one").ok());
        const QFile::Permissions narrow = QFile::ReadOwner | QFile::WriteOwner;
        QVERIFY(QFile::setPermissions(m_path, narrow));
        const QFile::Permissions before = QFile::permissions(m_path);
        QVERIFY(saveFile(m_path, "two").ok());
        QCOMPARE(contentsOf(m_path), QByteArray("two"));
        QCOMPARE(QFile::permissions(m_path), before);
        QCOMPARE(entries(), QStringList{QStringLiteral("file")});
    }

    void aWriterThatGivesUpLeavesTheFileAlone()
    {
        QVERIFY(saveFile(m_path, "one").ok());
        const SaveResult saved = saveFile(m_path, [](QIODevice &device) {
            device.write("half");
            return false;
        });
        QVERIFY(!saved.ok());
        QCOMPARE(contentsOf(m_path), QByteArray("one"));
        QCOMPARE(entries(), QStringList{QStringLiteral("file")});
    }

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
        QVERIFY(saveFile(QStringLiteral("/dev/null"), "x").ok());
        QVERIFY(!QFileInfo(QStringLiteral("/dev/null")).isFile());
        QVERIFY(!saveFile(QStringLiteral("/dev/full"), "x").ok());
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
    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

VELMORA_TEST(SafeFileTest)
#include "safe_file_test.moc"

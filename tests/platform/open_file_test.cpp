#include "core/safe_file.h"
#include "platform/file_access.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QTemporaryDir>

using namespace velmora;
using namespace velmora::test;

/// A file is saved while another handle reads it. Unix replaces it under the reader; Windows may refuse, and then
/// nothing must have happened.
class OpenFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("file"));
        QVERIFY(saveFile(m_path, m_old).ok());
    }

    void aReaderSeesTheOldFileToItsEnd()
    {
        QFile reader(m_path);
        QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        QCOMPARE(reader.read(3), m_old.left(3));
        const SaveResult saved = saveFile(m_path, m_new);
        QCOMPARE(reader.readAll(), m_old.mid(3));
#ifdef Q_OS_WIN
        QVERIFY(!saved.ok()); // this reader lets nobody delete the file
#else
        QVERIFY2(saved.ok(), qPrintable(saved.error));
#endif
        checkAllOrNothing(saved);
        reader.close();
        QVERIFY(saveFile(m_path, m_new).ok());
        QCOMPARE(contentsOf(m_path), m_new);
    }

    void aComparisonSeesTheOldFileToItsEnd()
    {
        const auto opener = FileAccess::native().makeOpener();
        auto reader = opener->open(QFileInfo(m_path).canonicalFilePath(), OpenHint::Unknown);
        QVERIFY(reader);
        const SaveResult saved = saveFile(m_path, m_new);
        QByteArray read(m_old.size() * 2, '\0');
        QCOMPARE(reader->readAt(0, read.data(), read.size()), (FilePiece{m_old.size(), false}));
        QCOMPARE(read.left(m_old.size()), m_old);
        checkAllOrNothing(saved);
        reader.reset();
        QVERIFY(saveFile(m_path, m_new).ok());
        QCOMPARE(contentsOf(m_path), m_new);
    }

private:
    void checkAllOrNothing(const SaveResult &saved) const
    {
        QCOMPARE(contentsOf(m_path), saved.ok() ? m_new : m_old);
        QCOMPARE(entriesOf(m_folder->path()), words("file"));
    }

    const QByteArray m_old = QByteArray("old\r\n").repeated(5000);
    const QByteArray m_new = QByteArray("new\r\nlines\n").repeated(3000);
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

VELMORA_TEST(OpenFileTest)
#include "open_file_test.moc"

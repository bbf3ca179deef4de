#include "core/safe_file.h"
#include "platform/long_path_win.h"
#include "support/test_main.h"

#include <QFile>
#include <QTemporaryDir>

#include <thread>
#include <vector>

#include <windows.h>
#include <sddl.h>

using namespace velmora;

/// What belongs to a file beside its contents and is still there when it has been saved.
class SavedFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("file"));
        QVERIFY(saveFile(m_path, "old\r\n").ok());
    }

    void attributesStay()
    {
        constexpr DWORD looked = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
        for (const DWORD kept : {DWORD(FILE_ATTRIBUTE_HIDDEN), DWORD(FILE_ATTRIBUTE_SYSTEM), looked, DWORD(0)}) {
            QVERIFY(::SetFileAttributesW(native(m_path).c_str(), kept != 0 ? kept : DWORD(FILE_ATTRIBUTE_NORMAL)));
            QVERIFY(saveFile(m_path, "new\r\n").ok());
            QCOMPARE(::GetFileAttributesW(native(m_path).c_str()) & looked, kept);
        }
    }

    void theAccessListStays()
    {
        const QString usual = accessList(m_path);
        PSECURITY_DESCRIPTOR own = nullptr;
        // Everybody may do anything; nothing comes from the folder.
        QVERIFY(
            ::ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;WD)", SDDL_REVISION_1, &own, nullptr));
        QVERIFY(::SetFileSecurityW(native(m_path).c_str(), DACL_SECURITY_INFORMATION, own));
        ::LocalFree(own);
        const QString before = accessList(m_path);
        QVERIFY2(before != usual, qPrintable(usual));
        QVERIFY(saveFile(m_path, "new\r\n").ok());
        QCOMPARE(accessList(m_path), before);
    }

    /// As the scanners of the system read a file that has just changed.
    void whoReadsForAMomentIsWaitedFor()
    {
        const auto reading = [this] {
            return ::CreateFileW(native(m_path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        };
        HANDLE reader = reading();
        QVERIFY(reader != INVALID_HANDLE_VALUE);
        std::thread scanner([reader] {
            ::Sleep(150);
            ::CloseHandle(reader);
        });
        const bool saved = saveFile(m_path, "new\r\n").ok();
        scanner.join();
        QVERIFY(saved);
        reader = reading();
        QVERIFY(!saveFile(m_path, "newer\r\n").ok()); // it never ends
        ::CloseHandle(reader);
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("new\r\n"));
    }

    /// For instance the mark of what came from the internet.
    void namedStreamsStay()
    {
        const QByteArray mark = "[ZoneTransfer]\r\nZoneId=3\r\n";
        const QByteArray large = QByteArray("0123456789abcdef").repeated(20'000);
        if (!writeStream(QStringLiteral("Zone.Identifier"), mark) || !hasStreams())
            QSKIP("no named streams here");
        QVERIFY(writeStream(QStringLiteral("large"), large));
        QVERIFY(writeStream(QStringLiteral("empty"), {}));
        QVERIFY(saveFile(m_path, "new\r\n").ok());
        QCOMPARE(readStream(QStringLiteral("Zone.Identifier")), mark);
        QCOMPARE(readStream(QStringLiteral("large")), large);
        QCOMPARE(readStream(QStringLiteral("empty")), QByteArray());
        QCOMPARE(readStream(QString()), QByteArray("new\r\n"));
    }

private:
    static std::wstring native(const QString &path) { return longPath(path); }

    [[nodiscard]] std::wstring streamPath(const QString &stream) const
    {
        return native(stream.isEmpty() ? m_path : m_path + u':' + stream);
    }

    static QString accessList(const QString &path)
    {
        DWORD size = 0;
        ::GetFileSecurityW(native(path).c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
        std::vector<char> descriptor(size);
        wchar_t *text = nullptr;
        if (!::GetFileSecurityW(native(path).c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size) ||
            !::ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor.data(), SDDL_REVISION_1,
                                                                    DACL_SECURITY_INFORMATION, &text, nullptr))
            return QStringLiteral("unreadable");
        const QString list = QString::fromWCharArray(text);
        ::LocalFree(text);
        return list;
    }

    [[nodiscard]] bool hasStreams() const
    {
        WIN32_FIND_STREAM_DATA stream{};
        const HANDLE search = ::FindFirstStreamW(native(m_path).c_str(), FindStreamInfoStandard, &stream, 0);
        if (search == INVALID_HANDLE_VALUE)
            return false;
        ::FindClose(search);
        return true;
    }

    [[nodiscard]] bool writeStream(const QString &stream, const QByteArray &bytes) const
    {
        const HANDLE file = ::CreateFileW(streamPath(stream).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                          FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return false;
        DWORD written = 0;
        const BOOL ok = ::WriteFile(file, bytes.constData(), DWORD(bytes.size()), &written, nullptr);
        ::CloseHandle(file);
        return ok && written == DWORD(bytes.size());
    }

    [[nodiscard]] QByteArray readStream(const QString &stream) const
    {
        const HANDLE file = ::CreateFileW(streamPath(stream).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return "(missing)";
        QByteArray bytes(1 << 20, '\0');
        DWORD read = 0;
        const BOOL ok = ::ReadFile(file, bytes.data(), DWORD(bytes.size()), &read, nullptr);
        ::CloseHandle(file);
        return ok ? bytes.left(int(read)) : QByteArray("(unreadable)");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

VELMORA_TEST(SavedFileTest)
#include "saved_file_win_test.moc"

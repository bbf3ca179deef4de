#include "platform/long_path_win.h"
#include "support/test_main.h"

#include <QCoreApplication>

#include <vector>

#include <windows.h>

using namespace velmora;

namespace {

QByteArray resource(HMODULE program, const wchar_t *name, const wchar_t *type)
{
    const HRSRC found = ::FindResourceW(program, name, type);
    const HGLOBAL loaded = found ? ::LoadResource(program, found) : nullptr;
    return loaded ? QByteArray(static_cast<const char *>(::LockResource(loaded)), int(::SizeofResource(program, found)))
                  : QByteArray();
}

/// A text of the version resource, in the language and letters that the resource names first.
QString versionText(const std::wstring &path, const QString &key)
{
    std::vector<char> block(::GetFileVersionInfoSizeW(path.c_str(), nullptr));
    void *value = nullptr;
    UINT length = 0;
    if (block.empty() || !::GetFileVersionInfoW(path.c_str(), 0, DWORD(block.size()), block.data()) ||
        !::VerQueryValueW(block.data(), L"\\VarFileInfo\\Translation", &value, &length) || length < 4)
        return {};
    const auto *translation = static_cast<const WORD *>(value);
    const QString place = QStringLiteral("\\StringFileInfo\\%1%2\\%3")
                              .arg(translation[0], 4, 16, QLatin1Char('0'))
                              .arg(translation[1], 4, 16, QLatin1Char('0'))
                              .arg(key);
    if (!::VerQueryValueW(block.data(), place.toStdWString().c_str(), &value, &length) || length == 0)
        return {};
    return QString::fromWCharArray(static_cast<const wchar_t *>(value));
}

} // namespace

/// What Explorer and the loader read in the programs' files.
class ProgramResourcesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void programsHaveVersionIconAndManifest_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("window") << QStringLiteral("velmora.exe");
        QTest::newRow("command line") << QStringLiteral("velmora-cli.exe");
    }
    void programsHaveVersionIconAndManifest()
    {
        QFETCH(QString, name);
        const std::wstring path = longPath(QCoreApplication::applicationDirPath() + u'/' + name);
        const HMODULE program = ::LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        QVERIFY2(program, qPrintable(qt_error_string()));
        const QByteArray manifest = resource(program, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
        for (const char *setting :
             {"longPathAware xmlns=\"http://schemas.microsoft.com/SMI/2016/WindowsSettings\">true<", ">PerMonitorV2",
              ">true/pm<", "level=\"asInvoker\"", "Microsoft.Windows.Common-Controls"})
            QVERIFY2(manifest.contains(setting), setting);
        QVERIFY(resource(program, L"IDI_ICON1", MAKEINTRESOURCEW(14)).size() > 0); // RT_GROUP_ICON
        ::FreeLibrary(program);

        QCOMPARE(versionText(path, QStringLiteral("OriginalFilename")), name);
        QCOMPARE(versionText(path, QStringLiteral("ProductName")), QStringLiteral("Velmora"));
        QCOMPARE(versionText(path, QStringLiteral("ProductVersion")), QStringLiteral(VELMORA_VERSION));
        QCOMPARE(versionText(path, QStringLiteral("FileVersion")), QStringLiteral(VELMORA_VERSION));
    }
};

VELMORA_TEST(ProgramResourcesTest)
#include "program_resources_win_test.moc"

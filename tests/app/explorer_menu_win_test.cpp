#include "app/desktop/explorer_menu.h"
#include "platform/user_registry.h"
#include "support/test_main.h"

#include <windows.h>

using namespace velmora;

namespace {

struct RawValue {
    DWORD type = REG_NONE;
    QString text; ///< without the zero at its end
    bool endsInZero = false;
};

/// A value as it lies in the registry.
RawValue rawValue(const QString &key, const wchar_t *name)
{
    HKEY handle = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, key.toStdWString().c_str(), 0, KEY_QUERY_VALUE, &handle) != ERROR_SUCCESS)
        return {};
    RawValue value;
    wchar_t buffer[512] = {};
    DWORD size = sizeof buffer;
    if (::RegQueryValueExW(handle, name, nullptr, &value.type, reinterpret_cast<BYTE *>(buffer), &size) ==
        ERROR_SUCCESS) {
        value.text = QString::fromWCharArray(buffer, int(size / sizeof(wchar_t)));
        value.endsInZero = value.text.endsWith(QChar(u'\0'));
        if (value.endsInZero)
            value.text.chop(1);
    }
    ::RegCloseKey(handle);
    return value;
}

} // namespace

/// The true registry below the options' check box.
class ExplorerMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesAndRemovesTheVerbs()
    {
        UserRegistry *registry = UserRegistry::system();
        QVERIFY(registry);
        QVERIFY(!isExplorerMenuRegistered(*registry));
        QVERIFY(registerExplorerMenu(*registry, QStringLiteral("C:/Program Files/Velmora/velmora.exe")));
        QVERIFY(isExplorerMenuRegistered(*registry));
        const QString key = QStringLiteral("Software\\Classes\\Directory\\shell\\VelmoraAsRight");
        check(rawValue(key, nullptr), QStringLiteral("用 Velmora 选为比较右侧"));
        check(rawValue(key, L"Icon"), QStringLiteral("C:\\Program Files\\Velmora\\velmora.exe,0"));
        check(rawValue(key + QStringLiteral("\\command"), nullptr),
              QStringLiteral("\"C:\\Program Files\\Velmora\\velmora.exe\" --as-right \"%1\""));

        // Somebody else's verb beside them stays.
        QVERIFY(registry->setString(QStringLiteral("Software\\Classes\\*\\shell\\Other"), {}, QStringLiteral("o")));
        QVERIFY(unregisterExplorerMenu(*registry));
        QVERIFY(!isExplorerMenuRegistered(*registry));
        for (const char *root : {"*", "Directory"}) {
            for (const char *verb : {"VelmoraAsLeft", "VelmoraAsRight"})
                QVERIFY(!registry->contains(
                    QStringLiteral("Software\\Classes\\%1\\shell\\%2").arg(QLatin1String(root), QLatin1String(verb))));
        }
        QVERIFY(registry->contains(QStringLiteral("Software\\Classes\\*\\shell\\Other")));
    }

private:
    static void check(const RawValue &value, const QString &text)
    {
        QCOMPARE(value.text, text);
        QCOMPARE(value.type, DWORD(REG_SZ));
        QVERIFY(value.endsInZero);
    }
};

VELMORA_TEST(ExplorerMenuTest)
#include "explorer_menu_win_test.moc"

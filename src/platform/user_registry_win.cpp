#include "platform/user_registry.h"

#include <string>

#include <windows.h>

namespace velmora {

namespace {

class WindowsRegistry final : public UserRegistry {
public:
    bool contains(const QString &key) const override
    {
        HKEY handle = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, key.toStdWString().c_str(), 0, KEY_QUERY_VALUE, &handle) != ERROR_SUCCESS)
            return false;
        RegCloseKey(handle);
        return true;
    }

    bool setString(const QString &key, const QString &name, const QString &value) override
    {
        HKEY handle = nullptr;
        if (RegCreateKeyExW(HKEY_CURRENT_USER, key.toStdWString().c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                            KEY_SET_VALUE, nullptr, &handle, nullptr) != ERROR_SUCCESS)
            return false;
        const std::wstring text = value.toStdWString();
        const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
        const LSTATUS status = RegSetValueExW(handle, name.isEmpty() ? nullptr : name.toStdWString().c_str(), 0, REG_SZ,
                                              reinterpret_cast<const BYTE *>(text.c_str()), size);
        RegCloseKey(handle);
        return status == ERROR_SUCCESS;
    }

    void removeTree(const QString &key) override { RegDeleteTreeW(HKEY_CURRENT_USER, key.toStdWString().c_str()); }
};

} // namespace

UserRegistry *UserRegistry::system()
{
    static WindowsRegistry registry;
    return &registry;
}

} // namespace velmora

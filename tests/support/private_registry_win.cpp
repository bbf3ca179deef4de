#include "support/private_registry_win.h"

#include <windows.h>

namespace velmora::test {

PrivateRegistry::PrivateRegistry() : m_place(QStringLiteral("Software\\VelmoraTests-%1").arg(GetCurrentProcessId()))
{
    HKEY place = nullptr;
    // Not a volatile key: all keys below one have to be volatile, which those of the tested program are not.
    m_valid = RegCreateKeyExW(HKEY_CURRENT_USER, m_place.toStdWString().c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                              KEY_ALL_ACCESS, nullptr, &place, nullptr) == ERROR_SUCCESS &&
              RegOverridePredefKey(HKEY_CURRENT_USER, place) == ERROR_SUCCESS;
    if (place)
        RegCloseKey(place);
}

PrivateRegistry::~PrivateRegistry()
{
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, m_place.toStdWString().c_str());
}

} // namespace velmora::test

#include "platform/long_path_win.h"
#include "platform/startup_entries.h"

#include <QByteArray>
#include <QDir>
#include <QStringList>

#include <algorithm>
#include <vector>

#include <windows.h>

namespace velmora {

namespace {

/// One value of a key, as it was read.
struct RawValue {
    std::vector<wchar_t> name;
    std::vector<BYTE> data;
    DWORD type = REG_NONE;
};

/// The text of string data, which may lack its closing zero or have several.
QString stringOf(const std::vector<BYTE> &data)
{
    QString text(qsizetype(data.size() / sizeof(wchar_t)), Qt::Uninitialized);
    std::copy_n(data.begin(), std::size_t(text.size()) * sizeof(wchar_t), reinterpret_cast<BYTE *>(text.data()));
    while (text.endsWith(QChar(u'\0')))
        text.chop(1);
    return text;
}

QString textOf(const RawValue &value)
{
    const auto numberOf = [&value](auto number) {
        std::copy_n(value.data.begin(), sizeof number, reinterpret_cast<BYTE *>(&number));
        return QString::number(number);
    };
    switch (value.type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
        return stringOf(value.data);
    case REG_MULTI_SZ:
        return stringOf(value.data).split(QChar(u'\0')).join(u'\n');
    case REG_DWORD:
        if (value.data.size() == sizeof(quint32))
            return numberOf(quint32(0));
        break;
    case REG_QWORD:
        if (value.data.size() == sizeof(quint64))
            return numberOf(quint64(0));
        break;
    default:
        break;
    }
    const QByteArray bytes(reinterpret_cast<const char *>(value.data.data()), qsizetype(value.data.size()));
    return QString::fromLatin1(bytes.toHex(' '));
}

/// Reads the value of that number; false behind the last one.
bool readValue(HKEY key, DWORD number, RawValue &value)
{
    // The longest name of a value that the registry allows, with its closing zero.
    constexpr DWORD longestName = 16384;
    DWORD size = 4096;
    for (;;) {
        value.name.resize(longestName);
        value.data.resize(size);
        DWORD nameLength = longestName;
        const LSTATUS status =
            RegEnumValueW(key, number, value.name.data(), &nameLength, nullptr, &value.type, value.data.data(), &size);
        if (status == ERROR_MORE_DATA && size > value.data.size())
            continue; // it may have grown since the last call, so this may happen again
        if (status != ERROR_SUCCESS)
            return false;
        value.name.resize(nameLength);
        value.data.resize(size);
        return true;
    }
}

} // namespace

QList<StartupEntry> registryValues(RegistryRoot root, const QString &key)
{
    const HKEY rootKey = root == RegistryRoot::CurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
    HKEY handle = nullptr;
    if (RegOpenKeyExW(rootKey, key.toStdWString().c_str(), 0, KEY_QUERY_VALUE, &handle) != ERROR_SUCCESS)
        return {};
    QList<StartupEntry> entries;
    RawValue value;
    for (DWORD number = 0; readValue(handle, number, value); ++number)
        entries.append({QString::fromWCharArray(value.name.data(), qsizetype(value.name.size())), textOf(value)});
    RegCloseKey(handle);
    return entries;
}

QList<StartupEntry> visibleFiles(const QString &folder)
{
    const QDir place(QDir(folder).absolutePath());
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(longPath(place.filePath(QStringLiteral("*"))).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return {};
    QList<StartupEntry> entries;
    do {
        constexpr DWORD leftOut = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
        if ((found.dwFileAttributes & leftOut) != 0)
            continue;
        const QString name = QString::fromWCharArray(found.cFileName);
        entries.append({name, place.filePath(name)});
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return entries;
}

QString commonStartupFolder()
{
    return QStringLiteral("C:/ProgramData/Microsoft/Windows/Start Menu/Programs/Startup");
}

} // namespace velmora

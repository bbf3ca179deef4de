#include "platform/live_registry.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

namespace velmora {

namespace {

QString wordsOf(LSTATUS status)
{
    return status == ERROR_SUCCESS ? QString() : qt_error_string(int(status));
}

REGSAM viewBits(RegistryView view)
{
    if (view == RegistryView::Own)
        return 0;
    return view == RegistryView::Bits32 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
}

/// An open key, or why it is not open.
class OpenKey {
public:
    OpenKey(HKEY parent, const QString &path, REGSAM access)
        : m_status(RegOpenKeyExW(parent, path.toStdWString().c_str(), 0, access, &m_key))
    {}
    ~OpenKey()
    {
        if (m_status == ERROR_SUCCESS)
            RegCloseKey(m_key);
    }
    Q_DISABLE_COPY_MOVE(OpenKey)

    [[nodiscard]] LSTATUS status() const { return m_status; }
    [[nodiscard]] HKEY get() const { return m_key; }

private:
    HKEY m_key = nullptr;
    LSTATUS m_status;
};

HKEY rootOf(const QString &path)
{
    const struct {
        QLatin1String name;
        HKEY key;
    } roots[] = {{QLatin1String("HKEY_CLASSES_ROOT"), HKEY_CLASSES_ROOT},
                 {QLatin1String("HKEY_CURRENT_USER"), HKEY_CURRENT_USER},
                 {QLatin1String("HKEY_LOCAL_MACHINE"), HKEY_LOCAL_MACHINE},
                 {QLatin1String("HKEY_USERS"), HKEY_USERS},
                 {QLatin1String("HKEY_CURRENT_CONFIG"), HKEY_CURRENT_CONFIG}};
    const QString first = path.section(u'\\', 0, 0);
    for (const auto &[name, key] : roots) {
        if (first.compare(name, Qt::CaseInsensitive) == 0)
            return key;
    }
    return nullptr;
}

QString belowRoot(const QString &path)
{
    return path.section(u'\\', 1);
}

/// Room for one value, which is made once for many.
struct ValueRoom {
    /// The longest name of a value that the registry allows, with its closing zero.
    std::vector<wchar_t> name = std::vector<wchar_t>(16384);
    std::vector<char> data = std::vector<char>(4096);
};

/// Reads the value of that number; nothing behind the last one.
std::optional<LiveValue> readValue(HKEY key, DWORD number, ValueRoom &room)
{
    for (;;) {
        auto size = static_cast<DWORD>(room.data.size());
        auto nameLength = static_cast<DWORD>(room.name.size());
        DWORD type = 0;
        const LSTATUS status = RegEnumValueW(key, number, room.name.data(), &nameLength, nullptr, &type,
                                             reinterpret_cast<BYTE *>(room.data.data()), &size);
        if (status == ERROR_MORE_DATA && size > room.data.size()) {
            room.data.resize(size);
            continue; // it may have grown since the last call, so this may happen again
        }
        if (status != ERROR_SUCCESS)
            return std::nullopt;
        return LiveValue{QString::fromWCharArray(room.name.data(), int(nameLength)), type,
                         QByteArray(room.data.data(), qsizetype(size))};
    }
}

/// How much a key has in it. Asked for once, so that no call is made for what is not there: of most keys that is more
/// than what is, and each call goes to another process under some systems.
struct KeyCounts {
    DWORD values = 0;
    DWORD subkeys = 0;
    DWORD largestValue = 0; ///< bytes
};

KeyCounts countsOf(HKEY key)
{
    KeyCounts counts;
    if (RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &counts.subkeys, nullptr, nullptr, &counts.values, nullptr,
                         &counts.largestValue, nullptr, nullptr) != ERROR_SUCCESS)
        return {MAXDWORD, MAXDWORD, 0}; // until there are no more
    return counts;
}

QStringList subkeysOf(HKEY key, DWORD count)
{
    constexpr DWORD longestName = 256; // of a key, with its closing zero
    QStringList names;
    wchar_t name[longestName];
    for (DWORD number = 0; number < count; ++number) {
        DWORD length = longestName;
        if (RegEnumKeyExW(key, number, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        names.append(QString::fromWCharArray(name, int(length)));
    }
    return names;
}

struct Reading {
    const LiveRegistry::Sink &sink;
    REGSAM access;
    qsizetype &unreadable;
    ValueRoom room = {};
    int depth = 0;
    bool isStopped = false;
};

void readKey(Reading &reading, HKEY key, const QString &path)
{
    constexpr int deepest = 512; // that the registry allows; links could lead on without end
    const KeyCounts counts = countsOf(key);
    if (counts.largestValue > reading.room.data.size())
        reading.room.data.resize(counts.largestValue);
    QList<LiveValue> values;
    for (DWORD number = 0; number < counts.values; ++number) {
        std::optional<LiveValue> value = readValue(key, number, reading.room);
        if (!value)
            break;
        values.append(std::move(*value));
    }
    reading.isStopped = !reading.sink(path, std::move(values));
    if (reading.isStopped || reading.depth >= deepest)
        return;
    ++reading.depth;
    const QStringList names = subkeysOf(key, counts.subkeys);
    for (const QString &name : names) {
        const OpenKey child(key, name, reading.access);
        if (child.status() == ERROR_SUCCESS)
            readKey(reading, child.get(), path + u'\\' + name);
        else
            ++reading.unreadable;
        if (reading.isStopped)
            break;
    }
    --reading.depth;
}

class WindowsLiveRegistry final : public LiveRegistry {
public:
    QString read(const LiveKey &key, const Sink &sink, qsizetype &unreadable) const override
    {
        const REGSAM access = KEY_READ | viewBits(key.view);
        const OpenKey open(rootOf(key.path), belowRoot(key.path), access);
        if (open.status() != ERROR_SUCCESS)
            return wordsOf(open.status());
        Reading reading{sink, access, unreadable};
        readKey(reading, open.get(), key.path);
        return {};
    }

    QString createKey(const LiveKey &key) override
    {
        HKEY made = nullptr;
        const LSTATUS status =
            RegCreateKeyExW(rootOf(key.path), belowRoot(key.path).toStdWString().c_str(), 0, nullptr,
                            REG_OPTION_NON_VOLATILE, KEY_WRITE | viewBits(key.view), nullptr, &made, nullptr);
        if (status == ERROR_SUCCESS)
            RegCloseKey(made);
        return wordsOf(status);
    }

    QString setValue(const LiveKey &key, const LiveValue &value) override
    {
        const OpenKey open(rootOf(key.path), belowRoot(key.path), KEY_SET_VALUE | viewBits(key.view));
        if (open.status() != ERROR_SUCCESS)
            return wordsOf(open.status());
        return wordsOf(RegSetValueExW(open.get(), value.name.toStdWString().c_str(), 0, value.type,
                                      reinterpret_cast<const BYTE *>(value.data.constData()),
                                      static_cast<DWORD>(value.data.size())));
    }

    QString removeValue(const LiveKey &key, const QString &name) override
    {
        const OpenKey open(rootOf(key.path), belowRoot(key.path), KEY_SET_VALUE | viewBits(key.view));
        const LSTATUS status =
            open.status() == ERROR_SUCCESS ? RegDeleteValueW(open.get(), name.toStdWString().c_str()) : open.status();
        return status == ERROR_FILE_NOT_FOUND ? QString() : wordsOf(status);
    }

    QString removeKey(const LiveKey &key) override
    {
        const QString path = belowRoot(key.path);
        if (path.isEmpty())
            return wordsOf(ERROR_ACCESS_DENIED);
        // What is in the key goes in the same view, which a removal of the whole tree by its path would not heed.
        const OpenKey open(rootOf(key.path), path,
                           DELETE | KEY_ENUMERATE_SUB_KEYS | KEY_QUERY_VALUE | KEY_SET_VALUE | viewBits(key.view));
        if (open.status() == ERROR_FILE_NOT_FOUND)
            return {};
        LSTATUS status = open.status() == ERROR_SUCCESS ? RegDeleteTreeW(open.get(), nullptr) : open.status();
        if (status == ERROR_SUCCESS)
            status = RegDeleteKeyExW(rootOf(key.path), path.toStdWString().c_str(), viewBits(key.view), 0);
        return wordsOf(status);
    }
};

} // namespace

LiveRegistry *LiveRegistry::system()
{
    static WindowsLiveRegistry registry;
    return &registry;
}

} // namespace velmora

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <vector>

namespace velmora {

/// The types of values, by their numbers in the registry; there may be others.
enum class RegistryType : quint32 {
    None = 0,
    String = 1,
    ExpandString = 2,
    Binary = 3,
    Dword = 4,
    DwordBigEndian = 5,
    Link = 6,
    MultiString = 7,
    ResourceList = 8,
    FullResourceDescriptor = 9,
    ResourceRequirements = 10,
    Qword = 11
};

/// "REG_SZ" and so on, "0x2a" for a number without a name.
[[nodiscard]] QString registryTypeName(RegistryType type);

struct RegistryValue {
    QString name; ///< empty for the default value
    RegistryType type = RegistryType::String;
    QByteArray data;         ///< as the registry keeps it: texts in UTF-16, lowest byte first, with their closing zeros
    bool isDeletion = false; ///< a file that is to delete the value

    /// Whether both have the same type and data, or both delete.
    [[nodiscard]] bool holdsSame(const RegistryValue &other) const
    {
        return isDeletion == other.isDeletion && type == other.type && data == other.data;
    }
};

struct RegistryKey {
    QString path;            ///< whole, with backslashes, from its root on
    bool isDeletion = false; ///< a file that is to delete the key before it writes what is in it
    std::vector<RegistryValue> values = {};
};

/// Keys in the order of their paths, each before what is in it, and values by their names: letter case does not
/// matter, and each is there once.
struct RegistryTree {
    std::vector<RegistryKey> keys;

    /// Brings keys and values into their order, and together what is there several times: what comes later counts.
    void settle();
};

/// The order of two paths in a tree: less than, equal to or greater than 0. A key stands before what is in it, and that
/// before its next sibling.
[[nodiscard]] int comparePaths(QStringView one, QStringView other);

/// The order of two names of values.
[[nodiscard]] int compareNames(QStringView one, QStringView other);

/// Whether `path` is `key` or lies in it.
[[nodiscard]] bool isWithin(QStringView path, QStringView key);

} // namespace velmora

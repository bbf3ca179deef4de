#pragma once

#include <QList>
#include <QStringList>

namespace velmora {

/// The entries of a value that is a list: its lines, or the folders of a search path, which are separated by ";" or
/// ":". Empty when the value is no list. A value may come from another system than this one, so that its entries decide
/// which separator it has.
[[nodiscard]] QStringList valueEntries(const QString &value);

/// One line of two lists side by side: an entry of both, or of one of them.
struct EntryRow {
    bool onLeft = false;
    bool onRight = false;
    QString text;

    friend bool operator==(const EntryRow &, const EntryRow &) = default;
};

/// Aligns two lists by their longest common subsequence (by dynamic programming, in time and space of the product of
/// their lengths); lists too long for that are aligned by what they begin and end with alike.
[[nodiscard]] QList<EntryRow> alignEntries(const QStringList &left, const QStringList &right);

} // namespace velmora

#pragma once

#include "filetypes/registry/engine/registry_tree.h"

#include <QStringList>

#include <optional>

namespace velmora {

/// The text of string data that is well formed: whole letters, one zero at its end and none before it.
[[nodiscard]] std::optional<QString> wholeText(const QByteArray &data);

/// The number of four bytes, lowest first. Precondition: they are there.
[[nodiscard]] quint32 dwordOf(const QByteArray &data);

/// A value as it is read by people: texts as they are, lists with one entry a line, numbers in both bases, other data
/// as hexadecimal digits with the letters that they stand for behind them, 16 bytes a line. Texts that are not well
/// formed are data.
[[nodiscard]] QString valueText(const RegistryValue &value);

/// The entries of a value that is a list: of a list of texts, or of a search path, separated by ";". Empty for others.
[[nodiscard]] QStringList listEntries(const RegistryValue &value);

/// How the entries of two lists differ, whatever their order and letter case.
struct EntryChanges {
    qsizetype added = 0;
    qsizetype removed = 0;
};

/// Nothing where one of the values is no list.
[[nodiscard]] std::optional<EntryChanges> entryChanges(const RegistryValue &left, const RegistryValue &right);

} // namespace velmora

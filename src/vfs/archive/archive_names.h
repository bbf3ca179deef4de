#pragma once

#include "vfs/archive/archive_entry.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace velmora {

/// Makes text of the names of one archive. Names that are valid UTF-8 are that; for the others one encoding is found
/// together, as for the lines of a text: they were written on one machine. What even that cannot read keeps its bytes,
/// as `nameFromNative` has them.
class ArchiveNames {
public:
    /// Every name that is no UTF-8 keeps its bytes.
    ArchiveNames() = default;
    /// `isZip`: names that tell nothing are in code page 437, as the format has it.
    ArchiveNames(const std::vector<ArchiveEntry> &entries, bool isZip);

    [[nodiscard]] QString text(const QByteArray &name) const;
    /// The encoding of the names that are no UTF-8; empty where all are.
    [[nodiscard]] const QByteArray &charset() const noexcept { return m_charset; }

private:
    QByteArray m_charset;
};

enum class ArchiveNameFault : quint8 { None, LeadsOut, Unfit };

/// The names of the folders on the way to an entry, and its own; empty for the root itself.
struct ArchiveNameParts {
    QStringList parts;
    ArchiveNameFault fault = ArchiveNameFault::None;
};

/// Takes the name of an entry apart at "/". "." and empty parts are passed over, except at the beginning: nothing
/// absolute gets in, neither "C:" nor anything with "..".
[[nodiscard]] ArchiveNameParts partsOfName(const QString &name);

} // namespace velmora

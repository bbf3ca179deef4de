#pragma once

#include "vfs/archive/archive_entry.h"
#include "vfs/archive/archive_source.h"

#include <QString>

#include <memory>
#include <vector>

namespace velmora {

/// One row of a listing.
struct ListedEntry {
    const ArchiveSource *archive = nullptr; ///< the one it is in: the outer one or one within
    qint32 node = 0;                        ///< of that archive's tree
    qint32 parent = -1;                     ///< a row; -1 at the top
    quint16 depth = 0;
    bool isFolder = false; ///< or an archive that stands as one
    qint64 size = 0;       ///< unpacked; of a folder that of all files in it, -1 where the archive does not tell
    qint64 packed = -1;    ///< the same as it is packed; -1 where the format does not tell
};

struct ArchiveTotals {
    qint64 files = 0; ///< links as well
    qint64 folders = 0;
    qint64 size = 0;
    qint64 packed = -1;
};

/// All that an archive holds as rows: folders before files, by the natural order of their names, and each before what
/// is in it. What archives within hold counts as rows and not in sizes. Immutable.
class ArchiveListing {
public:
    /// For a worker: an archive may hold a million entries.
    explicit ArchiveListing(std::shared_ptr<const ArchiveSource> source);

    [[nodiscard]] const ArchiveSource &source() const { return *m_source; }
    [[nodiscard]] const std::shared_ptr<const ArchiveSource> &sharedSource() const { return m_source; }

    [[nodiscard]] qint32 count() const { return qint32(m_rows.size()); }
    [[nodiscard]] const ListedEntry &row(qint32 row) const { return m_rows[std::size_t(row)]; }
    [[nodiscard]] const ArchiveNode &node(qint32 row) const;
    /// Null for a folder that no entry tells of.
    [[nodiscard]] const ArchiveEntry *entry(qint32 row) const;
    /// "/folder/name", as `ArchiveSource::find` of the outer archive takes it.
    [[nodiscard]] QString path(qint32 row) const;
    /// -1 where there is none.
    [[nodiscard]] qint32 find(const QString &path) const;
    [[nodiscard]] const ArchiveTotals &totals() const { return m_totals; }

private:
    void addFolder(const ArchiveSource &archive, qint32 folder, qint32 parent, quint16 depth);
    void addRow(const ArchiveSource &archive, qint32 node, qint32 parent, quint16 depth);
    void addTotals(qint32 row);

    std::shared_ptr<const ArchiveSource> m_source;
    std::vector<ListedEntry> m_rows;
    ArchiveTotals m_totals;
};

} // namespace velmora

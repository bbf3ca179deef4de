#pragma once

#include "core/iso_times.h"
#include "folder/engine/folder_snapshot.h"
#include "session/list/row_source.h"

namespace velmora {

/// The rows of two snapshots. Texts are made when they are asked for: there may be a million rows.
class FolderSnapshotRows final : public RowSource {
public:
    explicit FolderSnapshotRows(FolderSnapshotComparison comparison = {});

    [[nodiscard]] qsizetype count() const override { return qsizetype(m_found.rows.size()); }
    [[nodiscard]] KeyedRow row(qsizetype number) const override;
    [[nodiscard]] PairStatus status(qsizetype number) const override;
    [[nodiscard]] QString key(qsizetype number) const override { return m_found.path(number); }
    [[nodiscard]] bool holds(qsizetype number, const QString &word, int columns) const override;
    [[nodiscard]] QString text(qsizetype number, int column) const override;
    /// Sides by size, then by time.
    [[nodiscard]] bool isBefore(qsizetype one, qsizetype other, int column) const override;

    [[nodiscard]] const FolderSnapshotComparison &comparison() const { return m_found; }
    /// The row of that path; nothing when there is none. Logarithmic.
    [[nodiscard]] std::optional<qsizetype> find(const QString &path) const;

private:
    [[nodiscard]] QString sideText(qsizetype number, Side side) const;
    [[nodiscard]] QString noteText(qsizetype number) const;

    FolderSnapshotComparison m_found;
    mutable IsoTimes m_times; ///< rows are shown by one thread
};

} // namespace velmora

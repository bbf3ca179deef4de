#pragma once

#include "filetypes/mp3/engine/song_compare.h"
#include "session/list/row_source.h"

namespace velmora {

/// The fields of two songs as rows.
class SongRows final : public RowSource {
public:
    explicit SongRows(QList<SongRow> rows = {});
    [[nodiscard]] qsizetype count() const override { return m_rows.size(); }
    [[nodiscard]] KeyedRow row(qsizetype number) const override;

private:
    QList<SongRow> m_rows;
};

} // namespace velmora

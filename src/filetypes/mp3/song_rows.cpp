#include "filetypes/mp3/song_rows.h"

#include "filetypes/mp3/mp3_words.h"
#include "session/translate.h"

namespace velmora {

SongRows::SongRows(QList<SongRow> rows) : RowSource(Velmora::tr("Property")), m_rows(std::move(rows)) {}

KeyedRow SongRows::row(qsizetype number) const
{
    const SongRow &row = m_rows[number];
    return {fieldText(row.field), row.status, valueText(row, Side::Left), valueText(row, Side::Right), placeText(row)};
}

} // namespace velmora

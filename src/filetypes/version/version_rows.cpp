#include "filetypes/version/version_rows.h"

#include "filetypes/version/version_words.h"
#include "session/translate.h"

namespace velmora {

VersionRows::VersionRows(QList<VersionRow> rows) : RowSource(Velmora::tr("Property")), m_rows(std::move(rows)) {}

KeyedRow VersionRows::row(qsizetype number) const
{
    const VersionRow &row = m_rows[number];
    return {factText(row.fact, row.item), row.status, valueText(row, Side::Left), valueText(row, Side::Right),
            placeText(row)};
}

} // namespace velmora

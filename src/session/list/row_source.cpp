#include "session/list/row_source.h"

#include "session/translate.h"

namespace velmora {

QString statusText(PairStatus status)
{
    static constexpr const char *texts[] = {
        QT_TRANSLATE_NOOP("Velmora", "Same"), QT_TRANSLATE_NOOP("Velmora", "Changed"),
        QT_TRANSLATE_NOOP("Velmora", "Left only"), QT_TRANSLATE_NOOP("Velmora", "Right only")};
    return Velmora::tr(texts[std::size_t(status)]);
}

QStringList RowSource::headings() const
{
    return {Velmora::tr("Status"), m_keyHeading, Velmora::tr("Left"), Velmora::tr("Right")};
}

bool RowSource::holds(qsizetype number, const QString &word, int columns) const
{
    if (row(number).note.contains(word, Qt::CaseInsensitive))
        return true;
    for (int column = 0; column < columns; ++column) {
        if (text(number, column).contains(word, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

std::optional<Side> RowSource::side(int column) const
{
    if (column == Left)
        return Side::Left;
    return column == Right ? std::optional(Side::Right) : std::nullopt;
}

QString RowSource::text(qsizetype number, int column) const
{
    const KeyedRow whole = row(number);
    if (column == Status)
        return statusText(whole.status);
    if (column == Key)
        return whole.key;
    return column == Left ? whole.left : whole.right;
}

bool RowSource::isBefore(qsizetype one, qsizetype other, int column) const
{
    if (column == Status)
        return row(one).status < row(other).status;
    return QString::localeAwareCompare(text(one, column), text(other, column)) < 0;
}

} // namespace velmora

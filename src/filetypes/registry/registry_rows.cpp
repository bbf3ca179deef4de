#include "filetypes/registry/registry_rows.h"

#include "filetypes/registry/registry_words.h"
#include "session/translate.h"

namespace velmora {

RegistryRows::RegistryRows(std::shared_ptr<const RegistryComparison> comparison, qsizetype first, qsizetype end,
                           QString below)
    : RowSource(Velmora::tr("Value")),
      m_comparison(std::move(comparison)),
      m_first(first),
      m_end(end),
      m_below(std::move(below))
{}

RegistryRows::RegistryRows() : RegistryRows(nullptr, 0, 0, {}) {}

PairStatus RegistryRows::status(qsizetype number) const
{
    return at(number).isNoise ? PairStatus::Same : at(number).status;
}

QString RegistryRows::key(qsizetype number) const
{
    return rowName(*m_comparison, at(number), m_below);
}

KeyedRow RegistryRows::row(qsizetype number) const
{
    const RegistryRow &row = at(number);
    return {key(number), status(number), sideText(*m_comparison, row, Side::Left),
            sideText(*m_comparison, row, Side::Right), noteText(*m_comparison, row)};
}

QStringList RegistryRows::headings() const
{
    QStringList headings = RowSource::headings();
    headings.insert(Type, Velmora::tr("Type"));
    return headings;
}

std::optional<Side> RegistryRows::side(int column) const
{
    if (column == Left)
        return Side::Left;
    return column == Right ? std::optional(Side::Right) : std::nullopt;
}

QString RegistryRows::text(qsizetype number, int column) const
{
    const RegistryRow &row = at(number);
    switch (column) {
    case Status:
        return row.isNoise ? Velmora::tr("Noise") : statusText(row.status);
    case Key:
        return key(number);
    case Type:
        return typeText(*m_comparison, row);
    default:
        return sideText(*m_comparison, row, column == Left ? Side::Left : Side::Right);
    }
}

} // namespace velmora

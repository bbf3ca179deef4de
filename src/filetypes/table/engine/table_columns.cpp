#include "filetypes/table/engine/table_columns.h"

#include "filetypes/table/engine/value_lines.h"
#include "text/engine/index_groups.h"
#include "text/engine/line_interner.h"
#include "text/engine/side_reader.h"

#include <algorithm>

namespace velmora {

namespace {

/// Its fields, a line for each.
TextLines firstRow(const TableText &table)
{
    ValueLines names;
    if (table.isEmpty())
        return names.take();
    std::string buffer;
    for (FieldCursor cursor = table.fields(0); cursor.next();)
        names.append(fieldValue(cursor.field(), buffer));
    return names.take();
}

} // namespace

TableColumns TableColumns::named(const TableText &left, const TableText &right, const CancelFlag &cancel)
{
    return make(left, right, Pairing::ByPosition, cancel);
}

TableColumns TableColumns::pairedByName(const TableText &left, const TableText &right, const CancelFlag &cancel)
{
    return make(left, right, Pairing::ByName, cancel);
}

TableColumns TableColumns::make(const TableText &left, const TableText &right, Pairing pairing,
                                const CancelFlag &cancel)
{
    TableColumns columns;
    columns.m_names = firstRow(left.isEmpty() ? right : left);
    columns.m_leftCount = qint32(columns.m_names.count());
    if (!left.isEmpty() && !right.isEmpty())
        columns.join(firstRow(right), pairing, cancel);
    columns.m_count = qint32(columns.m_names.count());
    return columns;
}

void TableColumns::join(const TextLines &names, Pairing pairing, const CancelFlag &cancel)
{
    Progress silent;
    BothSides<Utf8Lines> sides = readSides(Utf8Lines(m_names), Utf8Lines(names), nullptr, nullptr, cancel, silent);
    CancelPoll poll(cancel);
    const InternedLines numbers = internLines(sides.left, sides.right, poll);
    if (poll.stopped())
        return;
    m_namesDiffer = numbers.left != numbers.right;
    if (!m_namesDiffer)
        return;
    if (pairing == Pairing::ByName)
        m_rightColumns = columnsByName(numbers);
    ValueLines joined;
    for (qsizetype column = 0; column < m_names.count(); ++column)
        joined.append(m_names.line(column));
    // Numbers are given out by first appearance, so that a new name has the next one.
    qint32 next = *std::max_element(numbers.left.begin(), numbers.left.end()) + 1;
    for (size_t k = 0; k < numbers.right.size(); ++k) {
        const bool isNew = arePairedByName() ? m_rightColumns[k] >= m_leftCount : numbers.right[k] == next;
        if (isNew) {
            joined.append(names.line(qsizetype(k)));
            ++next;
        }
    }
    m_names = joined.take();
}

std::vector<qint32> TableColumns::columnsByName(const InternedLines &numbers) const
{
    const IndexGroups columns(numbers.left, numbers.count - 1);
    std::vector<size_t> paired(size_t(numbers.count), 0);
    std::vector<qint32> result;
    result.reserve(numbers.right.size());
    qint32 next = m_leftCount;
    for (const qint32 number : numbers.right) {
        const size_t occurrence = paired[size_t(number)]++;
        const std::span<const qint32> alike = columns.of(number);
        result.push_back(occurrence < alike.size() ? alike[occurrence] : next++);
    }
    return result;
}

qint32 TableColumns::fieldOf(Side side, qint32 column) const noexcept
{
    if (!arePairedByName())
        return column;
    if (side == Side::Left)
        return column < m_leftCount ? column : -1;
    const auto field = std::find(m_rightColumns.begin(), m_rightColumns.end(), column);
    return field == m_rightColumns.end() ? -1 : qint32(field - m_rightColumns.begin());
}

TableColumns TableColumns::numbered(const TableText &left, const TableText &right, const CancelFlag &cancel)
{
    TableColumns columns;
    columns.m_count = std::max(left.mostFields(cancel), right.mostFields(cancel));
    return columns;
}

QString TableColumns::name(qint32 column) const
{
    return m_names.isEmpty() ? QStringLiteral("Col%1").arg(column + 1) : m_names.text(column);
}

qint32 TableColumns::find(const QString &name) const
{
    for (qint32 column = 0; column < m_count; ++column) {
        if (this->name(column) == name)
            return column;
    }
    return -1;
}

} // namespace velmora

#include "filetypes/table/engine/table_columns.h"

#include "filetypes/table/engine/value_lines.h"
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
    TableColumns columns;
    columns.m_names = firstRow(left.isEmpty() ? right : left);
    if (!left.isEmpty() && !right.isEmpty())
        columns.join(firstRow(right), cancel);
    columns.m_count = qint32(columns.m_names.count());
    return columns;
}

void TableColumns::join(const TextLines &names, const CancelFlag &cancel)
{
    Progress silent;
    BothSides<Utf8Lines> sides = readSides(Utf8Lines(m_names), Utf8Lines(names), nullptr, nullptr, cancel, silent);
    CancelPoll poll(cancel);
    const InternedLines numbers = internLines(sides.left, sides.right, poll);
    if (poll.stopped())
        return;
    m_namesDiffer = numbers.left != numbers.right;
    // Numbers are given out by first appearance, so that a new name has the next one.
    const auto most = std::max_element(numbers.left.begin(), numbers.left.end());
    qint32 next = most == numbers.left.end() ? 0 : *most + 1;
    if (next == numbers.count)
        return;
    ValueLines joined;
    for (qsizetype column = 0; column < m_names.count(); ++column)
        joined.append(m_names.line(column));
    for (size_t k = 0; k < numbers.right.size(); ++k) {
        if (numbers.right[k] == next) {
            joined.append(names.line(qsizetype(k)));
            ++next;
        }
    }
    m_names = joined.take();
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

#include "core/value_entries.h"

#include <algorithm>
#include <vector>

namespace velmora {

namespace {

/// The most cells of the table by which lists are aligned.
constexpr qsizetype largestTable = 4'000'000;

bool looksLikeWindowsEntry(const QString &entry)
{
    const bool onDrive = entry.size() >= 2 && entry[0].isLetter() && entry[1] == u':';
    return entry.isEmpty() || onDrive || entry.startsWith(u'\\') || entry.startsWith(u'%') || entry.startsWith(u'.');
}

bool looksLikeUnixEntry(const QString &entry)
{
    return entry.isEmpty() || entry.startsWith(u'/') || entry.startsWith(u'~') || entry.startsWith(u'$') ||
           entry.startsWith(u'.');
}

bool areAll(const QStringList &entries, bool (*look)(const QString &))
{
    const bool someText = std::any_of(entries.begin(), entries.end(), [](const QString &e) { return !e.isEmpty(); });
    return entries.size() > 1 && someText && std::all_of(entries.begin(), entries.end(), look);
}

QList<EntryRow> alignByTable(const QStringList &left, const QStringList &right)
{
    const auto rows = std::size_t(left.size());
    const auto columns = std::size_t(right.size());
    // The length of the longest common subsequence of what is left of both lists from an entry on.
    std::vector<quint32> table((rows + 1) * (columns + 1));
    const auto cell = [&](std::size_t row, std::size_t column) -> quint32 & {
        return table[row * (columns + 1) + column];
    };
    for (std::size_t row = rows; row-- > 0;) {
        for (std::size_t column = columns; column-- > 0;) {
            cell(row, column) = left[qsizetype(row)] == right[qsizetype(column)]
                                    ? cell(row + 1, column + 1) + 1
                                    : std::max(cell(row + 1, column), cell(row, column + 1));
        }
    }
    QList<EntryRow> result;
    std::size_t row = 0;
    std::size_t column = 0;
    while (row < rows && column < columns) {
        if (left[qsizetype(row)] == right[qsizetype(column)]) {
            result.append({true, true, left[qsizetype(row)]});
            ++row;
            ++column;
        } else if (cell(row + 1, column) >= cell(row, column + 1)) {
            result.append({true, false, left[qsizetype(row++)]});
        } else {
            result.append({false, true, right[qsizetype(column++)]});
        }
    }
    while (row < rows)
        result.append({true, false, left[qsizetype(row++)]});
    while (column < columns)
        result.append({false, true, right[qsizetype(column++)]});
    return result;
}

} // namespace

QStringList valueEntries(const QString &value)
{
    if (value.contains(u'\n'))
        return value.split(u'\n');
    const QStringList bySemicolon = value.split(u';');
    if (areAll(bySemicolon, looksLikeWindowsEntry))
        return bySemicolon;
    const QStringList byColon = value.split(u':');
    return areAll(byColon, looksLikeUnixEntry) ? byColon : QStringList();
}

QList<EntryRow> alignEntries(const QStringList &left, const QStringList &right)
{
    const qsizetype shorter = std::min(left.size(), right.size());
    qsizetype head = 0;
    while (head < shorter && left[head] == right[head])
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head && left[left.size() - 1 - tail] == right[right.size() - 1 - tail])
        ++tail;

    QList<EntryRow> rows;
    for (const QString &entry : left.first(head))
        rows.append({true, true, entry});
    const QStringList leftMiddle = left.mid(head, left.size() - head - tail);
    const QStringList rightMiddle = right.mid(head, right.size() - head - tail);
    if (leftMiddle.isEmpty() || rightMiddle.size() < largestTable / leftMiddle.size()) {
        rows.append(alignByTable(leftMiddle, rightMiddle));
    } else {
        for (const QString &entry : leftMiddle)
            rows.append({true, false, entry});
        for (const QString &entry : rightMiddle)
            rows.append({false, true, entry});
    }
    for (const QString &entry : left.last(tail))
        rows.append({true, true, entry});
    return rows;
}

} // namespace velmora

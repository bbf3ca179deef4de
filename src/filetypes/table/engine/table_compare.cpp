#include "filetypes/table/engine/table_compare.h"

#include "core/utf8_text.h"
#include "text/engine/sequence_matcher.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <vector>

namespace velmora {

namespace {

constexpr QChar quote(u'"');
constexpr QChar lineFeed(u'\n');
constexpr QChar carriageReturn(u'\r');
constexpr QChar fieldSeparator(0x1F); ///< between the fields of a row that is matched as a whole

QStringList headersOf(const ParsedTable &left, const ParsedTable &right, bool hasHeader)
{
    QStringList headers;
    if (!hasHeader) {
        qsizetype columns = 0;
        for (const ParsedTable *table : {&left, &right}) {
            for (const QStringList &row : *table)
                columns = std::max(columns, row.size());
        }
        for (qsizetype column = 1; column <= columns; ++column)
            headers.append(QStringLiteral("Col%1").arg(column));
        return headers;
    }
    if (!left.isEmpty())
        headers = left.first();
    if (right.isEmpty())
        return headers;
    if (headers.isEmpty())
        return right.first();
    QSet<QString> known(headers.cbegin(), headers.cend());
    for (const QString &name : right.first()) {
        if (!known.contains(name)) {
            known.insert(name);
            headers.append(name);
        }
    }
    return headers;
}

class Comparison {
public:
    Comparison(const ParsedTable &left, const ParsedTable &right, bool hasHeader, const QList<ColumnRule> &rules)
        : m_left(left), m_right(right), m_rules(rules)
    {
        m_result.headers = headersOf(left, right, hasHeader);
        m_leftStart = hasHeader && !left.isEmpty() ? 1 : 0;
        m_rightStart = hasHeader && !right.isEmpty() ? 1 : 0;
        m_rules.resize(std::min(m_rules.size(), columns()));
        m_hasRules =
            std::any_of(m_rules.begin(), m_rules.end(), [](const ColumnRule &rule) { return !rule.isExact(); });
    }

    [[nodiscard]] TableDiffResult byKeys(const QList<qint32> &columns);
    [[nodiscard]] TableDiffResult byOrder();
    [[nodiscard]] qsizetype columns() const { return m_result.headers.size(); }

private:
    struct Keys {
        QList<QStringList> order; ///< distinct, by first appearance
        QHash<QStringList, qint32> lastRows;
    };

    [[nodiscard]] Keys keysOf(const ParsedTable &table, qsizetype start, const QList<qint32> &columns) const;
    [[nodiscard]] QString formOf(const QString &value, qsizetype column) const;
    [[nodiscard]] QStringList joinedRows(const ParsedTable &table, qsizetype start) const;
    [[nodiscard]] QString joinedForms(const QStringList &row) const;
    void emitPair(qsizetype left, qsizetype right, bool anchored);
    void emitLeft(qsizetype row);
    void emitRight(qsizetype row);

    const ParsedTable &m_left;
    const ParsedTable &m_right;
    QList<ColumnRule> m_rules;
    bool m_hasRules = false;   ///< any but exact ones
    qsizetype m_leftStart = 0; ///< the first row of data
    qsizetype m_rightStart = 0;
    TableDiffResult m_result;
};

QString Comparison::formOf(const QString &value, qsizetype column) const
{
    std::string buffer;
    return textOfUtf8(valueForm(value.toStdString(), m_rules.value(column), buffer));
}

Comparison::Keys Comparison::keysOf(const ParsedTable &table, qsizetype start, const QList<qint32> &columns) const
{
    Keys keys;
    for (qsizetype row = start; row < table.size(); ++row) {
        QStringList key;
        for (const qint32 column : columns)
            key.append(formOf(table[row].value(column), column));
        if (!keys.lastRows.contains(key))
            keys.order.append(key);
        keys.lastRows.insert(key, qint32(row));
    }
    return keys;
}

TableDiffResult Comparison::byKeys(const QList<qint32> &columns)
{
    const Keys left = keysOf(m_left, m_leftStart, columns);
    const Keys right = keysOf(m_right, m_rightStart, columns);
    for (const QStringList &key : left.order) {
        if (right.lastRows.contains(key))
            emitPair(left.lastRows.value(key), right.lastRows.value(key), true);
        else
            emitLeft(left.lastRows.value(key));
    }
    for (const QStringList &key : right.order) {
        if (!left.lastRows.contains(key))
            emitRight(right.lastRows.value(key));
    }
    return m_result;
}

QString Comparison::joinedForms(const QStringList &row) const
{
    QStringList forms;
    std::string buffer;
    for (qsizetype column = 0; column < columns(); ++column)
        forms.append(textOfUtf8(roughForm(row.value(column).toStdString(), m_rules.value(column), buffer)));
    while (!forms.isEmpty() && forms.last().isEmpty())
        forms.removeLast();
    return forms.isEmpty() ? QString() : forms.join(fieldSeparator) + fieldSeparator;
}

QStringList Comparison::joinedRows(const ParsedTable &table, qsizetype start) const
{
    QStringList rows;
    for (qsizetype row = start; row < table.size(); ++row)
        rows.append(m_hasRules ? joinedForms(table[row]) : table[row].join(fieldSeparator));
    return rows;
}

TableDiffResult Comparison::byOrder()
{
    QHash<QString, qint32> numbers;
    const auto interned = [&numbers](const QStringList &rows) {
        std::vector<qint32> sequence;
        for (const QString &row : rows)
            sequence.push_back(*numbers.emplace(row, numbers.value(row, qint32(numbers.size()))));
        return sequence;
    };
    const std::vector<qint32> left = interned(joinedRows(m_left, m_leftStart));
    const std::vector<qint32> right = interned(joinedRows(m_right, m_rightStart));
    qsizetype l = m_leftStart;
    qsizetype r = m_rightStart;
    const auto emitUntil = [&](qsizetype leftEnd, qsizetype rightEnd) {
        while (l < leftEnd && r < rightEnd)
            emitPair(l++, r++, false);
        while (l < leftEnd)
            emitLeft(l++);
        while (r < rightEnd)
            emitRight(r++);
    };
    for (const MatchPair &anchor : matchSequences(left, right, lineTableLimit)) {
        emitUntil(anchor.i + m_leftStart, anchor.j + m_rightStart);
        emitPair(l++, r++, true);
    }
    emitUntil(m_left.size(), m_right.size());
    return m_result;
}

void Comparison::emitPair(qsizetype left, qsizetype right, bool anchored)
{
    TableRowDiff row{TableRowStatus::Same, qint32(left), qint32(right), {}};
    bool same = anchored || m_hasRules;
    for (qsizetype column = 0; column < columns(); ++column) {
        const QString leftText = m_left[left].value(column);
        const QString rightText = m_right[right].value(column);
        const bool equal = countAsSame(leftText.toStdString(), rightText.toStdString(), m_rules.value(column));
        same = same && equal;
        row.cells.append({equal ? TableCellStatus::Same : TableCellStatus::Modified, leftText, rightText});
    }
    row.status = same ? TableRowStatus::Same : TableRowStatus::Modified;
    ++(same ? m_result.sameCount : m_result.modifiedCount);
    m_result.rows.append(row);
}

void Comparison::emitLeft(qsizetype row)
{
    TableRowDiff diff{TableRowStatus::LeftOnly, qint32(row), -1, {}};
    for (qsizetype column = 0; column < columns(); ++column)
        diff.cells.append({TableCellStatus::LeftOnly, m_left[row].value(column), {}});
    ++m_result.leftOnlyCount;
    m_result.rows.append(diff);
}

void Comparison::emitRight(qsizetype row)
{
    TableRowDiff diff{TableRowStatus::RightOnly, -1, qint32(row), {}};
    for (qsizetype column = 0; column < columns(); ++column)
        diff.cells.append({TableCellStatus::RightOnly, {}, m_right[row].value(column)});
    ++m_result.rightOnlyCount;
    m_result.rows.append(diff);
}

} // namespace

ParsedTable parseDelimitedText(const QString &text, QChar delimiter)
{
    ParsedTable table;
    QStringList row;
    QString field;
    bool quoted = false;
    const auto endField = [&row, &field] { row.append(std::exchange(field, {})); };
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar character = text[at];
        if (quoted && character == quote && at + 1 < text.size() && text[at + 1] == quote) {
            field.append(quote);
            ++at;
        } else if (character == quote) {
            quoted = !quoted;
        } else if (quoted) {
            field.append(character);
        } else if (character == delimiter) {
            endField();
        } else if (character == lineFeed) {
            endField();
            table.append(std::exchange(row, {}));
        } else if (character != carriageReturn) {
            field.append(character);
        }
    }
    if (!field.isEmpty() || !row.isEmpty()) {
        endField();
        table.append(row);
    }
    return table;
}

TableDiffResult compareTables(const ParsedTable &left, const ParsedTable &right, qint32 keyColumn, bool hasHeader)
{
    return compareTables(left, right, {keyColumn}, hasHeader, {});
}

TableDiffResult compareTables(const ParsedTable &left, const ParsedTable &right, const QList<qint32> &keyColumns,
                              bool hasHeader, const QList<ColumnRule> &rules)
{
    if (left.isEmpty() && right.isEmpty())
        return {};
    Comparison comparison(left, right, hasHeader, rules);
    QList<qint32> keys;
    std::copy_if(keyColumns.begin(), keyColumns.end(), std::back_inserter(keys),
                 [&](qint32 key) { return key >= 0 && key < comparison.columns(); });
    return keys.isEmpty() ? comparison.byOrder() : comparison.byKeys(keys);
}

} // namespace velmora

#include "text_engine/plain_engine.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <cstdlib>

namespace velmora::plain {

std::vector<MatchPair> tableMatch(const std::vector<qint32> &a, const std::vector<qint32> &b)
{
    const size_t n = a.size();
    const size_t m = b.size();
    std::vector<std::vector<qint32>> table(n + 1, std::vector<qint32>(m + 1, 0));
    for (size_t i = 1; i <= n; ++i) {
        for (size_t j = 1; j <= m; ++j) {
            table[i][j] = a[i - 1] == b[j - 1] ? table[i - 1][j - 1] + 1 : std::max(table[i - 1][j], table[i][j - 1]);
        }
    }
    std::vector<MatchPair> pairs;
    size_t i = n;
    size_t j = m;
    while (i >= 1 && j >= 1) {
        if (a[i - 1] == b[j - 1]) {
            pairs.push_back({qint32(i - 1), qint32(j - 1)});
            --i;
            --j;
        } else if (table[i - 1][j] <= table[i][j - 1]) {
            --j;
        } else {
            --i;
        }
    }
    std::reverse(pairs.begin(), pairs.end());
    return pairs;
}

namespace {

/// The longest common block of what lies between `from` and `to`, of several the first in `a` and then in `b`; and the
/// same before and behind it.
void matchBetween(const std::vector<qint32> &a, const std::vector<qint32> &b, MatchPair from, MatchPair to,
                  std::vector<MatchPair> &pairs)
{
    MatchPair best = from;
    qint32 length = 0;
    for (qint32 i = from.i; i < to.i; ++i) {
        for (qint32 j = from.j; j < to.j; ++j) {
            qint32 same = 0;
            while (i + same < to.i && j + same < to.j && a[size_t(i + same)] == b[size_t(j + same)])
                ++same;
            if (same > length) {
                best = {i, j};
                length = same;
            }
        }
    }
    if (length == 0)
        return;
    matchBetween(a, b, from, best, pairs);
    for (qint32 k = 0; k < length; ++k)
        pairs.push_back({best.i + k, best.j + k});
    matchBetween(a, b, {best.i + length, best.j + length}, to, pairs);
}

} // namespace

std::vector<MatchPair> blockMatch(const std::vector<qint32> &a, const std::vector<qint32> &b)
{
    std::vector<MatchPair> pairs;
    matchBetween(a, b, {0, 0}, {qint32(a.size()), qint32(b.size())}, pairs);
    return pairs;
}

std::vector<MatchPair> match(const std::vector<qint32> &a, const std::vector<qint32> &b, qint64 tableLimit)
{
    return qint64(a.size()) * qint64(b.size()) <= tableLimit ? tableMatch(a, b) : blockMatch(a, b);
}

double similarity(const QString &left, const QString &right)
{
    if (left == right)
        return 1.0;
    const qsizetype shorter = std::min(left.size(), right.size());
    qsizetype prefix = 0;
    while (prefix < shorter && left[prefix] == right[prefix])
        ++prefix;
    qsizetype suffix = 0;
    while (suffix < shorter - prefix && left[left.size() - 1 - suffix] == right[right.size() - 1 - suffix])
        ++suffix;
    return double(prefix + suffix) / double(std::max(left.size(), right.size()));
}

QString key(QString line, const TextSessionOptions &options)
{
    // A letter at the other end keeps the white space there.
    if (!options.importantLeadingWhitespace)
        line = (line + u'x').trimmed().chopped(1);
    if (!options.importantTrailingWhitespace)
        line = (u'x' + line).trimmed().mid(1);
    if (!options.importantEmbeddedWhitespace)
        line = (line + u'x').simplified().chopped(1);
    if (!options.importantCharacterCase)
        line = line.toLower();
    if (!options.importantEverythingElse)
        line = line.simplified();
    return line;
}

bool unimportant(const QString &line, const TextSessionOptions &options)
{
    for (const QString &entry : options.unimportantText) {
        const QString text = entry.trimmed();
        if (text.isEmpty())
            continue;
        if (line.contains(text))
            return true;
        const QRegularExpression expression(text);
        if (expression.isValid() && expression.match(line).hasMatch())
            return true;
    }
    return false;
}

namespace {

/// `i` and `j` may be -1 for no line.
DiffLine rowOf(DiffLineKind kind, const QStringList &left, qsizetype i, const QStringList &right, qsizetype j)
{
    DiffLine row;
    row.kind = kind;
    row.leftLine = i < 0 ? -1 : qint32(i + 1);
    row.rightLine = j < 0 ? -1 : qint32(j + 1);
    row.leftText = left.value(i);
    row.rightText = right.value(j);
    return row;
}

class Aligner {
public:
    Aligner(const QStringList &left, const QStringList &right, const AlignParams &params)
        : m_left(left), m_right(right), m_params(params)
    {}

    QList<DiffLine> run(const std::vector<MatchPair> &anchors)
    {
        for (const MatchPair &anchor : anchors) {
            fill(anchor.i, anchor.j);
            emitRow(Equal, m_i++, m_j++);
            m_offset = anchor.j - anchor.i;
        }
        fill(m_left.size(), m_right.size());
        return m_rows;
    }

private:
    bool pairs(qsizetype i, qsizetype c) const
    {
        if (similarity(m_left[i], m_right[c]) < m_params.threshold)
            return false;
        const qsizetype drift = (c - i) - m_offset;
        return m_params.skewTolerance > 0 ? std::abs(drift) <= m_params.skewTolerance : drift == 0;
    }

    void fill(qsizetype aEnd, qsizetype bEnd)
    {
        while (m_i < aEnd && m_j < bEnd) {
            const qsizetype width = std::max(m_params.lookahead, std::min(m_params.skewTolerance, 512));
            qsizetype c = m_j;
            bool found = pairs(m_i, c);
            while (!found && c + 1 < std::min(bEnd, m_j + 1 + width))
                found = pairs(m_i, ++c);
            if (found) {
                while (m_j < c)
                    emitRow(Added, -1, m_j++);
                emitRow(Modified, m_i++, m_j++);
            } else {
                emitRow(Removed, m_i++, -1);
                emitRow(Added, -1, m_j++);
            }
        }
        while (m_j < bEnd)
            emitRow(Added, -1, m_j++);
        while (m_i < aEnd)
            emitRow(Removed, m_i++, -1);
    }

    void emitRow(DiffLineKind kind, qsizetype i, qsizetype j) { m_rows.append(rowOf(kind, m_left, i, m_right, j)); }

    const QStringList &m_left;
    const QStringList &m_right;
    const AlignParams &m_params;
    QList<DiffLine> m_rows;
    qsizetype m_i = 0;
    qsizetype m_j = 0;
    qsizetype m_offset = 0;
};

} // namespace

QList<DiffLine> aligned(const QStringList &left, const QStringList &right, const AlignParams &params, qint64 tableLimit)
{
    QHash<QString, qint32> ids;
    const auto intern = [&ids](const QStringList &lines) {
        std::vector<qint32> result;
        for (const QString &line : lines)
            result.push_back(ids.contains(line) ? ids.value(line) : *ids.insert(line, qint32(ids.size())));
        return result;
    };
    const std::vector<qint32> a = intern(left);
    const std::vector<qint32> b = intern(right);
    return Aligner(left, right, params).run(match(a, b, tableLimit));
}

QList<DiffLine> byIndex(const QStringList &left, const QStringList &right)
{
    QList<DiffLine> rows;
    for (qsizetype k = 0; k < std::max(left.size(), right.size()); ++k) {
        if (k >= left.size())
            rows.append(rowOf(Added, left, -1, right, k));
        else if (k >= right.size())
            rows.append(rowOf(Removed, left, k, right, -1));
        else
            rows.append(rowOf(left[k] == right[k] ? Equal : Modified, left, k, right, k));
    }
    return rows;
}

namespace {

struct Side {
    QStringList keys;
    QList<qint32> indices;
};

Side normalize(const QStringList &lines, const TextSessionOptions &options)
{
    Side side;
    for (qsizetype index = 0; index < lines.size(); ++index) {
        QString line = lines[index];
        if (options.ignoreBlankLines && line.trimmed().isEmpty())
            continue;
        if (line.endsWith(u'\r'))
            line.chop(1);
        side.indices.append(qint32(index));
        side.keys.append(unimportant(line, options) ? QString() : key(line, options));
    }
    return side;
}

void mapBack(qint32 &number, QString &text, const Side &side, const QStringList &lines,
             const TextSessionOptions &options)
{
    if (number <= 0)
        return;
    number = side.indices[number - 1] + 1;
    text = lines[number - 1];
    if (!options.compareLineEndings && text.endsWith(u'\r'))
        text.chop(1);
}

} // namespace

QList<DiffLine> compare(const QStringList &left, const QStringList &right, const TextSessionOptions &options,
                        qint64 tableLimit)
{
    const bool allImportant = options.importantLeadingWhitespace && options.importantEmbeddedWhitespace &&
                              options.importantTrailingWhitespace && options.importantCharacterCase &&
                              options.importantEverythingElse && options.compareLineEndings;
    const bool normalizing = options.ignoreBlankLines || !options.unimportantText.isEmpty() || !allImportant;
    const AlignParams params = alignParams(options);

    QList<DiffLine> rows;
    if (params.mode != 3 && !normalizing) {
        rows = aligned(left, right, params, tableLimit);
    } else {
        const Side leftSide = normalize(left, options);
        const Side rightSide = normalize(right, options);
        rows = params.mode == 3 ? byIndex(leftSide.keys, rightSide.keys)
                                : aligned(leftSide.keys, rightSide.keys, params, tableLimit);
        for (DiffLine &row : rows) {
            mapBack(row.leftLine, row.leftText, leftSide, left, options);
            mapBack(row.rightLine, row.rightText, rightSide, right, options);
        }
    }
    if (!options.orphanLinesAlwaysImportant) {
        for (DiffLine &row : rows) {
            if (row.kind == Removed && unimportant(row.leftText, options)) {
                row.kind = Equal;
                row.rightText = row.leftText;
            } else if (row.kind == Added && unimportant(row.rightText, options)) {
                row.kind = Equal;
                row.leftText = row.rightText;
            }
        }
    }
    return rows;
}

QList<CharRange> intraLine(const QString &a, const QString &b, qint64 tableLimit)
{
    const auto units = [](const QString &text) {
        return std::vector<qint32>(text.utf16(), text.utf16() + text.size());
    };
    std::vector<bool> matched(size_t(b.size()), false);
    for (const MatchPair &pair : match(units(a), units(b), tableLimit))
        matched[size_t(pair.j)] = true;
    QList<CharRange> ranges;
    for (qsizetype j = 0; j < b.size(); ++j) {
        if (matched[size_t(j)])
            continue;
        if (ranges.isEmpty() || ranges.back().start + ranges.back().length != j)
            ranges.append({qint32(j), 0});
        ++ranges.back().length;
    }
    return ranges;
}

} // namespace velmora::plain

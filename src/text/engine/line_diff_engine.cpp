#include "text/engine/line_diff_engine.h"

#include "settings/options/text_session_options.h"
#include "text/engine/sequence_matcher.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <cstdlib>
#include <map>

namespace velmora {

namespace {

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

struct BlockSearch {
    const std::vector<qint32> &a;
    std::map<qint32, std::vector<qint32>> positions;
    std::vector<MatchPair> pairs;

    void visit(qint32 alo, qint32 ahi, qint32 blo, qint32 bhi)
    {
        while (alo < ahi && blo < bhi) {
            qint32 bestI = 0;
            qint32 bestJ = 0;
            qint32 best = 0;
            std::map<qint32, qint32> previous;
            for (qint32 i = alo; i < ahi; ++i) {
                std::map<qint32, qint32> current;
                const auto found = positions.find(a[size_t(i)]);
                if (found != positions.end()) {
                    for (const qint32 j : found->second) {
                        if (j < blo)
                            continue;
                        if (j >= bhi)
                            break;
                        const auto before = previous.find(j - 1);
                        const qint32 k = (before == previous.end() ? 0 : before->second) + 1;
                        current[j] = k;
                        if (k > best) {
                            bestI = i - k + 1;
                            bestJ = j - k + 1;
                            best = k;
                        }
                    }
                }
                previous = std::move(current);
            }
            if (best == 0)
                return;
            if (bestI > alo && bestJ > blo)
                visit(alo, bestI, blo, bestJ);
            for (qint32 k = 0; k < best; ++k)
                pairs.push_back({bestI + k, bestJ + k});
            alo = bestI + best;
            blo = bestJ + best;
        }
    }
};

std::vector<MatchPair> blockMatch(const std::vector<qint32> &a, const std::vector<qint32> &b)
{
    BlockSearch search{a, {}, {}};
    for (size_t j = 0; j < b.size(); ++j)
        search.positions[b[j]].push_back(qint32(j));
    search.visit(0, qint32(a.size()), 0, qint32(b.size()));
    return search.pairs;
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
    if (!options.importantLeadingWhitespace) {
        while (!line.isEmpty() && line.front().isSpace())
            line.remove(0, 1);
    }
    if (!options.importantTrailingWhitespace) {
        while (!line.isEmpty() && line.back().isSpace())
            line.chop(1);
    }
    if (!options.importantEmbeddedWhitespace) {
        QString rebuilt;
        bool space = false;
        for (const QChar unit : line) {
            if (unit.isSpace()) {
                space = true;
                continue;
            }
            if (space && !rebuilt.isEmpty())
                rebuilt.append(u' ');
            space = false;
            rebuilt.append(unit);
        }
        if (space && !rebuilt.isEmpty())
            rebuilt.append(u' ');
        line = rebuilt;
    }
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

    void emitRow(DiffLineKind kind, qsizetype i, qsizetype j)
    {
        DiffLine row;
        row.kind = kind;
        if (i >= 0) {
            row.leftText = m_left[i];
            row.leftLine = qint32(i + 1);
        }
        if (j >= 0) {
            row.rightText = m_right[j];
            row.rightLine = qint32(j + 1);
        }
        m_rows.append(row);
    }

    const QStringList &m_left;
    const QStringList &m_right;
    const AlignParams &m_params;
    QList<DiffLine> m_rows;
    qsizetype m_i = 0;
    qsizetype m_j = 0;
    qsizetype m_offset = 0;
};

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
        DiffLine row;
        if (k < left.size()) {
            row.leftText = left[k];
            row.leftLine = qint32(k + 1);
        }
        if (k < right.size()) {
            row.rightText = right[k];
            row.rightLine = qint32(k + 1);
        }
        if (k >= left.size())
            row.kind = Added;
        else if (k >= right.size())
            row.kind = Removed;
        else
            row.kind = left[k] == right[k] ? Equal : Modified;
        rows.append(row);
    }
    return rows;
}

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
        std::vector<qint32> result;
        for (const QChar unit : text)
            result.push_back(unit.unicode());
        return result;
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

} // namespace

AlignParams alignParams(const TextSessionOptions &options)
{
    const bool myers = options.alignAlgorithm == qint32(AlignAlgorithm::Myers);
    const bool patience = options.alignAlgorithm == qint32(AlignAlgorithm::Patience);
    AlignParams params;
    params.mode = options.alignAlgorithm;
    params.threshold = options.neverAlignDifferences || myers ? 1.0 : patience ? 0.5 : 0.35;
    params.lookahead = !myers && options.useNearbyMatches ? 3 : 0;
    params.skewTolerance = std::max(options.curvatureTolerance, 0);
    return params;
}

QList<DiffLine> diffLinesAligned(const QStringList &left, const QStringList &right, const AlignParams &params,
                                 const CancelFlag &)
{
    return aligned(left, right, params, lineTableLimit);
}

QList<DiffLine> diffLinesByIndex(const QStringList &left, const QStringList &right)
{
    return byIndex(left, right);
}

QList<DiffLine> compareTextLines(const QStringList &left, const QStringList &right, const TextSessionOptions &options,
                                 const CancelFlag &)
{
    return compare(left, right, options, lineTableLimit);
}

static QStringList textsOf(const TextLines &lines)
{
    QStringList texts;
    for (qsizetype index = 0; index < lines.count(); ++index)
        texts.append(lines.text(index));
    return texts;
}

QList<AlignedRow> compareTexts(const TextLines &left, const TextLines &right, const TextSessionOptions &options,
                               const CancelFlag &, Progress &)
{
    QList<AlignedRow> rows;
    for (const DiffLine &row : compare(textsOf(left), textsOf(right), options, lineTableLimit))
        rows.append({row.kind, row.leftLine, row.rightLine});
    return rows;
}

static QString textAt(const TextLines &lines, qint32 number, const TextSessionOptions &options)
{
    if (number < 1 || number > lines.count())
        return {};
    QString text = lines.text(number - 1);
    if (!options.compareLineEndings && text.endsWith(u'\r'))
        text.chop(1);
    return text;
}

QList<DiffLine> withTexts(const QList<AlignedRow> &rows, const TextLines &left, const TextLines &right,
                          const TextSessionOptions &options)
{
    QList<DiffLine> result;
    result.reserve(rows.size());
    for (const AlignedRow &row : rows) {
        DiffLine line{row.kind, textAt(left, row.leftLine, options), textAt(right, row.rightLine, options),
                      row.leftLine, row.rightLine};
        if (row.kind == Equal && row.leftLine < 0)
            line.leftText = line.rightText;
        else if (row.kind == Equal && row.rightLine < 0)
            line.rightText = line.leftText;
        result.append(line);
    }
    return result;
}

QList<CharRange> intraLineChanges(QStringView a, QStringView b, const CancelFlag &)
{
    return intraLine(a.toString(), b.toString(), characterTableLimit);
}

} // namespace velmora

#include "merge/model/merge_rows.h"

#include "text/engine/line_diff_engine.h"

#include <QStringList>

#include <algorithm>

namespace velmora {

namespace {

// Pairing similar lines takes time in proportion to the square of a part; beyond this nobody looks at pairs.
constexpr qsizetype linesPaired = 2000;

qint32 &lineOf(MergeRow &row, MergeSource source)
{
    return row.lines[std::size_t(source)];
}

QStringList textsOf(const TextLines &text, const LineRange &lines)
{
    QStringList list;
    list.reserve(lines.count);
    for (qsizetype line = lines.first; line < lines.end(); ++line)
        list.append(text.text(line));
    return list;
}

/// Where the lines of a version stand beside those of the base.
struct BesideBase {
    std::vector<qint32> pairs;                 ///< for each line of the base the version's line, 0-based, or -1
    std::vector<std::pair<qint32, qint32>> in; ///< first and count of its lines before each, and behind the last
};

/// Puts the lines of a version that resemble none beside those of the base that none resembles, as far as they reach.
void fillGap(BesideBase &beside, const LineRange &base, const LineRange &own)
{
    const qsizetype paired = std::min(base.count, own.count);
    for (qsizetype k = 0; k < paired; ++k)
        beside.pairs[std::size_t(base.first + k)] = qint32(own.first + k);
    if (own.count > paired)
        beside.in[std::size_t(base.end())] = {qint32(own.first + paired), qint32(own.count - paired)};
}

BesideBase besideBase(const MergeTexts &texts, const MergePart &part, MergeSource version, const CancelFlag &cancel)
{
    const LineRange &base = part.of(MergeSource::Base);
    const LineRange &own = part.of(version);
    BesideBase beside{std::vector<qint32>(std::size_t(base.count), -1),
                      std::vector<std::pair<qint32, qint32>>(std::size_t(base.count) + 1, {0, 0})};
    QList<DiffLine> rows;
    if (base.count > 0 && base.count + own.count <= linesPaired) {
        // As the merge line by line over the base pairs lines.
        const AlignParams params{0, 0.35, 0, 2000};
        rows = diffLinesAligned(textsOf(texts.text(MergeSource::Base), base), textsOf(texts.text(version), own), params,
                                cancel);
    }
    LineRange nextBase;
    LineRange nextOwn;
    const auto fillUpTo = [&](qsizetype baseLine, qsizetype ownLine) {
        nextBase.count = baseLine - nextBase.first;
        nextOwn.count = ownLine - nextOwn.first;
        fillGap(beside, nextBase, nextOwn);
        nextBase.first = baseLine + 1;
        nextOwn.first = ownLine + 1;
    };
    for (const DiffLine &row : rows) {
        if (row.leftLine < 1 || row.rightLine < 1)
            continue;
        fillUpTo(row.leftLine - 1, row.rightLine - 1);
        beside.pairs[std::size_t(row.leftLine - 1)] = row.rightLine - 1;
    }
    fillUpTo(base.count, own.count);
    return beside;
}

QList<MergeRow> sourceRows(const MergeTexts &texts, const MergePart &part, const CancelFlag &cancel)
{
    QList<MergeRow> rows;
    const auto numberOf = [&part](MergeSource source, qsizetype line) {
        return qint32(part.of(source).first + line + 1);
    };
    const qsizetype baseCount = part.of(MergeSource::Base).count;
    if (part.kind == ChunkKind::Unchanged) {
        rows.reserve(baseCount);
        for (qsizetype line = 0; line < baseCount; ++line)
            rows.append(MergeRow{{numberOf(MergeSource::Left, line), numberOf(MergeSource::Base, line),
                                  numberOf(MergeSource::Right, line), -1}});
        return rows;
    }
    const BesideBase left = besideBase(texts, part, MergeSource::Left, cancel);
    const BesideBase right = besideBase(texts, part, MergeSource::Right, cancel);
    for (qsizetype line = 0; line <= baseCount && !cancel.isCancelled(); ++line) {
        const auto [leftIn, leftCount] = left.in[std::size_t(line)];
        const auto [rightIn, rightCount] = right.in[std::size_t(line)];
        for (qint32 k = 0; k < std::max(leftCount, rightCount); ++k) {
            rows.append(MergeRow{{k < leftCount ? numberOf(MergeSource::Left, leftIn + k) : -1, -1,
                                  k < rightCount ? numberOf(MergeSource::Right, rightIn + k) : -1, -1}});
        }
        if (line == baseCount)
            break;
        const qint32 onLeft = left.pairs[std::size_t(line)];
        const qint32 onRight = right.pairs[std::size_t(line)];
        rows.append(MergeRow{{onLeft >= 0 ? numberOf(MergeSource::Left, onLeft) : -1, numberOf(MergeSource::Base, line),
                              onRight >= 0 ? numberOf(MergeSource::Right, onRight) : -1, -1}});
    }
    return rows;
}

/// Puts the lines of a part's result beside where they come from; those that come from nowhere, or stand in another
/// order, into the room between.
class ResultPlacer {
public:
    ResultPlacer(QList<MergeRow> rows, qsizetype firstLine) : m_rows(std::move(rows)), m_line(firstLine) {}

    /// The next line of the result, which comes from line `number` (1-based) of `source`.
    void place(MergeSource source, qint32 number)
    {
        qsizetype row = m_next;
        while (row < m_rows.size() && lineOf(m_rows[row], source) != number)
            ++row;
        if (row == m_rows.size()) {
            placeAnywhere();
            return;
        }
        fillTo(row);
        MergeRow taken = m_rows[m_next++];
        taken.lines[resultPane] = nextNumber();
        m_placed.append(taken);
    }
    void placeAnywhere() { ++m_waiting; }

    [[nodiscard]] QList<MergeRow> finish()
    {
        fillTo(m_rows.size());
        return std::move(m_placed);
    }

private:
    [[nodiscard]] qint32 nextNumber() { return qint32(++m_line); }

    void fillTo(qsizetype row)
    {
        for (; m_next < row; ++m_next) {
            MergeRow taken = m_rows[m_next];
            if (m_waiting > 0) {
                --m_waiting;
                taken.lines[resultPane] = nextNumber();
            }
            m_placed.append(taken);
        }
        for (; m_waiting > 0; --m_waiting)
            m_placed.append(MergeRow{{-1, -1, -1, nextNumber()}});
    }

    QList<MergeRow> m_rows;
    QList<MergeRow> m_placed;
    qsizetype m_next = 0; ///< of the rows
    qsizetype m_waiting = 0;
    qsizetype m_line;
};

QList<MergeRow> withResult(QList<MergeRow> rows, const MergeTexts &texts, const MergePart &part, qsizetype start,
                           const EditSnapshot &result)
{
    if (part.isPlain()) {
        for (qsizetype row = 0; row < rows.size(); ++row)
            rows[row].lines[resultPane] = qint32(start + row + 1);
        return rows;
    }
    ResultPlacer placer(std::move(rows), start);
    for (const LineRun &run : result.runs(start, part.resultCount)) {
        for (qsizetype k = 0; k < run.count; ++k) {
            const std::optional<SourceLine> origin = texts.originOf(run, k);
            if (origin && origin->line >= part.of(origin->source).first && origin->line < part.of(origin->source).end())
                placer.place(origin->source, qint32(origin->line + 1));
            else
                placer.placeAnywhere();
        }
    }
    return placer.finish();
}

bool isIn(const MergeRow &row, const MergePart &part)
{
    for (std::size_t k = 0; k < mergeSourceCount; ++k) {
        const qsizetype line = row.lines[k] - 1;
        if (line >= 0)
            return line >= part.lines[k].first && line < part.lines[k].end();
    }
    return false;
}

/// Rows without the result, those that only it had left out.
QList<MergeRow> withoutResult(const QList<MergeRow> &rows, qsizetype first, qsizetype end)
{
    QList<MergeRow> kept;
    for (qsizetype k = first; k < end; ++k) {
        MergeRow row = rows[k];
        row.lines[resultPane] = -1;
        if (row != MergeRow())
            kept.append(row);
    }
    return kept;
}

} // namespace

MergeRows mergeRows(const MergeTexts &texts, const MergeParts &parts, const EditSnapshot &result,
                    const CancelFlag &cancel)
{
    MergeRows all;
    all.firstOfPart.reserve(std::size_t(parts.count()) + 1);
    for (qsizetype part = 0; part < parts.count() && !cancel.isCancelled(); ++part) {
        all.firstOfPart.push_back(all.rows.size());
        all.rows.append(withResult(sourceRows(texts, parts.at(part), cancel), texts, parts.at(part),
                                   parts.resultStart(part), result));
    }
    all.firstOfPart.push_back(all.rows.size());
    return all;
}

MergeRows patchedRows(const MergeRows &before, const MergeTexts &texts, const MergeParts &parts,
                      const EditSnapshot &result, const PartsChange &change, qsizetype lineShift)
{
    const qsizetype firstRow = before.firstOfPart[std::size_t(change.first)];
    const qsizetype oldEnd = before.firstOfPart[std::size_t(change.first + change.removed)];
    const QList<MergeRow> sources = withoutResult(before.rows, firstRow, oldEnd);
    QList<MergeRow> laidOut;
    MergeRows after;
    after.firstOfPart.assign(before.firstOfPart.begin(), before.firstOfPart.begin() + change.first);
    qsizetype next = 0;
    for (qsizetype part = change.first; part < change.first + change.inserted; ++part) {
        after.firstOfPart.push_back(firstRow + laidOut.size());
        const qsizetype begin = next;
        while (next < sources.size() && isIn(sources[next], parts.at(part)))
            ++next;
        laidOut.append(
            withResult(sources.sliced(begin, next - begin), texts, parts.at(part), parts.resultStart(part), result));
    }
    const qsizetype rowShift = laidOut.size() - (oldEnd - firstRow);
    for (qsizetype part = change.first + change.removed; part < qsizetype(before.firstOfPart.size()); ++part)
        after.firstOfPart.push_back(before.firstOfPart[std::size_t(part)] + rowShift);

    const bool sameRows = lineShift == 0 && before.rows.sliced(firstRow, oldEnd - firstRow) == laidOut;
    after.rows = before.rows;
    if (sameRows)
        return after;
    after.rows = before.rows.first(firstRow);
    after.rows.append(laidOut);
    after.rows.append(before.rows.sliced(oldEnd));
    for (qsizetype row = firstRow + laidOut.size(); lineShift != 0 && row < after.rows.size(); ++row) {
        qint32 &number = after.rows[row].lines[resultPane];
        if (number >= 1)
            number += qint32(lineShift);
    }
    return after;
}

} // namespace velmora

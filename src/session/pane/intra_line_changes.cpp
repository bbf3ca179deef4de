#include "session/pane/intra_line_changes.h"

#include "core/utf8_text.h"
#include "session/pane/utf8_units.h"
#include "session/pane/word_changes.h"

#include <algorithm>
#include <limits>

namespace velmora {

namespace {

// Cells of the table that matches two lines character by character. A frame's share takes a few milliseconds.
constexpr qint64 cellsAtOnce = 100'000;
constexpr qint64 cellsPerFrame = 2'000'000;
// Beyond this, matching characters takes seconds and shows noise rather than changes.
constexpr qint64 cellsAtMost = 40'000'000;
// Bytes of both lines up to which words are matched: some minified programs have several millions in a line.
constexpr std::size_t longestMatched = 16'000'000;
constexpr qsizetype keptRows = 4096;

bool startsCharacter(std::string_view utf8, std::size_t at)
{
    return at >= utf8.size() || (static_cast<unsigned char>(utf8[at]) & 0xC0) != 0x80;
}

std::size_t commonPrefix(std::string_view a, std::string_view b)
{
    const auto differing = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    auto length = std::size_t(differing.first - a.begin());
    while (length > 0 && !(startsCharacter(a, length) && startsCharacter(b, length)))
        --length;
    return length;
}

std::size_t commonSuffix(std::string_view a, std::string_view b)
{
    const auto differing = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend());
    auto length = std::size_t(differing.first - a.rbegin());
    while (length > 0 && !startsCharacter(a, a.size() - length))
        --length;
    return length;
}

qint64 cells(std::string_view a, std::string_view b)
{
    return qint64(a.size()) * qint64(b.size());
}

QList<CharRange> moved(QList<CharRange> ranges, qint32 offset)
{
    for (CharRange &range : ranges)
        range.start += offset;
    return ranges;
}

/// The changes of two texts that stand behind `offset` units.
RowChanges changesAt(qint32 offset, const QString &left, const QString &right, bool isLong, const CancelFlag &cancel)
{
    if (!isLong)
        return {moved(intraLineChanges(right, left, cancel), offset),
                moved(intraLineChanges(left, right, cancel), offset)};
    const WordChanges changes = wordChanges(left, right, cancel);
    return {moved(changes.left, offset), moved(changes.right, offset)};
}

/// One change on each side that has anything.
RowChanges wholeAt(qint32 offset, std::string_view left, std::string_view right)
{
    const auto whole = [offset](std::string_view text) {
        return text.empty() ? QList<CharRange>() : QList<CharRange>{{offset, qint32(utf16Length(text))}};
    };
    return {whole(left), whole(right)};
}

/// `changes` with the marks that show them.
RowChanges marked(RowChanges changes, std::string_view left, std::string_view right, const KeyRules &rules,
                  const CancelFlag &cancel)
{
    const QString leftText = textOfUtf8(left);
    const QString rightText = textOfUtf8(right);
    changes.leftMarks = lineMarks(leftText, changes.left, rightText, rules, cancel);
    changes.rightMarks = lineMarks(rightText, changes.right, leftText, rules, cancel);
    return changes;
}

} // namespace

RowChanges findRowChanges(const PaneDocument &document, qsizetype row, const PanePair &panes, const KeyRules &rules,
                          const CancelFlag &cancel)
{
    const PaneDocument::Cell leftCell = document.cell(row, panes.left);
    const PaneDocument::Cell rightCell = document.cell(row, panes.right);
    if (!leftCell.source || !rightCell.source)
        return {};
    std::string_view left = leftCell.source->bytes(leftCell.line);
    std::string_view right = rightCell.source->bytes(rightCell.line);
    if (left.empty() || right.empty())
        return {};
    const std::string_view wholeLeft = left;
    const std::string_view wholeRight = right;
    const bool isLong = cells(left, right) > cellsAtMost;
    qint32 offset = 0;
    if (isLong) {
        const std::size_t prefix = commonPrefix(left, right);
        offset = qint32(utf16Length(left.substr(0, prefix)));
        left.remove_prefix(prefix);
        right.remove_prefix(prefix);
        const std::size_t suffix = commonSuffix(left, right);
        left.remove_suffix(suffix);
        right.remove_suffix(suffix);
    }
    if (left.empty() || right.empty() || left.size() + right.size() > longestMatched)
        return marked(wholeAt(offset, left, right), wholeLeft, wholeRight, {}, cancel);
    RowChanges found = changesAt(offset, textOfUtf8(left), textOfUtf8(right), cells(left, right) > cellsAtMost, cancel);
    return marked(std::move(found), wholeLeft, wholeRight, isLong ? KeyRules() : rules, cancel);
}

QList<qint32> changeStarts(const QList<CharRange> &own, const QList<CharRange> &other)
{
    // Both lines have the same characters outside their changes: as many stand before a change in either line.
    constexpr qint32 none = std::numeric_limits<qint32>::max();
    QList<qint32> starts;
    qint32 ownLength = 0;
    qint32 otherLength = 0;
    for (qsizetype k = 0, m = 0; k < own.size() || m < other.size();) {
        const qint32 ownCommon = k < own.size() ? own.at(k).start - ownLength : none;
        const qint32 otherCommon = m < other.size() ? other.at(m).start - otherLength : none;
        starts.append(std::min(ownCommon, otherCommon) + ownLength);
        if (ownCommon <= otherCommon)
            ownLength += own.at(k++).length;
        if (otherCommon <= ownCommon)
            otherLength += other.at(m++).length;
    }
    return starts;
}

IntraLineChanges::IntraLineChanges(const PanePair &panes, QObject *parent) : QObject(parent), m_panes(panes) {}

void IntraLineChanges::setDocument(std::shared_ptr<const PaneDocument> document)
{
    m_runner.abandon();
    m_document = std::move(document);
    m_known.clear();
    m_waiting.clear();
    m_begun.clear();
}

void IntraLineChanges::beginFrame(qsizetype first, qsizetype last)
{
    m_frameCost = 0;
    m_waiting.removeIf([first, last](qsizetype row) { return row < first || row > last; });
    if (m_known.size() > keptRows)
        m_known.clear();
}

const RowChanges *IntraLineChanges::changesOf(qsizetype row)
{
    const auto known = m_known.constFind(row);
    if (known != m_known.constEnd())
        return &*known;
    const PaneDocument::Cell left = m_document->cell(row, m_panes.left);
    const PaneDocument::Cell right = m_document->cell(row, m_panes.right);
    if (!left.source || !right.source)
        return nullptr;
    const qint64 cost = cells(left.source->bytes(left.line), right.source->bytes(right.line));
    if (cost > cellsAtOnce || m_frameCost + cost > cellsPerFrame) {
        if (!m_begun.contains(row) && !m_waiting.contains(row))
            m_waiting.append(row);
        return nullptr;
    }
    m_frameCost += cost;
    return &*m_known.insert(row, findRowChanges(*m_document, row, m_panes, m_rules));
}

void IntraLineChanges::endFrame()
{
    if (!m_runner.isRunning())
        startWorker();
}

void IntraLineChanges::startWorker()
{
    if (m_waiting.isEmpty())
        return;
    m_begun = std::exchange(m_waiting, {});
    m_runner.start(
        [document = m_document, rows = m_begun, panes = m_panes, rules = m_rules](const CancelFlag &cancel,
                                                                                  Progress &) {
            Answers answers;
            for (const qsizetype row : rows) {
                if (cancel.isCancelled())
                    break;
                answers.insert(row, findRowChanges(*document, row, panes, rules, cancel));
            }
            return answers;
        },
        [this](RunOutcome<Answers> &&outcome) {
            // A run that failed for want of memory leaves its rows without marks rather than trying for ever.
            if (outcome.value)
                m_known.insert(*outcome.value);
            for (const qsizetype row : std::exchange(m_begun, {})) {
                if (!m_known.contains(row))
                    m_known.insert(row, {});
            }
            startWorker();
            Q_EMIT arrived();
        });
}

} // namespace velmora

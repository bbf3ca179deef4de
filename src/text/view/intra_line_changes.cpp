#include "text/view/intra_line_changes.h"

#include "core/utf8_text.h"
#include "text/view/utf8_units.h"

#include <algorithm>

namespace velmora {

namespace {

// Cells of the table that matches two lines character by character. A frame's share takes a few milliseconds.
constexpr qint64 cellsAtOnce = 100'000;
constexpr qint64 cellsPerFrame = 2'000'000;
// Beyond this, matching characters takes seconds and shows noise rather than changes.
constexpr qint64 cellsAtMost = 40'000'000;
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

/// The changes of `text` against `other`, moved right by `offset`.
QList<CharRange> changesAt(qint32 offset, std::string_view other, std::string_view text, const CancelFlag &cancel)
{
    if (text.empty())
        return {};
    if (cells(other, text) > cellsAtMost)
        return {{offset, qint32(utf16Length(text))}};
    QList<CharRange> ranges = intraLineChanges(textOfUtf8(other), textOfUtf8(text), cancel);
    for (CharRange &range : ranges)
        range.start += offset;
    return ranges;
}

} // namespace

RowChanges findRowChanges(const DiffDocument &document, qsizetype row, const CancelFlag &cancel)
{
    const DiffDocument::Cell leftCell = document.cell(row, Side::Left);
    const DiffDocument::Cell rightCell = document.cell(row, Side::Right);
    if (!leftCell.source || !rightCell.source)
        return {};
    std::string_view left = leftCell.source->bytes(leftCell.line);
    std::string_view right = rightCell.source->bytes(rightCell.line);
    if (left.empty() || right.empty())
        return {};
    qint32 offset = 0;
    if (cells(left, right) > cellsAtMost) {
        const std::size_t prefix = commonPrefix(left, right);
        offset = qint32(utf16Length(left.substr(0, prefix)));
        left.remove_prefix(prefix);
        right.remove_prefix(prefix);
        const std::size_t suffix = commonSuffix(left, right);
        left.remove_suffix(suffix);
        right.remove_suffix(suffix);
    }
    return {changesAt(offset, right, left, cancel), changesAt(offset, left, right, cancel)};
}

IntraLineChanges::IntraLineChanges(QObject *parent) : QObject(parent) {}

void IntraLineChanges::setDocument(std::shared_ptr<const DiffDocument> document)
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
    const DiffDocument::Cell left = m_document->cell(row, Side::Left);
    const DiffDocument::Cell right = m_document->cell(row, Side::Right);
    if (!left.source || !right.source)
        return nullptr;
    const qint64 cost = cells(left.source->bytes(left.line), right.source->bytes(right.line));
    if (cost > cellsAtOnce || m_frameCost + cost > cellsPerFrame) {
        if (!m_begun.contains(row) && !m_waiting.contains(row))
            m_waiting.append(row);
        return nullptr;
    }
    m_frameCost += cost;
    return &*m_known.insert(row, findRowChanges(*m_document, row));
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
        [document = m_document, rows = m_begun](const CancelFlag &cancel, Progress &) {
            Answers answers;
            for (const qsizetype row : rows) {
                if (cancel.isCancelled())
                    break;
                answers.insert(row, findRowChanges(*document, row, cancel));
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

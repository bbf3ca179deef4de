#include "text/view/diff_document.h"

#include "core/line_ends.h"
#include "session/pane/pane_scene.h"
#include "session/translate.h"

#include <algorithm>
#include <iterator>

namespace velmora {

namespace {

// Of room behind the widest line for the name of a line end.
constexpr qint64 columnsForLineEnd = 14;

/// True when no row between the two pairs lines.
bool areNeighbours(const QList<AlignedRow> &rows, const LineEndRow &first, const LineEndRow &second)
{
    const auto isPair = [](const AlignedRow &row) { return row.leftLine >= 1 && row.rightLine >= 1; };
    return std::none_of(rows.begin() + first.row + 1, rows.begin() + second.row, isPair);
}

/// Where lines begin to end differently, the run of equal rows from there on is a difference of line ends. Behind a
/// difference of the texts it is not begun anew while the ends stay the same two, so that two versions of a file with
/// different line ends all through have one such difference and not one after each change.
void markLineEnds(const DiffDocument &document, std::vector<TextRowState> &states)
{
    const LineEndRow *before = nullptr;
    bool isMarked = false; // the ends that lines have now have been marked
    bool isOpen = false;   // the row before is
    for (const LineEndRow &at : document.lineEndRows()) {
        const bool goesOn = before && before->hasSameEndsAs(at) && areNeighbours(document.rows(), *before, at);
        isMarked = isMarked && goesOn;
        isOpen = isOpen && before->row + 1 == at.row;
        before = &at;
        TextRowState &state = states[std::size_t(at.row)];
        const bool marksThis = state == TextRowState::Equal && (!isMarked || isOpen);
        if (marksThis)
            state = at.isMissingLeft() || at.isMissingRight() ? TextRowState::LastLineFeed : TextRowState::LineEnds;
        isMarked = isMarked || marksThis;
        isOpen = marksThis;
    }
}

/// What is behind a line of a row of `kind`; `unimportant` says that an equal row's lines are not the same text.
DiffColour rowBackground(DiffLineKind kind, bool unimportant)
{
    constexpr DiffColour byKind[] = {DiffColour::Background, DiffColour::Added, DiffColour::Removed,
                                     DiffColour::Modified};
    return unimportant ? DiffColour::Unimportant : byKind[kind];
}

} // namespace

DiffDocument::DiffDocument(QList<AlignedRow> rows, std::shared_ptr<const LineSource> left,
                           std::shared_ptr<const LineSource> right, std::vector<LineEndRow> lineEnds, int tabWidth)
    : PaneDocument({std::move(left), std::move(right)}, tabWidth, 0),
      m_rows(std::move(rows)),
      m_counts(countRows(m_rows)),
      m_lineEndRows(std::move(lineEnds))
{
    setTabWidth(tabWidth);
    addUnimportantRows(0, m_rows.size());
}

DiffDocument::DiffDocument(const DiffDocument &before, const RowChange &change, QList<AlignedRow> rows,
                           std::shared_ptr<const LineSource> left, std::shared_ptr<const LineSource> right)
    : PaneDocument({std::move(left), std::move(right)}, before.tabWidth(), change.widest), m_rows(std::move(rows))
{
    const std::vector<qint32> &earlier = before.m_unimportantRows;
    const auto changed = std::lower_bound(earlier.begin(), earlier.end(), change.first);
    const auto behind = std::lower_bound(changed, earlier.end(), change.first + change.removed);
    m_unimportantRows.assign(earlier.begin(), changed);
    addUnimportantRows(change.first, change.first + change.inserted);
    const auto shift = qint32(change.inserted - change.removed);
    std::transform(behind, earlier.end(), std::back_inserter(m_unimportantRows),
                   [shift](qint32 row) { return row + shift; });
    takeLineEnds(before, change);
}

void DiffDocument::takeLineEnds(const DiffDocument &before, const RowChange &change)
{
    const auto comesBefore = [](const LineEndRow &at, qsizetype row) { return at.row < row; };
    const std::vector<LineEndRow> &earlier = before.m_lineEndRows;
    const auto first = std::lower_bound(earlier.begin(), earlier.end(), change.first, comesBefore);
    const auto behind = std::lower_bound(first, earlier.end(), change.first + change.removed, comesBefore);
    const auto appendMoved = [this](auto from, auto to, qsizetype by) {
        std::transform(from, to, std::back_inserter(m_lineEndRows), [by](LineEndRow at) {
            at.row += qint32(by);
            return at;
        });
    };
    m_lineEndRows.assign(earlier.begin(), first);
    appendMoved(change.lineEnds.begin(), change.lineEnds.end(), change.first);
    appendMoved(behind, earlier.end(), change.inserted - change.removed);
}

const LineEndRow *DiffDocument::lineEndsOf(qsizetype row) const
{
    const auto found = std::lower_bound(m_lineEndRows.begin(), m_lineEndRows.end(), row,
                                        [](const LineEndRow &at, qsizetype wanted) { return at.row < wanted; });
    return found != m_lineEndRows.end() && found->row == row ? &*found : nullptr;
}

DiffDocument::DiffDocument(const DiffDocument &other, int tabWidth) : DiffDocument(other)
{
    setTabWidth(tabWidth);
}

std::shared_ptr<const PaneDocument> DiffDocument::withTabWidth(int columns) const
{
    return std::make_shared<DiffDocument>(*this, columns);
}

void DiffDocument::addUnimportantRows(qsizetype first, qsizetype end)
{
    for (qsizetype row = first; row < end; ++row) {
        if (differsUnimportantly(row))
            m_unimportantRows.push_back(qint32(row));
    }
}

qint32 DiffDocument::lineNumber(qsizetype row, PaneIndex pane) const
{
    const AlignedRow &aligned = m_rows.at(row);
    return pane == Side::Left ? aligned.leftLine : aligned.rightLine;
}

PaneDocument::Cell DiffDocument::cell(qsizetype row, PaneIndex pane) const
{
    const Cell own = PaneDocument::cell(row, pane);
    if (own.source || kind(row) != Equal)
        return own;
    Cell other = PaneDocument::cell(row, otherSide(sideOf(pane)));
    other.own = false;
    return other;
}

bool DiffDocument::differsUnimportantly(qsizetype row) const
{
    if (kind(row) != Equal)
        return false;
    const Cell left = cell(row, Side::Left);
    const Cell right = cell(row, Side::Right);
    if (!left.source || !right.source)
        return false;
    return !left.own || !right.own || left.source->bytes(left.line) != right.source->bytes(right.line);
}

// How it looks --------------------------------------------------------------------------------------------------------

std::vector<TextRowState> DiffDocument::states(bool countsMinor) const
{
    static_assert(int(TextRowState::Added) == Added && int(TextRowState::Removed) == Removed &&
                  int(TextRowState::Modified) == Modified);
    std::vector<TextRowState> states(std::size_t(m_rows.size()));
    std::transform(m_rows.begin(), m_rows.end(), states.begin(),
                   [](const AlignedRow &row) { return TextRowState(row.kind); });
    if (countsMinor) {
        for (const qint32 row : m_unimportantRows)
            states[std::size_t(row)] = TextRowState::Minor;
    }
    markLineEnds(*this, states);
    return states;
}

bool DiffDocument::hasSameStates(const PaneDocument &other, bool countsMinor) const
{
    const auto &document = static_cast<const DiffDocument &>(other);
    return m_rows.isSharedWith(document.m_rows) && m_lineEndRows == document.m_lineEndRows &&
           (!countsMinor || m_unimportantRows == document.m_unimportantRows);
}

qint64 DiffDocument::columnsBehindLines() const
{
    return m_lineEndRows.empty() ? 0 : columnsForLineEnd;
}

RowLook DiffDocument::look(qsizetype row, PaneIndex pane) const
{
    constexpr QChar signs[] = {QChar(), u'+', u'-', u'~'}; // by kind
    const bool unimportant = differsUnimportantly(row);
    const LineEndRow *ends = lineEndsOf(row);
    RowLook look{rowBackground(kind(row), unimportant), {}, {}};
    if (ends && isEqual(row))
        look.sign = u'\u21B5';
    else if (unimportant)
        look.sign = u'\u2248';
    else if (lineNumber(row, pane) >= 1)
        look.sign = signs[kind(row)];
    if (ends) {
        const QString name = lineEndName(pane == Side::Left ? ends->left : ends->right);
        look.lineEnd = name.isEmpty() ? Velmora::tr("no line feed") : name;
    }
    return look;
}

QString DiffDocument::describeRow(qsizetype row) const
{
    switch (kind(row)) {
    case Equal:
        return lineEndsOf(row) ? Velmora::tr("line ends differ") : Velmora::tr("identical");
    case Added:
        return Velmora::tr("added");
    case Removed:
        return Velmora::tr("removed");
    case Modified:
        return Velmora::tr("modified");
    }
    return {};
}

const DiffDocument *diffIn(const PaneScene &scene)
{
    return static_cast<const DiffDocument *>(scene.document());
}

} // namespace velmora

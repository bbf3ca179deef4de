#include "session/pane/pane_document.h"

#include "session/pane/edit_buffer.h"
#include "session/pane/line_segments.h"

#include <algorithm>

namespace velmora {

namespace {

qint64 widestLineOf(const LineSource &source, int tabWidth)
{
    qint64 widest = 0;
    for (qsizetype line = 0; line < source.count(); ++line) {
        const std::string_view utf8 = source.bytes(line);
        // No byte takes more columns than a tab or a box, so that most lines need no look at their bytes.
        if (qint64(utf8.size()) * std::max(tabWidth, 3) > widest)
            widest = std::max(widest, columnCount(utf8, tabWidth));
    }
    return widest;
}

/// A text with the empty line behind its last line end.
class WholeText final : public LineSource {
public:
    explicit WholeText(std::shared_ptr<const EditSnapshot> text) : m_text(std::move(text)), m_count(m_text->count())
    {
        if (m_count == 0 || m_text->lineEnd(m_count - 1) != LineEnd::None)
            ++m_count;
    }

    [[nodiscard]] qsizetype count() const override { return m_count; }
    [[nodiscard]] std::string_view bytes(qsizetype line) const override
    {
        return line < m_text->count() ? m_text->bytes(line) : std::string_view();
    }

private:
    std::shared_ptr<const EditSnapshot> m_text;
    qsizetype m_count;
};

} // namespace

PaneDocument::PaneDocument(std::vector<std::shared_ptr<const LineSource>> texts, int tabWidth, qint64 widest)
    : m_texts(std::move(texts)), m_tabWidth(tabWidth), m_widest(widest)
{}

void PaneDocument::setTabWidth(int columns)
{
    m_tabWidth = columns;
    m_widest = 0;
    for (const auto &text : m_texts)
        m_widest = std::max(m_widest, widestLineOf(*text, columns));
}

PaneDocument::Cell PaneDocument::cell(qsizetype row, PaneIndex pane) const
{
    const LineSource &lines = source(pane);
    const qsizetype line = lineNumber(row, pane) - 1;
    return line >= 0 && line < lines.count() ? Cell{&lines, line, pane, true} : Cell();
}

QString PaneDocument::text(qsizetype row, PaneIndex pane) const
{
    const Cell shown = cell(row, pane);
    return shown.source ? shown.source->text(shown.line) : QString();
}

qsizetype PaneDocument::rowOfLine(PaneIndex pane, qint32 number) const
{
    qsizetype found = -1;
    qsizetype low = 0;
    qsizetype high = rowCount();
    while (low < high) {
        const qsizetype middle = low + (high - low) / 2;
        qsizetype row = middle;
        while (row < high && lineNumber(row, pane) < 1)
            ++row;
        if (row == high || lineNumber(row, pane) > number) {
            high = middle;
        } else {
            found = row;
            low = row + 1;
        }
    }
    return found;
}

qsizetype PaneDocument::linesBefore(qsizetype row, PaneIndex pane) const
{
    for (qsizetype above = std::min(row, rowCount()) - 1; above >= 0; --above) {
        if (lineNumber(above, pane) >= 1)
            return lineNumber(above, pane);
    }
    return 0;
}

std::vector<TextRowState> PaneDocument::states(bool /*countsMinor*/) const
{
    return std::vector<TextRowState>(std::size_t(rowCount()), TextRowState::Equal);
}

PlainDocument::PlainDocument(const std::shared_ptr<const EditSnapshot> &text, int tabWidth)
    : PaneDocument({std::make_shared<WholeText>(text)}, tabWidth, 0)
{
    setTabWidth(tabWidth);
}

PlainDocument::PlainDocument(const PlainDocument &before, const std::shared_ptr<const EditSnapshot> &text,
                             qint64 widest)
    : PaneDocument({std::make_shared<WholeText>(text)}, before.tabWidth(), widest)
{}

std::shared_ptr<const PaneDocument> PlainDocument::withTabWidth(int columns) const
{
    auto other = std::make_shared<PlainDocument>(*this);
    other->setTabWidth(columns);
    return other;
}

bool PlainDocument::hasSameStates(const PaneDocument &other, bool /*countsMinor*/) const
{
    return rowCount() == other.rowCount();
}

} // namespace velmora

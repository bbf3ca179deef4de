#include "session/pane/line_renderer.h"

#include "core/utf8_text.h"
#include "session/pane/word_changes.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace velmora {

namespace {

// More rows than the tallest screens show in the smallest font, and as many again for scrolling back.
constexpr int keptLines = 600;
// A line that is scrolled sideways leaves segments behind.
constexpr std::size_t keptSegments = 64;
constexpr qreal unboundedWidth = 1 << 22;
constexpr int leading = 2;
// The letters of a box against those of the text.
constexpr qreal boxFontShare = 0.6;

QList<QTextLayout::FormatRange> tintFormats(const std::vector<Tint> &tints)
{
    QList<QTextLayout::FormatRange> formats;
    formats.reserve(qsizetype(tints.size()));
    for (const Tint &tint : tints) {
        QTextLayout::FormatRange range{int(tint.first), int(tint.end - tint.first), {}};
        range.format.setForeground(tint.colour);
        formats.append(range);
    }
    return formats;
}

} // namespace

LineRenderer::LineRenderer() : m_entries(keptLines)
{
    setFont(QFont());
}

void LineRenderer::setSource(const LineSource *source, int tabWidth)
{
    if (source == m_source && tabWidth == m_tabWidth)
        return;
    m_entries.clear();
    m_source = source;
    m_tabWidth = tabWidth;
}

void LineRenderer::setFont(const QFont &font)
{
    m_entries.clear();
    m_font = font;
    m_boxFont = font;
    m_boxFont.setPointSizeF(std::max<qreal>(font.pointSizeF() * boxFontShare, 4));
    const QFontMetricsF metrics(font);
    m_rowHeight = int(std::ceil(metrics.height())) + leading;
    m_baseline = std::floor((m_rowHeight - metrics.height()) / 2) + metrics.ascent();
    // One digit's own width may be rounded; a run of them shows what a cell really takes.
    constexpr int sample = 64;
    const auto measured = makeLayout(QString(sample, u'0'), 0, {}, {});
    m_cellWidth = std::max<qreal>(measured->lineAt(0).naturalTextWidth() / sample, 1);
}

void LineRenderer::setShowsBlanks(bool shows)
{
    m_entries.clear();
    m_showsBlanks = shows;
}

void LineRenderer::setWrap(qint64 columns)
{
    if (columns == m_wrapColumns)
        return;
    m_entries.clear();
    m_wrapColumns = columns;
}

bool LineRenderer::isWrapped(qsizetype line) const
{
    return m_wrapColumns > 0 && qsizetype(m_source->bytes(line).size()) <= longestWrapped;
}

qsizetype LineRenderer::partCount(qsizetype line)
{
    return isWrapped(line) ? entry(line).segments.count() : 1;
}

LineRenderer::Entry &LineRenderer::entry(qsizetype line)
{
    if (Entry *known = m_entries.object(line))
        return *known;
    auto *made = new Entry(LineSegments(m_source->bytes(line), m_tabWidth, isWrapped(line) ? m_wrapColumns : 0));
    m_entries.insert(line, made);
    return *made;
}

std::unique_ptr<QTextLayout> LineRenderer::makeLayout(const QString &text, qint64 column,
                                                      const QList<HiddenCharacter> &hidden,
                                                      const std::vector<Tint> &tints) const
{
    auto layout = std::make_unique<QTextLayout>(text, m_font);
    layout->setCacheEnabled(true);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(Qt::LeftToRight);
    if (m_showsBlanks)
        option.setFlags(QTextOption::ShowTabsAndSpaces);
    option.setTabStopDistance(m_tabWidth * m_cellWidth);
    const qint64 intoTab = column % m_tabWidth;
    if (intoTab > 0 && text.contains(u'\t')) {
        // The segment starts between two tab stops of the line, so that each of its own has to be told.
        QList<qreal> stops;
        for (qint64 stop = m_tabWidth - intoTab; stop <= text.size() * m_tabWidth; stop += m_tabWidth)
            stops.append(qreal(stop) * m_cellWidth);
        option.setTabArray(stops);
    }
    layout->setTextOption(option);
    QList<QTextLayout::FormatRange> formats = tintFormats(tints);
    // The blank in the place of a hidden character is spaced out to the width of its box.
    const qreal blank = hidden.isEmpty() ? 0 : QFontMetricsF(m_font).horizontalAdvance(QChar(QChar::Nbsp));
    for (const HiddenCharacter &box : hidden) {
        // The second half of a pair takes no room.
        QTextLayout::FormatRange range{int(box.unit), 1, {}};
        range.format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        range.format.setFontLetterSpacing(hiddenCharacterCells(box.character) * m_cellWidth - blank);
        range.format.setForeground(Qt::transparent);
        formats.append(range);
    }
    layout->setFormats(formats);
    layout->beginLayout();
    QTextLine line = layout->createLine();
    if (line.isValid())
        line.setLineWidth(unboundedWidth);
    layout->endLayout();
    return layout;
}

LineRenderer::Laid &LineRenderer::laid(Entry &entry, qsizetype segment)
{
    const auto known = entry.laid.find(segment);
    if (known != entry.laid.end())
        return known->second;
    if (entry.laid.size() >= keptSegments)
        entry.laid.clear();
    QString text = textOfUtf8(entry.segments.bytes(segment));
    Laid made;
    made.hidden = takeHiddenCharacters(text);
    made.layout = makeLayout(text, entry.segments.at(segment).column, made.hidden, {});
    return entry.laid.emplace(segment, std::move(made)).first->second;
}

const LineRenderer::Laid &LineRenderer::inked(Entry &entry, qsizetype segment, const LineInks &inks)
{
    Laid &drawn = laid(entry, segment);
    const LineSegments::Segment place = entry.segments.at(segment);
    const QString text = drawn.layout->text();
    std::vector<Tint> tints = tintsIn(inks, place.unit, place.unit + text.size());
    for (Tint &tint : tints) {
        tint.first -= place.unit;
        tint.end -= place.unit;
    }
    // As formats of the layout, colours are worked out once; told to it when it is drawn, each would draw all of the
    // text anew in a clip of its own.
    if (tints != drawn.tints) {
        drawn.layout = makeLayout(text, place.column, drawn.hidden, tints);
        drawn.tints = std::move(tints);
    }
    return drawn;
}

void LineRenderer::draw(QPainter &painter, qsizetype line, const QRectF &area, qreal scrolled, const LineInks &inks)
{
    Entry &drawn = entry(line);
    painter.setPen(inks.text);
    if (isWrapped(line)) {
        const QRectF exposed = painter.clipBoundingRect();
        const auto first = std::max<qsizetype>(qsizetype((exposed.top() - area.top()) / m_rowHeight), 0);
        for (qsizetype index = first; drawn.segments.contains(index); ++index) {
            const qreal y = area.top() + qreal(index) * m_rowHeight;
            if (y > exposed.bottom())
                break;
            drawSegment(painter, drawn, index, {area.left(), y}, inks);
        }
        return;
    }
    for (qsizetype index = drawn.segments.indexAtColumn(qint64(scrolled / m_cellWidth)); drawn.segments.contains(index);
         ++index) {
        const qreal x = qreal(drawn.segments.at(index).column) * m_cellWidth - scrolled;
        if (x >= area.width())
            break;
        drawSegment(painter, drawn, index, {area.left() + x, area.top()}, inks);
    }
}

void LineRenderer::drawSegment(QPainter &painter, Entry &entry, qsizetype index, QPointF corner, const LineInks &inks)
{
    const Laid &drawn = inked(entry, index, inks);
    const QTextLayout &text = *drawn.layout;
    // A character from another font may reach higher than the font's own and would push the line down.
    const qreal top = corner.y() + m_baseline - (text.lineCount() > 0 ? text.lineAt(0).ascent() : 0);
    const QPen pen = painter.pen();
    text.draw(&painter, QPointF(corner.x(), top));
    painter.setPen(pen);
    if (!drawn.hidden.isEmpty())
        drawBoxes(painter, drawn, corner);
}

void LineRenderer::drawBoxes(QPainter &painter, const Laid &drawn, QPointF corner) const
{
    painter.save();
    painter.setFont(m_boxFont);
    painter.setBrush(Qt::NoBrush);
    QColor frame = painter.pen().color();
    frame.setAlphaF(0.55F);
    const QTextLine line = drawn.layout->lineAt(0);
    for (const HiddenCharacter &box : drawn.hidden) {
        // In a run from right to left the end stands on the left.
        const qreal one = line.cursorToX(int(box.unit));
        const qreal other = line.cursorToX(int(box.unit) + box.units);
        const QRectF area(corner.x() + std::min(one, other) + 1.5, corner.y() + 2.5, std::abs(other - one) - 3,
                          m_rowHeight - 5);
        const QColor letters = painter.pen().color();
        painter.setPen(frame);
        painter.drawRoundedRect(area, 2, 2);
        painter.setPen(letters);
        painter.drawText(area, Qt::AlignCenter | Qt::TextDontClip, hiddenCharacterCode(box.character));
    }
    painter.restore();
}

void LineRenderer::drawLabel(QPainter &painter, const QRectF &area, Qt::Alignment alignment, const QString &text) const
{
    painter.setFont(m_font);
    painter.drawText(area.translated(0, m_baseline - QFontMetricsF(m_font).ascent()),
                     int(alignment | Qt::AlignTop) | Qt::TextSingleLine, text);
}

qreal LineRenderer::xIn(Entry &entry, qsizetype segment, qsizetype unit)
{
    const QTextLayout &text = layout(entry, segment);
    const auto inside = int(std::clamp<qsizetype>(unit - entry.segments.at(segment).unit, 0, text.text().size()));
    return text.lineCount() > 0 ? text.lineAt(0).cursorToX(inside) : 0;
}

LineRenderer::Place LineRenderer::placeOf(qsizetype line, qsizetype unit)
{
    Entry &asked = entry(line);
    const qsizetype index = asked.segments.indexAtUnit(unit);
    const qreal inside = xIn(asked, index, unit);
    if (isWrapped(line))
        return {index, inside};
    return {0, qreal(asked.segments.at(index).column) * m_cellWidth + inside};
}

qsizetype LineRenderer::unitAt(qsizetype line, qreal x, qsizetype part)
{
    Entry &asked = entry(line);
    const bool wrapped = isWrapped(line);
    const qsizetype index = wrapped ? std::min(part, asked.segments.count() - 1)
                                    : asked.segments.indexAtColumn(qint64(std::max<qreal>(x, 0) / m_cellWidth));
    const LineSegments::Segment segment = asked.segments.at(index);
    const QTextLayout &text = layout(asked, index);
    const qreal start = wrapped ? 0 : qreal(segment.column) * m_cellWidth;
    int inside = text.lineCount() > 0 ? text.lineAt(0).xToCursor(x - start) : 0;
    // The place behind the last character of a wrapped part is drawn at the start of the next one.
    if (wrapped && inside > 0 && inside == text.text().size() && asked.segments.contains(index + 1))
        inside = text.previousCursorPosition(inside);
    return segment.unit + inside;
}

QList<LineRenderer::Span> LineRenderer::spansOf(qsizetype line, qsizetype first, qsizetype end)
{
    const Place start = placeOf(line, first);
    const Place behind = placeOf(line, end);
    QList<Span> spans;
    for (qsizetype part = start.part; part <= behind.part; ++part) {
        const qreal left = part == start.part ? start.x : 0;
        const qreal right = part == behind.part ? behind.x : xIn(entry(line), part, end);
        // Text from right to left may turn the ends round.
        spans.append({part, std::min(left, right), std::max(left, right)});
    }
    return spans;
}

qsizetype LineRenderer::length(qsizetype line)
{
    return entry(line).segments.unitCount();
}

qsizetype LineRenderer::previous(qsizetype line, qsizetype unit, QTextLayout::CursorMode mode)
{
    Entry &asked = entry(line);
    if (unit <= 0)
        return 0;
    const qsizetype index = asked.segments.indexAtUnit(unit - 1);
    const qsizetype start = asked.segments.at(index).unit;
    return start + layout(asked, index).previousCursorPosition(int(unit - start), mode);
}

qsizetype LineRenderer::next(qsizetype line, qsizetype unit, QTextLayout::CursorMode mode)
{
    Entry &asked = entry(line);
    const qsizetype index = asked.segments.indexAtUnit(unit);
    const qsizetype start = asked.segments.at(index).unit;
    const QTextLayout &text = layout(asked, index);
    if (unit - start >= text.text().size())
        return start + text.text().size();
    return start + text.nextCursorPosition(int(unit - start), mode);
}

CharRange LineRenderer::wordAt(qsizetype line, qsizetype unit)
{
    Entry &asked = entry(line);
    const qsizetype index = asked.segments.indexAtUnit(unit);
    const auto start = qint32(asked.segments.at(index).unit);
    const QString text = layout(asked, index).text();
    if (text.isEmpty())
        return {start, 0};
    const qsizetype at = std::clamp<qsizetype>(unit - start, 0, text.size() - 1);
    const CharacterClass wanted = classOf(text.at(at));
    qsizetype first = at;
    while (first > 0 && classOf(text.at(first - 1)) == wanted)
        --first;
    qsizetype end = at + 1;
    while (end < text.size() && classOf(text.at(end)) == wanted)
        ++end;
    return {start + qint32(first), qint32(end - first)};
}

} // namespace velmora

#include "text/view/line_renderer.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace velmora {

namespace {

// More rows than the tallest screens show in the smallest font, and as many again for scrolling back.
constexpr int keptLines = 600;
// A line that is scrolled sideways leaves segments behind.
constexpr std::size_t keptSegments = 16;
constexpr qreal unboundedWidth = 1 << 22;
constexpr int leading = 2;

char16_t visibleForm(char16_t unit)
{
    if (unit >= 0x20 && unit < 0x7F)
        return unit;
    if (unit < 0x20)
        return unit == u'\t' ? unit : char16_t(0x2400 + unit);
    if (unit == 0x7F)
        return 0x2421;
    constexpr char16_t box = 0x25AF;
    const bool isControl = unit < 0xA0;
    const bool breaksLine = unit == 0x2028 || unit == 0x2029;
    const bool reordersText =
        (unit >= 0x200E && unit <= 0x200F) || (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
    const bool hides = unit == 0x200B || unit == 0xFEFF;
    return isControl || breaksLine || reordersText || hides ? box : unit;
}

enum class CharacterClass { Space, Word, Other };

CharacterClass classOf(QChar character)
{
    if (character.isSpace())
        return CharacterClass::Space;
    const bool isWord =
        character.isLetterOrNumber() || character == u'_' || character.isMark() || character.isSurrogate();
    return isWord ? CharacterClass::Word : CharacterClass::Other;
}

} // namespace

QString visibleText(QString text)
{
    for (QChar &unit : text) {
        const char16_t visible = visibleForm(unit.unicode());
        if (visible != unit.unicode())
            unit = QChar(visible);
    }
    return text;
}

LineRenderer::LineRenderer() : m_entries(keptLines)
{
    setFont(QFont());
}

void LineRenderer::setSource(const LineSource *source, int tabWidth)
{
    m_entries.clear();
    m_source = source;
    m_tabWidth = tabWidth;
}

void LineRenderer::setFont(const QFont &font)
{
    m_entries.clear();
    m_font = font;
    const QFontMetricsF metrics(font);
    m_rowHeight = int(std::ceil(metrics.height())) + leading;
    m_baseline = std::floor((m_rowHeight - metrics.height()) / 2) + metrics.ascent();
    // One digit's own width may be rounded; a run of them shows what a cell really takes.
    constexpr int sample = 64;
    const auto measured = makeLayout(QString(sample, u'0'), 0);
    m_cellWidth = std::max<qreal>(measured->lineAt(0).naturalTextWidth() / sample, 1);
}

void LineRenderer::setShowsBlanks(bool shows)
{
    m_entries.clear();
    m_showsBlanks = shows;
}

LineRenderer::Entry &LineRenderer::entry(qsizetype line)
{
    if (Entry *known = m_entries.object(line))
        return *known;
    auto *made = new Entry(LineSegments(m_source->bytes(line), m_tabWidth));
    m_entries.insert(line, made);
    return *made;
}

std::unique_ptr<QTextLayout> LineRenderer::makeLayout(const QString &text, qint64 column) const
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
    layout->beginLayout();
    QTextLine line = layout->createLine();
    if (line.isValid())
        line.setLineWidth(unboundedWidth);
    layout->endLayout();
    return layout;
}

QTextLayout &LineRenderer::layout(Entry &entry, qsizetype segment)
{
    const auto known = entry.layouts.find(segment);
    if (known != entry.layouts.end())
        return *known->second;
    if (entry.layouts.size() >= keptSegments)
        entry.layouts.clear();
    const std::string_view utf8 = entry.segments.bytes(segment);
    const QString text = visibleText(QString::fromUtf8(utf8.data(), qsizetype(utf8.size())));
    return *entry.layouts.emplace(segment, makeLayout(text, entry.segments.at(segment).column)).first->second;
}

void LineRenderer::draw(QPainter &painter, qsizetype line, const QRectF &area, qreal scrolled, const QColor &colour,
                        const QList<Tint> &tints)
{
    Entry &drawn = entry(line);
    painter.setPen(colour);
    for (qsizetype index = drawn.segments.indexAtColumn(qint64(scrolled / m_cellWidth)); drawn.segments.contains(index);
         ++index) {
        const LineSegments::Segment segment = drawn.segments.at(index);
        const qreal x = qreal(segment.column) * m_cellWidth - scrolled;
        if (x >= area.width())
            break;
        const QTextLayout &text = layout(drawn, index);
        QList<QTextLayout::FormatRange> formats;
        for (const Tint &tint : tints) {
            const qsizetype first = std::max<qsizetype>(tint.first - segment.unit, 0);
            const qsizetype end = std::min<qsizetype>(tint.end - segment.unit, text.text().size());
            if (first >= end)
                continue;
            QTextLayout::FormatRange range{int(first), int(end - first), {}};
            range.format.setForeground(tint.colour);
            formats.append(range);
        }
        // A character from another font may reach higher than the font's own and would push the line down.
        const qreal top = area.top() + m_baseline - (text.lineCount() > 0 ? text.lineAt(0).ascent() : 0);
        text.draw(&painter, QPointF(area.left() + x, top), formats);
    }
}

void LineRenderer::drawLabel(QPainter &painter, const QRectF &area, Qt::Alignment alignment, const QString &text) const
{
    painter.setFont(m_font);
    painter.drawText(area.translated(0, m_baseline - QFontMetricsF(m_font).ascent()),
                     int(alignment | Qt::AlignTop) | Qt::TextSingleLine, text);
}

qreal LineRenderer::xOf(qsizetype line, qsizetype unit)
{
    Entry &asked = entry(line);
    const qsizetype index = asked.segments.indexAtUnit(unit);
    const LineSegments::Segment segment = asked.segments.at(index);
    const QTextLayout &text = layout(asked, index);
    const auto inside = int(std::clamp<qsizetype>(unit - segment.unit, 0, text.text().size()));
    const qreal shift = text.lineCount() > 0 ? text.lineAt(0).cursorToX(inside) : 0;
    return qreal(segment.column) * m_cellWidth + shift;
}

qsizetype LineRenderer::unitAt(qsizetype line, qreal x)
{
    Entry &asked = entry(line);
    const qsizetype index = asked.segments.indexAtColumn(qint64(std::max<qreal>(x, 0) / m_cellWidth));
    const LineSegments::Segment segment = asked.segments.at(index);
    const QTextLayout &text = layout(asked, index);
    const int inside = text.lineCount() > 0 ? text.lineAt(0).xToCursor(x - qreal(segment.column) * m_cellWidth) : 0;
    return segment.unit + inside;
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

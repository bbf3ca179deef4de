#include "session/pane/pane_painter.h"

#include "session/pane/syntax_colours.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QLocale>
#include <QPainter>

#include <cmath>
#include <limits>

namespace velmora {

namespace {

constexpr int hatchSize = 8;

/// A tile of thin diagonals, drawn in the pixels of the device.
QPixmap hatchTile(const QColor &back, const QColor &line, qreal pixelRatio)
{
    QPixmap tile(QSize(hatchSize, hatchSize) * pixelRatio);
    tile.setDevicePixelRatio(pixelRatio);
    tile.fill(back);
    QPainter painter(&tile);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(line, 1));
    for (int shift = -hatchSize; shift <= hatchSize; shift += hatchSize)
        painter.drawLine(QPointF(shift, hatchSize), QPointF(shift + hatchSize, 0));
    return tile;
}

} // namespace

PanePainter::PanePainter(QPainter &painter, PaneScene &scene, const PaneLook &look)
    : m_painter(painter), m_scene(scene), m_look(look), m_document(*scene.document()), m_inks(syntaxInks(isDarkTheme()))
{
    for (int role = 0; role < diffColourCount; ++role)
        m_colours[std::size_t(role)] = diffColour(DiffColour(role));
}

PanePainter::Row PanePainter::rowAt(qsizetype index, int y) const
{
    const RowLayout &layout = m_scene.layout();
    const qsizetype row = layout.rowAt(index);
    const int height = int(layout.linesAt(index)) * layout.rowHeight();
    const auto strip = [y, height](const QRect &area) { return QRect(area.left(), y, area.width(), height); };
    return {row,
            index,
            layout.stateOf(row),
            m_document.look(row, m_look.pane),
            m_document.cell(row, m_look.pane),
            strip(m_look.gutter),
            strip(m_look.text)};
}

void PanePainter::paint(const QRect &exposed)
{
    const RowLayout &layout = m_scene.layout();
    const RowRange inSight = layout.inSight(m_scene.top(), exposed.bottom() + 1);
    if (inSight.count == 0)
        return;
    m_scene.beginFrame(layout.rowAt(inSight.first), layout.rowAt(inSight.end() - 1), {m_look.pane});
    int y = int(layout.yOf(inSight.first, m_scene.top()));
    for (qsizetype index = inSight.first; index < inSight.end(); ++index) {
        const int height = int(layout.linesAt(index)) * layout.rowHeight();
        if (y + height > exposed.top()) {
            if (layout.isBand(index))
                paintBand(index, y);
            else
                paintRow(rowAt(index, y));
        }
        y += height;
    }
    m_scene.endFrame({m_look.pane});
}

void PanePainter::paintRow(const Row &row)
{
    paintBackground(row);
    paintGutter(row);
    if (row.cell.source)
        paintText(row);
    if (m_scene.layout().hidesRowsBefore(row.index))
        paintGap(row);
    if (m_scene.caret().position.row == row.row)
        paintCaretRow(row);
}

void PanePainter::paintText(const Row &row)
{
    m_painter.save();
    m_painter.setClipRect(row.text, Qt::IntersectClip);
    LineInks inks;
    inks.text = colour(row.cell.own ? DiffColour::Text : DiffColour::MutedText);
    inks.ofRoles = &m_inks;
    if (row.state == TextRowState::Modified || row.state == TextRowState::Minor)
        paintChanges(row, inks.over);
    paintMatches(row, inks.over);
    if (row.cell.own && m_scene.showsSyntax())
        inks.tokens = m_scene.colouring(m_look.pane).tokensOf(row.cell.line);
    // Only what is coloured needs to be given back the ink of the text.
    if (inks.tokens.empty())
        inks.over.clear();
    paintSelection(row, inks.over);
    const QRectF area = QRectF(row.text).adjusted(paneMetrics::textIndent, 0, 0, 0);
    m_scene.rendererOf(row.cell).draw(m_painter, row.cell.line, area, m_scene.scrolledX(row.cell), inks);
    if (!row.look.lineEnd.isEmpty())
        paintLineEnd(row);
    m_painter.restore();
}

void PanePainter::paintLineEnd(const Row &row)
{
    LineRenderer &renderer = m_scene.renderer(m_look.pane);
    const LineRenderer::Place end = renderer.placeOf(row.cell.line, renderer.length(row.cell.line));
    const QString &name = row.look.lineEnd;
    QRectF area = partArea(row, end.part).translated(end.x + renderer.cellWidth() / 2, 0);
    area.setWidth(QFontMetricsF(renderer.font()).horizontalAdvance(name) + renderer.cellWidth());
    if (!area.intersects(row.text))
        return;
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(colour(DiffColour::ModifiedStrong));
    m_painter.drawRoundedRect(area.adjusted(0, 1, 0, -1), 3, 3);
    m_painter.setPen(colour(DiffColour::Text));
    renderer.drawLabel(m_painter, area, Qt::AlignHCenter, name);
}

void PanePainter::paintGap(const Row &row)
{
    m_painter.fillRect(QRect(row.gutter.left(), row.text.top(), row.text.right() - row.gutter.left() + 1, 1),
                       colour(DiffColour::Gap));
}

void PanePainter::paintBand(qsizetype index, int y)
{
    const RowRange rows = m_scene.layout().rowsAt(index);
    const int height = m_scene.layout().rowHeight();
    const QRect area(m_look.gutter.left(), y, m_look.text.right() - m_look.gutter.left() + 1, height);
    const bool isCurrent = rows.contains(m_scene.caret().position.row);
    m_painter.fillRect(area, colour(DiffColour::Gutter));
    const QColor edge = colour(isCurrent ? DiffColour::Accent : DiffColour::Rule);
    m_painter.fillRect(QRect(area.left(), area.top(), area.width(), 1), edge);
    m_painter.fillRect(QRect(area.left(), area.bottom(), area.width(), 1), edge);
    const QString label = Velmora::tr("⋯ %1 equal lines").arg(QLocale().toString(rows.count));
    m_painter.setPen(colour(isCurrent && m_look.focused ? DiffColour::Text : DiffColour::MutedText));
    m_scene.renderer(m_look.pane)
        .drawLabel(m_painter, QRectF(m_look.text.left() + paneMetrics::textIndent, y, m_look.text.width(), height),
                   Qt::AlignLeft, label);
}

void PanePainter::paintBackground(const Row &row)
{
    if (row.cell.source)
        m_painter.fillRect(row.text, colour(row.look.background));
    else
        paintFiller(row);
}

void PanePainter::paintFiller(const Row &row)
{
    if (row.look.filler != DiffColour::Filler) {
        m_painter.fillRect(row.text, colour(row.look.filler));
        paintFillerText(row);
        return;
    }
    if (m_hatch.isNull()) {
        m_hatch = hatchTile(colour(DiffColour::Filler), colour(DiffColour::FillerHatch),
                            m_painter.device()->devicePixelRatioF());
    }
    // The pattern belongs to the content, so that it moves with it.
    const qint64 contentY = qint64(row.index) * m_scene.layout().rowHeight();
    m_painter.drawTiledPixmap(row.text, m_hatch, QPointF(row.text.left(), qreal(contentY % hatchSize)));
}

void PanePainter::paintFillerText(const Row &row)
{
    m_painter.save();
    m_painter.setClipRect(row.text, Qt::IntersectClip);
    m_painter.setPen(colour(DiffColour::Text));
    const QRectF area(row.text.left() + paneMetrics::textIndent, row.text.top(), row.text.width(),
                      m_scene.layout().rowHeight());
    m_scene.renderer(m_look.pane).drawLabel(m_painter, area, Qt::AlignLeft, row.look.fillerText);
    m_painter.restore();
}

void PanePainter::paintGutter(const Row &row)
{
    const bool isDifference = row.state != TextRowState::Equal && row.cell.source;
    const bool endsOnly = row.state > TextRowState::Minor;
    const DiffColour behind = endsOnly ? DiffColour::Modified : row.look.background;
    m_painter.fillRect(row.gutter, colour(isDifference ? behind : DiffColour::Gutter));
    const qsizetype block = m_scene.layout().blockOf(row.row);
    if (block >= 0 && block == m_scene.currentBlock()) {
        QRect bar = row.gutter;
        bar.setWidth(paneMetrics::marker);
        m_painter.fillRect(bar, colour(DiffColour::Accent));
    }
    if (m_scene.isAligned(row.row)) {
        QRect line = row.gutter;
        line.setTop(line.bottom() - 1);
        m_painter.fillRect(line, colour(DiffColour::Accent));
    }
    LineRenderer &labels = m_scene.renderer(m_look.pane);
    const int signWidth = int(std::ceil(labels.cellWidth()));
    const QRectF signs(row.gutter.right() + 1 - signWidth - paneMetrics::padding, row.gutter.top(),
                       signWidth + paneMetrics::padding, m_scene.layout().rowHeight());
    m_painter.setPen(colour(row.look.isSignFaint ? DiffColour::MutedText : DiffColour::Text));
    if (!row.look.sign.isNull())
        labels.drawLabel(m_painter, signs, Qt::AlignLeft, row.look.sign);
    const qint32 number = m_document.lineNumber(row.row, m_look.pane);
    if (number >= 1) {
        QRectF numbers = row.gutter;
        numbers.setRight(signs.left() - paneMetrics::padding);
        m_painter.setPen(colour(isDifference ? DiffColour::Text : DiffColour::MutedText));
        labels.drawLabel(m_painter, numbers, Qt::AlignRight, QString::number(number));
    }
}

QRectF PanePainter::partArea(const Row &row, qsizetype part)
{
    const int height = m_scene.layout().rowHeight();
    const qreal origin = row.text.left() + paneMetrics::textIndent - m_scene.scrolledX(row.cell);
    return {origin, row.text.top() + qreal(part) * height, qreal(row.text.width()), qreal(height)};
}

void PanePainter::paintUnits(const Row &row, qsizetype first, qsizetype end, const QColor &colour)
{
    const auto spans = m_scene.rendererOf(row.cell).spansOf(row.cell.line, first, end);
    for (const LineRenderer::Span &span : spans) {
        QRectF area = partArea(row, span.part);
        area.setRight(area.left() + span.right);
        area.setLeft(area.left() + span.left);
        m_painter.fillRect(area.intersected(QRectF(row.text)), colour);
    }
}

std::pair<qsizetype, qsizetype> PanePainter::unitsInSight(const Row &row)
{
    LineRenderer &renderer = m_scene.rendererOf(row.cell);
    if (renderer.isWrapped(row.cell.line)) {
        const qsizetype height = m_scene.layout().rowHeight();
        const auto above = qsizetype(std::max(-row.text.top(), 0)) / height;
        const auto below = above + m_scene.viewportHeight() / height + 1;
        return {renderer.unitAt(row.cell.line, 0, above), renderer.unitAt(row.cell.line, row.text.width(), below)};
    }
    return {renderer.unitAt(row.cell.line, m_scene.scrolledX() - paneMetrics::textIndent),
            renderer.unitAt(row.cell.line, m_scene.scrolledX() + row.text.width())};
}

void PanePainter::paintChanges(const Row &row, QList<Tint> &inks)
{
    const auto [first, last] = unitsInSight(row);
    for (qsizetype pair = 0; pair < m_scene.pairCount(); ++pair) {
        IntraLineChanges &found = m_scene.changes(pair);
        const RowChanges *changes = found.concerns(m_look.pane) ? found.changesOf(row.row) : nullptr;
        if (!changes)
            continue;
        const QList<LineMark> &marks = found.marksIn(*changes, m_look.pane);
        const auto inSight = std::partition_point(marks.begin(), marks.end(),
                                                  [first = first](const LineMark &mark) { return mark.end() < first; });
        for (auto mark = inSight; mark != marks.end() && mark->start <= last; ++mark) {
            paintUnits(row, std::max<qsizetype>(mark->start, first - 1), std::min<qsizetype>(mark->end(), last + 1),
                       markColour(mark->minor, colour(row.look.background), colour(row.look.strong)));
            inks.append({mark->start, mark->end(), colour(DiffColour::Text)});
        }
    }
}

void PanePainter::paintMatches(const Row &row, QList<Tint> &inks)
{
    if (!row.cell.own)
        return;
    const auto matches = m_scene.search().matchesIn(row.row, m_look.pane);
    if (matches.empty())
        return;
    const auto [first, last] = unitsInSight(row);
    const auto inSight = std::partition_point(matches.begin(), matches.end(), [first = first](const TextMatch &match) {
        return match.unit + match.length < first;
    });
    for (auto match = inSight; match != matches.end() && match->unit <= last; ++match) {
        paintUnits(row, match->unit, match->unit + match->length, colour(DiffColour::SearchHit));
        inks.append({match->unit, match->unit + match->length, colour(DiffColour::Text)});
    }
}

void PanePainter::paintSelection(const Row &row, QList<Tint> &inks)
{
    const TextCaret &caret = m_scene.caret();
    if (caret.pane != m_look.pane || !caret.hasSelection() || !row.cell.own)
        return;
    const TextPosition start = caret.selectionStart();
    const TextPosition end = caret.selectionEnd();
    if (row.row < start.row || row.row > end.row)
        return;
    LineRenderer &renderer = m_scene.renderer(m_look.pane);
    const auto [firstInSight, lastInSight] = unitsInSight(row);
    const qsizetype first = row.row == start.row ? start.unit : 0;
    const qsizetype shownFirst = std::max(first, firstInSight - 1);
    const qsizetype shownEnd = row.row == end.row ? std::min(end.unit, lastInSight + 1) : lastInSight + 1;
    if (shownFirst < shownEnd)
        paintUnits(row, shownFirst, shownEnd, colour(DiffColour::Selection));
    if (row.row < end.row) {
        // A selected line end is shown as half a cell.
        const LineRenderer::Place end = renderer.placeOf(row.cell.line, lastInSight + 1);
        QRectF area = partArea(row, end.part).translated(end.x, 0);
        area.setWidth(renderer.cellWidth() / 2);
        m_painter.fillRect(area, colour(DiffColour::Selection));
    }
    // The whole of it and not what is in sight, so that scrolling sideways changes no layout.
    const qsizetype behind = row.row == end.row ? end.unit : std::numeric_limits<qsizetype>::max();
    inks.append({first, behind, colour(DiffColour::SelectedText)});
}

void PanePainter::paintCaretRow(const Row &row)
{
    const QColor frame = colour(DiffColour::Accent);
    const int left = row.gutter.left();
    const int width = row.text.right() - left + 1;
    m_painter.fillRect(QRect(left, row.text.top(), width, 1), frame);
    m_painter.fillRect(QRect(left, row.text.bottom(), width, 1), frame);
    if (m_look.focused && m_scene.caret().pane == m_look.pane)
        paintCaret(row);
}

void PanePainter::paintCaret(const Row &row)
{
    LineRenderer::Place place;
    if (row.cell.source) {
        place = m_scene.rendererOf(row.cell).placeOf(row.cell.line, m_scene.caret().position.unit);
    }
    const QRectF area = partArea(row, place.part);
    const qreal x = area.left() + place.x;
    if (x >= row.text.left())
        m_painter.fillRect(QRectF(std::round(x), area.top() + 1, 2, area.height() - 2), colour(DiffColour::Text));
}

} // namespace velmora

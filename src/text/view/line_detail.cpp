#include "text/view/line_detail.h"

#include "session/theme.h"
#include "session/translate.h"
#include "text/view/diff_document.h"

#include <QPainter>

namespace velmora {

namespace {

constexpr int padding = 4;
constexpr int numberCells = 9;

} // namespace

LineDetail::LineDetail(PaneScene &scene, QWidget *parent) : QWidget(parent), m_scene(scene)
{
    setObjectName(QStringLiteral("lineDetail"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(Velmora::tr("The two current lines"));
    for (const Side side : {Side::Left, Side::Right})
        m_renderers[side].setShowsBlanks(true);
    const auto repaint = [this] { update(); };
    connect(&scene, &PaneScene::caretMoved, this, repaint);
    connect(&scene, &PaneScene::scrolled, this, repaint);
    connect(&scene, &PaneScene::repaintWanted, this, repaint);
    connect(&scene, &PaneScene::metricsChanged, this, &LineDetail::takeFont);
    connect(&scene, &PaneScene::documentChanged, this, &LineDetail::takeDocument);
    takeFont();
    takeDocument();
}

QSize LineDetail::sizeHint() const
{
    return {400, 2 * m_renderers.left.rowHeight() + 2 * padding + 1};
}

void LineDetail::takeFont()
{
    if (m_renderers.left.font() == m_scene.font())
        return;
    for (const Side side : {Side::Left, Side::Right})
        m_renderers[side].setFont(m_scene.font());
    setFixedHeight(sizeHint().height());
}

void LineDetail::takeDocument()
{
    const PaneDocument *document = m_scene.document();
    for (const Side side : {Side::Left, Side::Right})
        m_renderers[side].setSource(document ? &document->source(side) : nullptr, document ? document->tabWidth() : 4);
    update();
}

QRect LineDetail::lineArea(Side side) const
{
    const int height = m_renderers.left.rowHeight();
    return {0, 1 + padding + (side == Side::Left ? 0 : height), width(), height};
}

void LineDetail::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), diffColour(DiffColour::Background));
    painter.fillRect(QRect(0, 0, width(), 1), diffColour(DiffColour::Rule));
    const DiffDocument *document = diffIn(m_scene);
    const qsizetype row = m_scene.caret().position.row;
    if (!document || row >= document->rowCount())
        return;
    const bool mayDiffer = document->kind(row) == Modified || document->differsUnimportantly(row);
    m_scene.beginFrame(row, row, {Side::Left, Side::Right});
    const RowChanges *changes = mayDiffer ? m_scene.changes().changesOf(row) : nullptr;
    paintSide(painter, row, Side::Left, changes);
    paintSide(painter, row, Side::Right, changes);
    m_scene.endFrame({Side::Left, Side::Right});
}

void LineDetail::paintSide(QPainter &painter, qsizetype row, Side side, const RowChanges *changes)
{
    const DiffDocument &document = *diffIn(m_scene);
    const DiffDocument::Cell cell = document.cell(row, side);
    const QRect area = lineArea(side);
    LineRenderer &renderer = m_renderers[sideOf(cell.pane)];
    const int gutter = int(numberCells * renderer.cellWidth());
    painter.fillRect(QRect(area.left(), area.top(), gutter, area.height()), diffColour(DiffColour::Gutter));
    const QRectF text(gutter, area.top(), area.width() - gutter, area.height());
    if (!cell.source) {
        painter.fillRect(text, diffColour(DiffColour::Filler));
        return;
    }
    const QColor background = diffColour(document.look(row, side).background);
    painter.fillRect(text, background);
    painter.setPen(diffColour(DiffColour::MutedText));
    const qint32 number = document.lineNumber(row, side);
    if (number >= 1) {
        renderer.drawLabel(painter, QRectF(0, area.top(), gutter - padding, area.height()), Qt::AlignRight,
                           QString::number(number));
    }
    painter.setClipRect(text);
    const QRectF lineText = text.adjusted(padding, 0, 0, 0);
    LineInks inks;
    inks.text = diffColour(DiffColour::Text);
    const RoleInks ofRoles = syntaxInks(isDarkTheme());
    inks.ofRoles = &ofRoles;
    if (cell.own && m_scene.showsSyntax())
        inks.tokens = m_scene.colouring(side).tokensOf(cell.line);
    if (changes) {
        for (const LineMark &mark : m_scene.changes().marksIn(*changes, side)) {
            const qreal left = lineText.left() - m_scene.scrolledX() + renderer.xOf(cell.line, mark.start);
            if (left > text.right())
                break;
            const qreal right = lineText.left() - m_scene.scrolledX() + renderer.xOf(cell.line, mark.end());
            painter.fillRect(QRectF(left, text.top(), right - left, text.height()).intersected(text),
                             markColour(mark.minor, background, diffColour(DiffColour::ModifiedStrong)));
            if (!inks.tokens.empty())
                inks.over.append({mark.start, mark.end(), inks.text});
        }
    }
    renderer.draw(painter, cell.line, lineText, m_scene.scrolledX(), inks);
    painter.setClipping(false);
}

} // namespace velmora

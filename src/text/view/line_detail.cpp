#include "text/view/line_detail.h"

#include "session/theme.h"
#include "session/translate.h"
#include "text/view/row_colours.h"

#include <QPainter>

namespace velmora {

namespace {

constexpr int padding = 4;
constexpr int numberCells = 9;

} // namespace

LineDetail::LineDetail(DiffScene &scene, QWidget *parent) : QWidget(parent), m_scene(scene)
{
    setObjectName(QStringLiteral("lineDetail"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(Velmora::tr("The two current lines"));
    for (LineRenderer *renderer : {&m_left, &m_right})
        renderer->setShowsBlanks(true);
    const auto repaint = [this] { update(); };
    connect(&scene, &DiffScene::caretMoved, this, repaint);
    connect(&scene, &DiffScene::scrolled, this, repaint);
    connect(&scene, &DiffScene::repaintWanted, this, repaint);
    connect(&scene, &DiffScene::metricsChanged, this, &LineDetail::takeFont);
    connect(&scene, &DiffScene::documentChanged, this, &LineDetail::takeDocument);
    takeFont();
    takeDocument();
}

QSize LineDetail::sizeHint() const
{
    return {400, 2 * m_left.rowHeight() + 2 * padding + 1};
}

void LineDetail::takeFont()
{
    if (m_left.font() == m_scene.font())
        return;
    m_left.setFont(m_scene.font());
    m_right.setFont(m_scene.font());
    setFixedHeight(sizeHint().height());
}

void LineDetail::takeDocument()
{
    const DiffDocument *document = m_scene.document();
    m_left.setSource(document ? &document->source(Side::Left) : nullptr, document ? document->tabWidth() : 4);
    m_right.setSource(document ? &document->source(Side::Right) : nullptr, document ? document->tabWidth() : 4);
    update();
}

QRect LineDetail::lineArea(Side side) const
{
    const int height = m_left.rowHeight();
    return {0, 1 + padding + (side == Side::Left ? 0 : height), width(), height};
}

void LineDetail::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), diffColour(DiffColour::Background));
    painter.fillRect(QRect(0, 0, width(), 1), diffColour(DiffColour::Rule));
    const DiffDocument *document = m_scene.document();
    const qsizetype row = m_scene.caret().position.row;
    if (!document || row >= document->rowCount())
        return;
    const bool mayDiffer = document->kind(row) == Modified || document->differsUnimportantly(row);
    m_scene.changes().beginFrame(row, row);
    for (const Side side : {Side::Left, Side::Right})
        m_scene.colouring(side).beginFrame();
    const RowChanges *changes = mayDiffer ? m_scene.changes().changesOf(row) : nullptr;
    paintSide(painter, row, Side::Left, changes);
    paintSide(painter, row, Side::Right, changes);
    m_scene.changes().endFrame();
    for (const Side side : {Side::Left, Side::Right})
        m_scene.colouring(side).endFrame();
}

void LineDetail::paintSide(QPainter &painter, qsizetype row, Side side, const RowChanges *changes)
{
    const DiffDocument &document = *m_scene.document();
    const DiffDocument::Cell cell = document.cell(row, side);
    const QRect area = lineArea(side);
    LineRenderer &renderer = rendererOf(cell.own ? side : otherSide(side));
    const int gutter = int(numberCells * renderer.cellWidth());
    painter.fillRect(QRect(area.left(), area.top(), gutter, area.height()), diffColour(DiffColour::Gutter));
    const QRectF text(gutter, area.top(), area.width() - gutter, area.height());
    if (!cell.source) {
        painter.fillRect(text, diffColour(DiffColour::Filler));
        return;
    }
    const QColor background = diffColour(rowBackground(document.kind(row), document.differsUnimportantly(row)));
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
        for (const LineMark &mark : changes->marksOf(side)) {
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

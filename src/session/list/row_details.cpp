#include "session/list/row_details.h"

#include "core/value_entries.h"
#include "core/visible_name.h"
#include "session/diff_colours.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>

namespace velmora {

namespace {

QPlainTextEdit *valueBox(const char *name, const QString &title, QWidget *parent)
{
    auto *box = new QPlainTextEdit(parent);
    box->setObjectName(QLatin1String(name));
    box->setAccessibleName(title);
    box->setReadOnly(true);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box->setTabChangesFocus(true);
    box->setFrameShape(QFrame::NoFrame);
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(parent->font().pointSizeF());
    box->setFont(fixed);
    return box;
}

/// One side of a row: what stands in a line, and the colour behind the whole of it.
struct Line {
    QString text;
    std::optional<DiffColour> colour;
};

void showLines(QPlainTextEdit &box, const QList<Line> &lines)
{
    QStringList texts;
    for (const Line &line : lines)
        texts.append(line.text);
    box.setPlainText(texts.join(u'\n'));
    QList<QTextEdit::ExtraSelection> selections;
    QTextBlock block = box.document()->firstBlock();
    for (const Line &line : lines) {
        if (line.colour) {
            QTextEdit::ExtraSelection selection;
            selection.cursor = QTextCursor(block);
            selection.format.setBackground(diffColour(*line.colour));
            if (*line.colour != DiffColour::Filler)
                selection.format.setForeground(diffColour(DiffColour::Text));
            selection.format.setProperty(QTextFormat::FullWidthSelection, true);
            selections.append(selection);
        }
        block = block.next();
    }
    box.setExtraSelections(selections);
}

/// The value of a side that is no list.
QList<Line> wholeValue(const KeyedRow &row, Side side, DiffColour alone)
{
    const QString &value = side == Side::Left ? row.left : row.right;
    if (!isOn(row.status, side))
        return {{value, DiffColour::Filler}};
    if (row.status == PairStatus::Same)
        return {{value, std::nullopt}};
    return {{value, row.status == PairStatus::Changed ? DiffColour::Modified : alone}};
}

} // namespace

RowDetails::RowDetails(QWidget *parent)
    : QWidget(parent),
      m_title(new QLabel(this)),
      m_note(new QLabel(this)),
      m_left(valueBox("leftValue", Velmora::tr("Left value"), this)),
      m_right(valueBox("rightValue", Velmora::tr("Right value"), this))
{
    setObjectName(QStringLiteral("rowDetails"));
    m_title->setObjectName(QStringLiteral("detailsTitle"));
    m_title->setTextFormat(Qt::PlainText);
    m_title->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont bold = m_title->font();
    bold.setWeight(QFont::DemiBold);
    m_title->setFont(bold);
    m_note->setTextFormat(Qt::PlainText);
    m_note->setForegroundRole(QPalette::PlaceholderText);
    // Long names must not make the window wider.
    m_title->setMinimumWidth(1);
    m_note->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    auto *heading = new QHBoxLayout;
    heading->setContentsMargins(8, 4, 8, 0);
    heading->setSpacing(12);
    heading->addWidget(m_title);
    heading->addWidget(m_note, 1);
    auto *values = new QSplitter(Qt::Horizontal, this);
    values->setHandleWidth(3);
    values->setChildrenCollapsible(false);
    values->addWidget(m_left);
    values->addWidget(m_right);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addLayout(heading);
    column->addWidget(values, 1);

    for (const auto &[from, to] : {std::pair(m_left, m_right), std::pair(m_right, m_left)}) {
        connect(from->verticalScrollBar(), &QScrollBar::valueChanged, to->verticalScrollBar(), &QScrollBar::setValue);
        connect(from->horizontalScrollBar(), &QScrollBar::valueChanged, to->horizontalScrollBar(),
                &QScrollBar::setValue);
    }
    clear();
}

void RowDetails::showRow(const KeyedRow &row, const QString &status)
{
    if (!m_empty && row == m_row && status == m_status)
        return;
    m_empty = false;
    m_row = row;
    m_status = status;
    showTitle();
    const bool saysMore = !row.note.isEmpty() && row.note != status;
    m_note->setText(saysMore ? row.note + QStringLiteral("  \u00b7  ") + status : status);
    const QStringList left = valueEntries(row.left);
    const QStringList right = valueEntries(row.right);
    const bool areLists = !left.isEmpty() || !right.isEmpty();
    for (QPlainTextEdit *box : {m_left, m_right}) // the lines of lists stay level
        box->setLineWrapMode(areLists ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
    if (areLists) {
        showLists(left.isEmpty() && !row.left.isEmpty() ? QStringList(row.left) : left,
                  right.isEmpty() && !row.right.isEmpty() ? QStringList(row.right) : right);
    } else {
        showLines(*m_left, wholeValue(row, Side::Left, DiffColour::Removed));
        showLines(*m_right, wholeValue(row, Side::Right, DiffColour::Added));
    }
}

void RowDetails::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    showTitle();
}

/// A path is told apart by both of its ends.
void RowDetails::showTitle()
{
    constexpr double share = 0.72; // the rest is the note's
    const QString title = m_empty ? Velmora::tr("Details") : visibleName(m_row.key);
    const QString shown = m_title->fontMetrics().elidedText(title, Qt::ElideMiddle, int(width() * share));
    m_title->setText(shown);
    m_title->setToolTip(shown == title ? QString() : title);
}

void RowDetails::showLists(const QStringList &left, const QStringList &right)
{
    QList<Line> leftLines;
    QList<Line> rightLines;
    const auto put = [](bool here, bool there, const QString &text, DiffColour alone, QList<Line> &lines) {
        lines.append(
            {here ? text : QString(), here && there ? std::nullopt : std::optional(here ? alone : DiffColour::Filler)});
    };
    for (const EntryRow &row : alignEntries(left, right)) {
        put(row.onLeft, row.onRight, row.text, DiffColour::Removed, leftLines);
        put(row.onRight, row.onLeft, row.text, DiffColour::Added, rightLines);
    }
    showLines(*m_left, leftLines);
    showLines(*m_right, rightLines);
}

void RowDetails::clear()
{
    m_empty = true;
    showTitle();
    m_note->setText(Velmora::tr("Select a row to see its values in full."));
    for (QPlainTextEdit *box : {m_left, m_right}) {
        box->clear();
        box->setExtraSelections({});
    }
}

void RowDetails::refreshTheme()
{
    if (!std::exchange(m_empty, true))
        showRow(m_row, m_status);
}

} // namespace velmora

#include "system/snapshot_details.h"

#include "session/diff_colours.h"
#include "session/translate.h"
#include "system/engine/value_entries.h"
#include "system/snapshot_rows_model.h"

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

/// Lays colours behind whole lines.
void colourLines(QPlainTextEdit &box, const std::vector<std::optional<DiffColour>> &colours)
{
    QList<QTextEdit::ExtraSelection> selections;
    QTextBlock block = box.document()->firstBlock();
    for (std::size_t line = 0; line < colours.size() && block.isValid(); ++line, block = block.next()) {
        if (!colours[line])
            continue;
        QTextEdit::ExtraSelection selection;
        selection.cursor = QTextCursor(block);
        selection.format.setBackground(diffColour(*colours[line]));
        if (*colours[line] != DiffColour::Filler)
            selection.format.setForeground(diffColour(DiffColour::Text));
        selection.format.setProperty(QTextFormat::FullWidthSelection, true);
        selections.append(selection);
    }
    box.setExtraSelections(selections);
}

} // namespace

SnapshotDetails::SnapshotDetails(QWidget *parent)
    : QWidget(parent),
      m_title(new QLabel(this)),
      m_note(new QLabel(this)),
      m_left(valueBox("leftValue", Velmora::tr("Left value"), this)),
      m_right(valueBox("rightValue", Velmora::tr("Right value"), this))
{
    setObjectName(QStringLiteral("snapshotDetails"));
    m_title->setObjectName(QStringLiteral("detailsTitle"));
    m_title->setTextFormat(Qt::PlainText);
    m_title->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont bold = m_title->font();
    bold.setWeight(QFont::DemiBold);
    m_title->setFont(bold);
    m_note->setTextFormat(Qt::PlainText);
    m_note->setForegroundRole(QPalette::PlaceholderText);
    // A long name must not make the window wider.
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

void SnapshotDetails::showRow(const SnapshotRow &row)
{
    if (!m_empty && row == m_row)
        return;
    m_empty = false;
    m_row = row;
    m_title->setText(row.key);
    m_note->setText(row.note.isEmpty() ? snapshotStatusText(row.status)
                                       : row.note + QStringLiteral("  \u00b7  ") + snapshotStatusText(row.status));
    const QStringList left = valueEntries(row.left);
    const QStringList right = valueEntries(row.right);
    if (left.isEmpty() && right.isEmpty())
        showTexts(row);
    else
        showLists(left.isEmpty() && !row.left.isEmpty() ? QStringList(row.left) : left,
                  right.isEmpty() && !row.right.isEmpty() ? QStringList(row.right) : right);
}

void SnapshotDetails::showTexts(const SnapshotRow &row)
{
    for (QPlainTextEdit *box : {m_left, m_right})
        box->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_left->setPlainText(row.left);
    m_right->setPlainText(row.right);
    const auto colourOf = [&row](SnapshotStatus lacking, DiffColour alone) -> std::optional<DiffColour> {
        if (row.status == lacking)
            return DiffColour::Filler;
        if (row.status == SnapshotStatus::Same)
            return std::nullopt;
        return row.status == SnapshotStatus::Changed ? DiffColour::Modified : alone;
    };
    colourLines(*m_left, {colourOf(SnapshotStatus::RightOnly, DiffColour::Removed)});
    colourLines(*m_right, {colourOf(SnapshotStatus::LeftOnly, DiffColour::Added)});
}

void SnapshotDetails::showLists(const QStringList &left, const QStringList &right)
{
    QStringList leftLines;
    QStringList rightLines;
    std::vector<std::optional<DiffColour>> leftColours;
    std::vector<std::optional<DiffColour>> rightColours;
    const auto put = [](bool here, bool there, const QString &text, DiffColour alone, QStringList &lines,
                        std::vector<std::optional<DiffColour>> &colours) {
        lines.append(here ? text : QString());
        colours.push_back(here && there ? std::nullopt : std::optional(here ? alone : DiffColour::Filler));
    };
    for (const EntryRow &row : alignEntries(left, right)) {
        put(row.onLeft, row.onRight, row.text, DiffColour::Removed, leftLines, leftColours);
        put(row.onRight, row.onLeft, row.text, DiffColour::Added, rightLines, rightColours);
    }
    for (QPlainTextEdit *box : {m_left, m_right})
        box->setLineWrapMode(QPlainTextEdit::NoWrap); // so that the lines of both sides stay level
    m_left->setPlainText(leftLines.join(u'\n'));
    m_right->setPlainText(rightLines.join(u'\n'));
    colourLines(*m_left, leftColours);
    colourLines(*m_right, rightColours);
}

void SnapshotDetails::clear()
{
    m_empty = true;
    m_title->setText(Velmora::tr("Details"));
    m_note->setText(Velmora::tr("Select a row to see its values in full."));
    for (QPlainTextEdit *box : {m_left, m_right}) {
        box->clear();
        box->setExtraSelections({});
    }
}

void SnapshotDetails::refreshTheme()
{
    if (!std::exchange(m_empty, true))
        showRow(m_row);
}

} // namespace velmora

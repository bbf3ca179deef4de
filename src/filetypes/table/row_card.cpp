#include "filetypes/table/row_card.h"

#include "filetypes/table/row_card_model.h"
#include "filetypes/table/table_colours.h"
#include "filetypes/table/table_scene.h"
#include "session/diff_colours.h"
#include "session/translate.h"

#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextLayout>
#include <QTreeView>

#include <algorithm>

namespace velmora {

namespace {

constexpr int margin = 5;
constexpr int mostLines = 12; ///< of a value that are shown

/// A value with its line breaks, wrapped, the characters that differ on a stronger ground.
class ValueDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        const auto colour = TableColour(index.data(RowCardModel::ColourRole).toInt());
        painter->save();
        painter->setClipRect(option.rect);
        painter->fillRect(option.rect, tableColour(colour));
        painter->setPen(diffColour(DiffColour::Text));
        QTextLayout text(shown(index), option.font);
        text.setFormats(formats(index));
        layOut(text, option.rect.width());
        text.draw(painter, option.rect.topLeft() + QPointF(margin, margin));
        if (isSelected)
            painter->fillRect(QRect(option.rect.left(), option.rect.bottom() - 1, option.rect.width(), 2),
                              diffColour(DiffColour::Accent));
        painter->restore();
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const auto *view = qobject_cast<const QTreeView *>(option.widget);
        const int width = view ? view->columnWidth(index.column()) : option.rect.width();
        QTextLayout text(shown(index), option.font);
        return {width, layOut(text, width) + 2 * margin};
    }

private:
    static QString shown(const QModelIndex &index)
    {
        return index.data(Qt::DisplayRole).toString().replace(u'\n', QChar::LineSeparator);
    }

    static QList<QTextLayout::FormatRange> formats(const QModelIndex &index)
    {
        QTextCharFormat changed;
        changed.setBackground(
            diffColour(index.column() == RowCardModel::Left ? DiffColour::RemovedStrong : DiffColour::AddedStrong));
        changed.setFontUnderline(true);
        QList<QTextLayout::FormatRange> ranges;
        for (const CharRange &range : index.data(RowCardModel::ChangesRole).value<QList<CharRange>>())
            ranges.append({range.start, range.length, changed});
        return ranges;
    }

    /// Returns the height.
    static int layOut(QTextLayout &text, int width)
    {
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        text.setTextOption(option);
        text.beginLayout();
        qreal height = 0;
        for (int lines = 0; lines < mostLines; ++lines) {
            QTextLine line = text.createLine();
            if (!line.isValid())
                break;
            line.setLineWidth(std::max(20, width - 2 * margin));
            line.setPosition({0, height});
            height += line.height();
        }
        text.endLayout();
        return int(height + 1);
    }
};

} // namespace

RowCard::RowCard(TableScene &scene, QWidget *parent)
    : QWidget(parent),
      m_scene(scene),
      m_title(new QLabel(this)),
      m_order(new QComboBox(this)),
      m_values(new RowCardModel(scene, this)),
      m_view(new QTreeView(this))
{
    setObjectName(QStringLiteral("rowCard"));
    m_title->setObjectName(QStringLiteral("rowCardTitle"));
    m_title->setTextFormat(Qt::PlainText);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_order->setObjectName(QStringLiteral("rowCardOrder"));
    m_order->setAccessibleName(Velmora::tr("Which columns the card shows"));
    m_order->addItems(
        {Velmora::tr("All columns"), Velmora::tr("Differing columns first"), Velmora::tr("Only differing columns")});
    m_view->setObjectName(QStringLiteral("rowCardView"));
    m_view->setAccessibleName(Velmora::tr("Values of the current row"));
    m_view->setModel(m_values);
    m_view->setItemDelegateForColumn(RowCardModel::Left, new ValueDelegate(m_view));
    m_view->setItemDelegateForColumn(RowCardModel::Right, new ValueDelegate(m_view));
    m_view->setRootIsDecorated(false);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    m_view->header()->setStretchLastSection(false);
    m_view->header()->setSectionResizeMode(RowCardModel::Name, QHeaderView::Interactive);
    m_view->header()->setSectionResizeMode(RowCardModel::Left, QHeaderView::Stretch);
    m_view->header()->setSectionResizeMode(RowCardModel::Right, QHeaderView::Stretch);
    m_view->header()->resizeSection(RowCardModel::Name, 150);

    auto *heading = new QHBoxLayout;
    heading->setContentsMargins(4, 2, 2, 0);
    heading->addWidget(m_title, 1);
    heading->addWidget(m_order);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addLayout(heading);
    column->addWidget(m_view, 1);

    connect(m_order, &QComboBox::currentIndexChanged, this, [this](int order) {
        m_values->setOrder(RowCardModel::Order(order));
        tell(m_values->row());
    });
    // Lines are as high as their values need in the new width.
    connect(m_view->header(), &QHeaderView::sectionResized, m_view, &QTreeView::doItemsLayout, Qt::QueuedConnection);
    connect(&scene, &TableScene::aboutToChange, this, [this] { showRow(-1); });
    showRow(-1);
}

void RowCard::showRow(qint32 row)
{
    m_values->showRow(row);
    tell(row);
}

void RowCard::tell(qint32 row)
{
    if (row < 0) {
        m_title->setText(Velmora::tr("Select a row to see its values in full."));
        return;
    }
    const AlignedTableRow &aligned = m_scene.row(row);
    if (aligned.right < 0)
        m_title->setText(Velmora::tr("Row %1, left only").arg(QLocale().toString(aligned.left + 1)));
    else if (aligned.left < 0)
        m_title->setText(Velmora::tr("Row %1, right only").arg(QLocale().toString(aligned.right + 1)));
    else
        m_title->setText(Velmora::tr("Left row %1, right row %2  |  Differing columns: %3")
                             .arg(QLocale().toString(aligned.left + 1), QLocale().toString(aligned.right + 1),
                                  QLocale().toString(m_values->differing())));
}

bool RowCard::hasKeyboard() const
{
    return m_view->hasFocus();
}

void RowCard::copy() const
{
    std::vector<int> lines;
    for (const QModelIndex &index : m_view->selectionModel()->selectedRows())
        lines.push_back(index.row());
    std::sort(lines.begin(), lines.end());
    const bool isWhole = lines.empty();
    QString text;
    const int count = isWhole ? m_values->rowCount() : int(lines.size());
    for (int k = 0; k < count; ++k)
        text += m_values->line(isWhole ? k : lines[std::size_t(k)]);
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
}

int RowCard::order() const
{
    return m_order->currentIndex();
}

void RowCard::setOrder(int order)
{
    m_order->setCurrentIndex(std::clamp(order, 0, m_order->count() - 1));
}

void RowCard::refreshTheme()
{
    m_view->viewport()->update();
}

} // namespace velmora

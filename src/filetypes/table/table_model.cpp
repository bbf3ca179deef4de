#include "filetypes/table/table_model.h"

#include "filetypes/table/column_words.h"
#include "filetypes/table/field_text.h"
#include "filetypes/table/table_colours.h"
#include "filetypes/table/table_scene.h"
#include "session/diff_colours.h"
#include "session/plain_text.h"
#include "session/translate.h"

#include <QPainter>
#include <QPixmap>

namespace velmora {

namespace {

constexpr qsizetype toolTipLength = 2000;

QChar signOf(TableRowStatus status)
{
    switch (status) {
    case TableRowStatus::Modified:
        return QChar(0x2260);
    case TableRowStatus::LeftOnly:
        return QChar(0x2212);
    case TableRowStatus::RightOnly:
        return u'+';
    case TableRowStatus::Same:
        break;
    }
    return u' ';
}

QIcon drawnSign(QChar sign)
{
    constexpr int size = 32;
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QFont font = painter.font();
    font.setPixelSize(size - 4);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(diffColour(DiffColour::Text));
    painter.drawText(picture.rect(), Qt::AlignCenter, sign);
    return QIcon(picture);
}

} // namespace

TableModel::TableModel(TableScene &scene, Side side, QObject *parent)
    : QAbstractTableModel(parent), m_scene(scene), m_side(side)
{
    connect(&scene, &TableScene::aboutToChange, this, [this] { beginResetModel(); });
    connect(&scene, &TableScene::changed, this, [this] { endResetModel(); });
    refreshTheme();
}

int TableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_scene.placeCount();
}

int TableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_scene.columnPlaces();
}

QVariant TableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const qint32 row = m_scene.rowAt(index.row());
    const AlignedTableRow &aligned = m_scene.row(row);
    const TableScene::Cell &cell = m_scene.cells(row)[std::size_t(m_scene.columnAt(index.column()))];
    switch (role) {
    case Qt::DisplayRole:
        return aligned.row(m_side) < 0 ? QString() : shownField(cell.fields[m_side]);
    case Qt::ToolTipRole:
        return plainToolTip(fullText(index));
    case ColourRole:
        return int(tableColourOf(aligned.status, cell.status, aligned.row(m_side) >= 0));
    case ChangedRole:
        return cell.status == TableCellStatus::Modified;
    case LeftOutRole: {
        const ColumnRule *rule = m_scene.document()->alignment.ruleOf(m_scene.columnAt(index.column()));
        return rule && rule->isLeftOut;
    }
    default:
        return {};
    }
}

QString TableModel::fullText(const QModelIndex &index) const
{
    const qint32 row = m_scene.rowAt(index.row());
    const TableScene::Cell &cell = m_scene.cells(row)[std::size_t(m_scene.columnAt(index.column()))];
    QString text;
    if (cell.status == TableCellStatus::Modified) {
        text = Velmora::tr("Left: %1").arg(beginningOfField(cell.fields.left, toolTipLength)) + u'\n' +
               Velmora::tr("Right: %1").arg(beginningOfField(cell.fields.right, toolTipLength));
    } else if (m_scene.row(row).row(m_side) >= 0) {
        text = beginningOfField(cell.fields[m_side], toolTipLength);
    }
    return text;
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Vertical ? rowHeader(section, role) : columnHeader(section, role);
}

QVariant TableModel::rowHeader(int place, int role) const
{
    if (place < 0 || place >= m_scene.placeCount())
        return {};
    const AlignedTableRow &row = m_scene.row(m_scene.rowAt(place));
    const qint32 record = row.row(m_side);
    switch (role) {
    case Qt::DisplayRole:
        return record < 0 ? QString() : QString::number(record + 1);
    case Qt::DecorationRole:
        return record < 0 ? QVariant() : m_signs[std::size_t(row.status)];
    case Qt::TextAlignmentRole:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant TableModel::columnHeader(int place, int role) const
{
    if (place < 0 || place >= m_scene.columnPlaces())
        return {};
    const qint32 column = m_scene.columnAt(place);
    switch (role) {
    case Qt::DisplayRole:
        return shownField(m_scene.document()->alignment.columns.name(column).toStdString());
    case Qt::ToolTipRole:
        return plainToolTip(columnHint(*m_scene.document(), column));
    case Qt::TextAlignmentRole:
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return {};
    }
}

void TableModel::refreshTheme()
{
    for (const TableRowStatus status :
         {TableRowStatus::Same, TableRowStatus::Modified, TableRowStatus::LeftOnly, TableRowStatus::RightOnly})
        m_signs[std::size_t(status)] = drawnSign(signOf(status));
}

} // namespace velmora

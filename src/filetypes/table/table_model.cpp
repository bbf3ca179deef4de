#include "filetypes/table/table_model.h"

#include "core/utf8_text.h"
#include "core/visible_name.h"
#include "filetypes/table/table_colours.h"
#include "filetypes/table/table_scene.h"
#include "session/diff_colours.h"
#include "session/plain_text.h"
#include "session/translate.h"

#include <QPainter>
#include <QPixmap>

namespace velmora {

namespace {

/// Of a field that may have megabytes this much is looked at, and of that so many characters are shown.
constexpr std::size_t bytesLookedAt = 8192;
constexpr qsizetype shownLength = 400;
constexpr qsizetype toolTipLength = 2000;

QString beginningOf(std::string_view field, qsizetype length)
{
    std::string_view begin = field.substr(0, bytesLookedAt);
    // Not within a character.
    while (begin.size() < field.size() && !begin.empty() && (field[begin.size()] & 0xC0) == 0x80)
        begin.remove_suffix(1);
    std::string buffer;
    QString text = textOfUtf8(fieldValue(begin, buffer));
    const bool isCut = begin.size() < field.size() || text.size() > length;
    text.truncate(text.size() > length && text[length - 1].isHighSurrogate() ? length - 1 : length);
    return isCut ? text + QChar(0x2026) : text;
}

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

QString shownField(std::string_view field)
{
    QString text = beginningOf(field, shownLength);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\n', QChar(0x21B5));
    return visibleName(text);
}

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
    return parent.isValid() ? 0 : m_scene.columnCount();
}

QVariant TableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const qint32 row = m_scene.rowAt(index.row());
    const AlignedTableRow &aligned = m_scene.row(row);
    const TableScene::Cell &cell = m_scene.cells(row)[std::size_t(index.column())];
    switch (role) {
    case Qt::DisplayRole:
        return aligned.row(m_side) < 0 ? QString() : shownField(cell.fields[m_side]);
    case Qt::ToolTipRole:
        return plainToolTip(fullText(index));
    case ColourRole:
        return int(tableColourOf(aligned.status, cell.status, aligned.row(m_side) >= 0));
    case ChangedRole:
        return cell.status == TableCellStatus::Modified;
    default:
        return {};
    }
}

QString TableModel::fullText(const QModelIndex &index) const
{
    const qint32 row = m_scene.rowAt(index.row());
    const TableScene::Cell &cell = m_scene.cells(row)[std::size_t(index.column())];
    QString text;
    if (cell.status == TableCellStatus::Modified) {
        text = Velmora::tr("Left: %1").arg(beginningOf(cell.fields.left, toolTipLength)) + u'\n' +
               Velmora::tr("Right: %1").arg(beginningOf(cell.fields.right, toolTipLength));
    } else if (m_scene.row(row).row(m_side) >= 0) {
        text = beginningOf(cell.fields[m_side], toolTipLength);
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

QVariant TableModel::columnHeader(int column, int role) const
{
    if (column < 0 || column >= m_scene.columnCount())
        return {};
    const QString name = m_scene.document()->alignment.columns.name(column);
    switch (role) {
    case Qt::DisplayRole:
        return shownField(name.toStdString());
    case Qt::ToolTipRole:
        return plainToolTip(
            name.left(toolTipLength) + u'\n' +
            Velmora::tr("Changed cells: %1").arg(m_scene.document()->changedCells[std::size_t(column)]));
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

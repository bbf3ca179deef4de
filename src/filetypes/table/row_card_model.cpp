#include "filetypes/table/row_card_model.h"

#include "core/utf8_text.h"
#include "filetypes/table/column_words.h"
#include "filetypes/table/engine/field_cursor.h"
#include "filetypes/table/field_text.h"
#include "filetypes/table/table_colours.h"
#include "session/pane/word_changes.h"
#include "session/plain_text.h"
#include "session/translate.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qsizetype shownLength = 4000;
/// Cells of the table that matches two values character by character: a few milliseconds.
constexpr qsizetype cellsAtMost = 200'000;

QString inOneLine(QString value)
{
    return value.replace(u'\t', u' ').replace(QStringLiteral("\r\n"), QStringLiteral(" ")).replace(u'\n', u' ');
}

Sides<QList<CharRange>> changesOf(const QString &left, const QString &right)
{
    if (left.size() * right.size() <= cellsAtMost)
        return {intraLineChanges(right, left), intraLineChanges(left, right)};
    const WordChanges changes = wordChanges(left, right);
    return {changes.left, changes.right};
}

} // namespace

RowCardModel::RowCardModel(TableScene &scene, QObject *parent) : QAbstractTableModel(parent), m_scene(scene) {}

void RowCardModel::showRow(qint32 row)
{
    beginResetModel();
    m_row = row;
    rebuild();
    endResetModel();
}

void RowCardModel::setOrder(Order order)
{
    beginResetModel();
    m_order = order;
    rebuild();
    endResetModel();
}

void RowCardModel::rebuild()
{
    m_columns.clear();
    m_changes.clear();
    if (m_row < 0 || !m_scene.document())
        return;
    for (qint32 column = 0; column < m_scene.columnCount(); ++column) {
        if (m_order != Order::DifferentOnly || differs(column))
            m_columns.push_back(column);
    }
    if (m_order == Order::DifferentFirst)
        std::stable_partition(m_columns.begin(), m_columns.end(), [this](qint32 column) { return differs(column); });
}

const TableScene::Cell &RowCardModel::cell(qint32 column) const
{
    return m_scene.cells(m_row)[std::size_t(column)];
}

bool RowCardModel::differs(qint32 column) const
{
    return cell(column).status != TableCellStatus::Same;
}

qsizetype RowCardModel::differing() const
{
    return std::count_if(m_columns.begin(), m_columns.end(), [this](qint32 column) { return differs(column); });
}

QString RowCardModel::text(qint32 column, Side side) const
{
    return beginningOfField(cell(column).fields[side], shownLength);
}

const QList<CharRange> &RowCardModel::changes(qint32 column, Side side) const
{
    auto known = m_changes.find(column);
    if (known == m_changes.end()) {
        Sides<QList<CharRange>> changes;
        if (cell(column).status == TableCellStatus::Modified)
            changes = changesOf(text(column, Side::Left), text(column, Side::Right));
        known = m_changes.emplace(column, std::move(changes)).first;
    }
    return known->second[side];
}

QString RowCardModel::line(int place) const
{
    const qint32 column = m_columns[std::size_t(place)];
    QStringList fields{inOneLine(m_scene.document()->alignment.columns.name(column))};
    for (const Side side : bothSides) {
        std::string buffer;
        fields.append(inOneLine(textOfUtf8(fieldValue(cell(column).fields[side], buffer))));
    }
    return fields.join(u'\t') + u'\n';
}

int RowCardModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

int RowCardModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 3;
}

QVariant RowCardModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const qint32 column = m_columns[std::size_t(index.row())];
    if (index.column() == Name) {
        if (role == Qt::DisplayRole)
            return (differs(column) ? QStringLiteral("≠ ") : QString()) +
                   shownField(m_scene.document()->alignment.columns.name(column).toStdString());
        return role == Qt::ToolTipRole ? QVariant(plainToolTip(columnHint(*m_scene.document(), column))) : QVariant();
    }
    const Side side = index.column() == Left ? Side::Left : Side::Right;
    const AlignedTableRow &row = m_scene.row(m_row);
    switch (role) {
    case Qt::DisplayRole:
        return row.row(side) < 0 ? QString() : text(column, side);
    case ColourRole:
        return int(tableColourOf(row.status == TableRowStatus::Modified && !differs(column) ? TableRowStatus::Same
                                                                                            : row.status,
                                 cell(column).status, row.row(side) >= 0));
    case ChangesRole:
        return QVariant::fromValue(changes(column, side));
    default:
        return {};
    }
}

QVariant RowCardModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Name ? Velmora::tr("Column") : section == Left ? Velmora::tr("Left") : Velmora::tr("Right");
}

} // namespace velmora

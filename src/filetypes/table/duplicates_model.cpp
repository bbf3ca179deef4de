#include "filetypes/table/duplicates_model.h"

#include "core/visible_name.h"
#include "session/translate.h"

#include <QLocale>
#include <QStringList>

#include <array>

namespace velmora {

namespace {

int alignmentOf(int column)
{
    return int((column == DuplicatesModel::Count ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

} // namespace

DuplicatesModel::DuplicatesModel(std::shared_ptr<const TableDocument> document, QObject *parent)
    : QAbstractTableModel(parent), m_document(std::move(document))
{}

int DuplicatesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_document->duplicates.size());
}

int DuplicatesModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnsCount;
}

QString DuplicatesModel::keyText(const DuplicateKey &key) const
{
    constexpr qsizetype longest = 200;
    QStringList values;
    for (const ColumnRef &column : m_document->keys) {
        const qint32 field = m_document->alignment.columns.fieldOf(key.side, column.column);
        values.append(field < 0 ? QString() : m_document->alignment.tables[key.side].value(key.last, field));
    }
    return visibleName(values.join(QStringLiteral(" + ")).left(longest));
}

QVariant DuplicatesModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const DuplicateKey &key = m_document->duplicates[std::size_t(index.row())];
    if (role == Qt::TextAlignmentRole)
        return alignmentOf(index.column());
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Key:
        return keyText(key);
    case OfSide:
        return key.side == Side::Left ? Velmora::tr("Left") : Velmora::tr("Right");
    case Count:
        return QLocale().toString(key.replaced + 1);
    default:
        break;
    }
    QStringList rows;
    for (const qint32 row : key.rows)
        rows.append(QString::number(row + 1));
    if (key.replaced > qint64(key.rows.size()))
        rows.append(QString(QChar(0x2026)));
    rows.append(Velmora::tr("%1 (compared)").arg(key.last + 1));
    return rows.join(QStringLiteral(", "));
}

QVariant DuplicatesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && role != Qt::TextAlignmentRole))
        return {};
    if (role == Qt::TextAlignmentRole)
        return alignmentOf(section);
    const std::array<QString, ColumnsCount> headings{Velmora::tr("Key"), Velmora::tr("Side"), Velmora::tr("Rows"),
                                                     Velmora::tr("Row numbers")};
    return headings[std::size_t(section)];
}

} // namespace velmora

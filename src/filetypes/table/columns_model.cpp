#include "filetypes/table/columns_model.h"

#include "filetypes/table/column_words.h"
#include "filetypes/table/field_text.h"
#include "filetypes/table/table_scene.h"
#include "session/plain_text.h"
#include "session/translate.h"

#include <QLocale>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

bool isCheckable(int column)
{
    return column >= ColumnsModel::Key && column <= ColumnsModel::Frozen;
}

Qt::Alignment alignmentOf(int column)
{
    if (isCheckable(column))
        return Qt::AlignCenter;
    const bool isNumber =
        column == ColumnsModel::Changed || column == ColumnsModel::LeftPlace || column == ColumnsModel::RightPlace;
    return (isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

} // namespace

ColumnsModel::ColumnsModel(std::shared_ptr<const TableDocument> document, QList<ColumnChoice> choices,
                           const QList<ColumnRef> &keys, QObject *parent)
    : QAbstractTableModel(parent), m_document(std::move(document)), m_choices(std::move(choices))
{
    const TableColumns &columns = m_document->alignment.columns;
    m_lines.resize(std::size_t(std::min(columns.count(), TableScene::columnLimit)));
    for (std::size_t column = 0; column < m_lines.size(); ++column)
        m_lines[column].choice.ref = {qint32(column), columns.name(qint32(column))};
    for (const auto &[column, choice] : choicesByColumn(m_choices, columns)) {
        if (std::size_t(column) < m_lines.size()) {
            const ColumnRef ref = m_lines[std::size_t(column)].choice.ref;
            m_lines[std::size_t(column)].choice = choice;
            m_lines[std::size_t(column)].choice.ref = ref;
        }
    }
    for (const ColumnRef &key : keys) {
        const qint32 column = columnOf(key, columns);
        if (column >= 0 && column < rowCount())
            m_lines[std::size_t(column)].isKey = canBeKey(column);
    }
}

/// Keys come from the fields of the first row.
bool ColumnsModel::canBeKey(int line) const
{
    return line < m_document->keyNames.size();
}

QList<ColumnRef> ColumnsModel::keys() const
{
    QList<ColumnRef> keys;
    for (const Line &line : m_lines) {
        if (line.isKey)
            keys.append(line.choice.ref);
    }
    return keys;
}

QList<ColumnChoice> ColumnsModel::choices() const
{
    QList<ColumnChoice> choices = m_choices;
    const TableColumns &columns = m_document->alignment.columns;
    choices.removeIf([&](const ColumnChoice &choice) {
        const qint32 column = columnOf(choice.ref, columns);
        return column >= 0 && column < rowCount();
    });
    for (const Line &line : m_lines) {
        if (!line.choice.isUsual())
            choices.append(line.choice);
    }
    return choices;
}

void ColumnsModel::setRule(int line, const ColumnRule &rule)
{
    ColumnRule &own = m_lines[std::size_t(line)].choice.rule;
    const bool isLeftOut = own.isLeftOut;
    own = rule;
    own.isLeftOut = isLeftOut;
    Q_EMIT dataChanged(index(line, Rule), index(line, Rule));
}

void ColumnsModel::clear()
{
    for (Line &line : m_lines)
        line = {ColumnChoice{line.choice.ref}};
    if (!m_lines.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnsCount - 1));
}

int ColumnsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_lines.size());
}

int ColumnsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnsCount;
}

QString ColumnsModel::text(const QModelIndex &index) const
{
    const Line &line = m_lines[std::size_t(index.row())];
    const auto place = [&](Side side) {
        const qint32 field = m_document->alignment.columns.fieldOf(side, index.row());
        return field < 0 ? QString(QChar(0x2013)) : QString::number(field + 1);
    };
    switch (index.column()) {
    case Name:
        return shownField(line.choice.ref.name.toStdString());
    case LeftPlace:
        return place(Side::Left);
    case RightPlace:
        return place(Side::Right);
    case Rule: {
        ColumnRule rule = line.choice.rule;
        rule.isLeftOut = false;
        const QString words = ruleWords(rule);
        return words.isEmpty() ? Velmora::tr("exact") : words;
    }
    case Changed:
        return QLocale().toString(m_document->changedCells[std::size_t(index.row())]);
    default:
        return {};
    }
}

bool ColumnsModel::isChecked(const QModelIndex &index) const
{
    const Line &line = m_lines[std::size_t(index.row())];
    switch (index.column()) {
    case Key:
        return line.isKey;
    case Compared:
        return !line.choice.rule.isLeftOut;
    case Shown:
        return !line.choice.isHidden;
    default:
        return line.choice.isFrozen;
    }
}

QVariant ColumnsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return isCheckable(index.column()) ? QVariant() : text(index);
    case Qt::ToolTipRole:
        return index.column() == Name ? QVariant(plainToolTip(columnHint(*m_document, index.row()))) : QVariant();
    case Qt::CheckStateRole:
        return isCheckable(index.column()) && (index.column() != Key || canBeKey(index.row()))
                   ? QVariant(isChecked(index) ? Qt::Checked : Qt::Unchecked)
                   : QVariant();
    case Qt::TextAlignmentRole:
        return int(alignmentOf(index.column()));
    default:
        return {};
    }
}

bool ColumnsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !isCheckable(index.column()))
        return false;
    Line &line = m_lines[std::size_t(index.row())];
    const bool isOn = value.toInt() == Qt::Checked;
    switch (index.column()) {
    case Key:
        line.isKey = isOn && canBeKey(index.row());
        break;
    case Compared:
        line.choice.rule.isLeftOut = !isOn;
        break;
    case Shown:
        line.choice.isHidden = !isOn;
        break;
    default:
        line.choice.isFrozen = isOn;
        break;
    }
    Q_EMIT dataChanged(index, index);
    return true;
}

QVariant ColumnsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    struct Heading {
        QString text;
        QString hint;
    };
    const std::array<Heading, ColumnsCount> headings{{
        {Velmora::tr("Column"), {}},
        {Velmora::tr("Left"), Velmora::tr("Where the column stands in the left table")},
        {Velmora::tr("Right"), Velmora::tr("Where the column stands in the right table")},
        {Velmora::tr("Key"), Velmora::tr("Rows with the same values in the key columns are compared")},
        {Velmora::tr("Compare"), Velmora::tr("Whether differences in this column count")},
        {Velmora::tr("Show"), Velmora::tr("Whether the column is shown")},
        {Velmora::tr("Freeze"), Velmora::tr("The column stands first and stays when the others scroll")},
        {Velmora::tr("Rule"), Velmora::tr("Which values count as the same")},
        {Velmora::tr("Changed"), Velmora::tr("How many cells of the column differ")},
    }};
    if (role == Qt::TextAlignmentRole)
        return int(alignmentOf(section));
    const Heading &heading = headings[std::size_t(section)];
    if (role == Qt::DisplayRole)
        return heading.text;
    return role == Qt::ToolTipRole && !heading.hint.isEmpty() ? QVariant(heading.hint) : QVariant();
}

Qt::ItemFlags ColumnsModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return isCheckable(index.column()) ? flags | Qt::ItemIsUserCheckable : flags;
}

} // namespace velmora

#include "system/snapshot_rows_model.h"

#include "core/html.h"
#include "session/diff_colours.h"
#include "session/translate.h"

#include <QBrush>

#include <algorithm>

namespace velmora {

namespace {

/// More of a value than a column can show; laying out the whole of a long one would take time for nothing.
constexpr qsizetype longestShown = 600;
constexpr qsizetype longestToolTip = 3000;

/// A value in one line.
QString inOneLine(const QString &value)
{
    QString line = value.left(longestShown);
    line.replace(u'\n', QStringLiteral(" \u21b5 "));
    line.replace(u'\t', u' ');
    return line;
}

/// A text as a tool tip that wraps, and would take a value with brackets for markup.
QString asToolTip(const QString &text)
{
    if (text.isEmpty())
        return {};
    QByteArray html = "<p style='white-space:pre-wrap'>";
    const QByteArray utf8 = (text.size() > longestToolTip ? text.left(longestToolTip) + QChar(0x2026) : text).toUtf8();
    appendHtmlEscaped(html, {utf8.constData(), std::size_t(utf8.size())});
    return QString::fromUtf8(html + "</p>");
}

QString asField(const QString &text)
{
    if (!text.contains(u'\t') && !text.contains(u'\n') && !text.contains(u'"'))
        return text;
    QString quoted = text;
    quoted.replace(u'"', QStringLiteral("\"\""));
    return u'"' + quoted + u'"';
}

DiffColour backgroundOf(SnapshotStatus status)
{
    switch (status) {
    case SnapshotStatus::Changed:
        return DiffColour::Modified;
    case SnapshotStatus::LeftOnly:
        return DiffColour::Removed;
    case SnapshotStatus::RightOnly:
        return DiffColour::Added;
    case SnapshotStatus::Same:
        break;
    }
    return DiffColour::Background;
}

/// The sides that have a row are the ones that its colour lies behind.
bool isColoured(SnapshotStatus status, int column)
{
    if (status == SnapshotStatus::Same)
        return false;
    return !(status == SnapshotStatus::LeftOnly && column == SnapshotRowsModel::Right) &&
           !(status == SnapshotStatus::RightOnly && column == SnapshotRowsModel::Left);
}

} // namespace

QString snapshotStatusText(SnapshotStatus status)
{
    switch (status) {
    case SnapshotStatus::Same:
        return Velmora::tr("Same");
    case SnapshotStatus::Changed:
        return Velmora::tr("Changed");
    case SnapshotStatus::LeftOnly:
        return Velmora::tr("Left only");
    case SnapshotStatus::RightOnly:
        return Velmora::tr("Right only");
    }
    return {};
}

SnapshotRowsModel::SnapshotRowsModel(const QString &keyColumn, QObject *parent)
    : QAbstractTableModel(parent), m_keyColumn(keyColumn)
{}

void SnapshotRowsModel::setRows(QList<SnapshotRow> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    rebuild();
    endResetModel();
}

void SnapshotRowsModel::setOnlyDifferences(bool only)
{
    beginResetModel();
    m_onlyDifferences = only;
    rebuild();
    endResetModel();
}

void SnapshotRowsModel::setFilter(const QString &words)
{
    beginResetModel();
    m_words = words.split(u' ', Qt::SkipEmptyParts);
    rebuild();
    endResetModel();
}

void SnapshotRowsModel::sort(int column, Qt::SortOrder order)
{
    beginResetModel();
    m_sortColumn = column;
    m_sortOrder = order;
    rebuild();
    endResetModel();
}

bool SnapshotRowsModel::isShown(const SnapshotRow &row) const
{
    if (m_onlyDifferences && row.status == SnapshotStatus::Same)
        return false;
    const auto holds = [&row](const QString &word) {
        for (const QString &text : {row.key, row.note, row.left, row.right, snapshotStatusText(row.status)}) {
            if (text.contains(word, Qt::CaseInsensitive))
                return true;
        }
        return false;
    };
    return std::all_of(m_words.begin(), m_words.end(), holds);
}

void SnapshotRowsModel::rebuild()
{
    m_shown.clear();
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        if (isShown(m_rows[i]))
            m_shown.push_back(i);
    }
    if (m_sortColumn < 0)
        return;
    const auto isBefore = [this](const SnapshotRow &one, const SnapshotRow &other) {
        if (m_sortColumn == Status)
            return one.status < other.status;
        return QString::localeAwareCompare(textOf(one, m_sortColumn), textOf(other, m_sortColumn)) < 0;
    };
    std::stable_sort(m_shown.begin(), m_shown.end(), [&](qsizetype one, qsizetype other) {
        return m_sortOrder == Qt::AscendingOrder ? isBefore(m_rows[one], m_rows[other])
                                                 : isBefore(m_rows[other], m_rows[one]);
    });
}

int SnapshotRowsModel::find(const QString &key) const
{
    const auto found =
        std::find_if(m_shown.begin(), m_shown.end(), [&](qsizetype number) { return m_rows[number].key == key; });
    return found == m_shown.end() ? -1 : int(found - m_shown.begin());
}

int SnapshotRowsModel::nextDifference(int row, bool forward) const
{
    const int step = forward ? 1 : -1;
    const int first = row < 0 && !forward ? rowCount() - 1 : row + step;
    for (int next = first; next >= 0 && next < rowCount(); next += step) {
        if (rowAt(next).status != SnapshotStatus::Same)
            return next;
    }
    return -1;
}

QString SnapshotRowsModel::text(const std::vector<int> &rows) const
{
    QString result;
    for (const int row : rows) {
        QStringList fields;
        for (int column = 0; column < ColumnCount; ++column)
            fields.append(asField(textOf(rowAt(row), column)));
        result += fields.join(u'\t') + u'\n';
    }
    return result;
}

int SnapshotRowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size());
}

int SnapshotRowsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString SnapshotRowsModel::textOf(const SnapshotRow &row, int column)
{
    switch (column) {
    case Status:
        return snapshotStatusText(row.status);
    case Key:
        return row.key;
    case Left:
        return row.left;
    default:
        return row.right;
    }
}

QString SnapshotRowsModel::toolTipOf(const SnapshotRow &row, int column)
{
    const QString text = textOf(row, column);
    return asToolTip(column == Key && !row.note.isEmpty() ? text + u'\n' + row.note : text);
}

QVariant SnapshotRowsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const SnapshotRow &row = rowAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return inOneLine(textOf(row, index.column()));
    case Qt::ToolTipRole:
        return toolTipOf(row, index.column());
    case Qt::BackgroundRole:
        return isColoured(row.status, index.column()) ? QVariant(QBrush(diffColour(backgroundOf(row.status))))
                                                      : QVariant();
    case Qt::ForegroundRole:
        return isColoured(row.status, index.column()) ? QVariant(QBrush(diffColour(DiffColour::Text))) : QVariant();
    default:
        return {};
    }
}

QVariant SnapshotRowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Status:
        return Velmora::tr("Status");
    case Key:
        return m_keyColumn;
    case Left:
        return Velmora::tr("Left");
    default:
        return Velmora::tr("Right");
    }
}

void SnapshotRowsModel::refreshTheme()
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1),
                           {Qt::BackgroundRole, Qt::ForegroundRole});
}

} // namespace velmora

#include "session/list/list_model.h"

#include "core/html.h"
#include "session/diff_colours.h"
#include "session/list/steps.h"

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
QString toolTipText(const QString &text)
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

/// In the order of `PairStatus`.
constexpr DiffColour backgrounds[] = {DiffColour::Background, DiffColour::Modified, DiffColour::Removed,
                                      DiffColour::Added};

/// The sides that have a row are the ones that its colour lies behind.
bool isColoured(PairStatus status, std::optional<Side> side)
{
    return status != PairStatus::Same && (!side || isOn(status, *side));
}

} // namespace

ListModel::ListModel(std::unique_ptr<const RowSource> source, QObject *parent) : QAbstractTableModel(parent)
{
    setSource(std::move(source));
}

template <typename Change>
void ListModel::reset(Change change)
{
    beginResetModel();
    change();
    rebuild();
    endResetModel();
}

void ListModel::setSource(std::unique_ptr<const RowSource> source)
{
    reset([&] {
        m_source = std::move(source);
        m_headings = m_source->headings();
        m_counts = {};
        m_noise = 0;
        for (qsizetype number = 0; number < m_source->count(); ++number) {
            if (m_source->isNoise(number))
                ++m_noise;
            else
                m_counts.add(m_source->status(number));
        }
    });
}

void ListModel::setView(RowsView view)
{
    reset([&] { m_view = view; });
}

void ListModel::setFilter(const QString &words)
{
    reset([&] { m_words = words.split(u' ', Qt::SkipEmptyParts); });
}

void ListModel::sort(int column, Qt::SortOrder order)
{
    reset([&] {
        m_sortColumn = column;
        m_sortOrder = order;
    });
}

bool ListModel::isShown(qsizetype number) const
{
    if (m_view != RowsView::All) {
        const bool isSame = m_source->status(number) == PairStatus::Same;
        if (isSame != (m_view == RowsView::Same) || m_source->isNoise(number))
            return false;
    }
    return std::all_of(m_words.begin(), m_words.end(),
                       [&](const QString &word) { return m_source->holds(number, word, columnCount()); });
}

void ListModel::rebuild()
{
    m_shown.clear();
    for (qsizetype number = 0; number < m_source->count(); ++number) {
        if (isShown(number))
            m_shown.push_back(number);
    }
    if (m_sortColumn < 0)
        return;
    std::stable_sort(m_shown.begin(), m_shown.end(), [this](qsizetype one, qsizetype other) {
        return m_sortOrder == Qt::AscendingOrder ? m_source->isBefore(one, other, m_sortColumn)
                                                 : m_source->isBefore(other, one, m_sortColumn);
    });
}

int ListModel::find(const QString &key) const
{
    return stepTo(-1, rowCount(), true, [&](int row) { return m_source->key(numberOf(row)) == key; });
}

int ListModel::nextDifference(int row, bool forward) const
{
    return stepTo(row, rowCount(), forward,
                  [this](int next) { return m_source->status(numberOf(next)) != PairStatus::Same; });
}

QString ListModel::text(const std::vector<int> &rows) const
{
    QString result;
    for (const int row : rows) {
        QStringList fields;
        for (int column = 0; column < columnCount(); ++column)
            fields.append(asField(m_source->text(numberOf(row), column)));
        result += fields.join(u'\t') + u'\n';
    }
    return result;
}

int ListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size());
}

int ListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_headings.size());
}

QVariant ListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int column = index.column();
    const KeyedRow row = rowAt(index.row());
    const auto text = [&] { return m_source->text(numberOf(index.row()), column); };
    const auto colour = [&](DiffColour wanted) {
        return isColoured(row.status, m_source->side(column)) ? QVariant(QBrush(diffColour(wanted))) : QVariant();
    };
    switch (role) {
    case Qt::DisplayRole:
        return inOneLine(text());
    case Qt::ToolTipRole:
        return toolTipText(column == RowSource::Key && !row.note.isEmpty() ? text() + u'\n' + row.note : text());
    case Qt::TextAlignmentRole:
        return hasNumbers(column) ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter)) : QVariant();
    case Qt::BackgroundRole:
        return colour(backgrounds[std::size_t(row.status)]);
    case Qt::ForegroundRole:
        return colour(DiffColour::Text);
    default:
        return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::TextAlignmentRole && hasNumbers(section))
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(m_headings.value(section)) : QVariant();
}

void ListModel::refreshTheme()
{
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1),
                           {Qt::BackgroundRole, Qt::ForegroundRole});
}

} // namespace velmora

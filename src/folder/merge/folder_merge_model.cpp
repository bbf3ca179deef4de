#include "folder/merge/folder_merge_model.h"

#include "core/visible_name.h"
#include "folder/actions/action_words.h"
#include "session/diff_colours.h"
#include "session/folder_colours.h"
#include "session/translate.h"

#include <QFont>

#include <algorithm>

namespace velmora {

namespace {

/// The texts of statuses and of what follows from them; they are the same in every language.
struct StatusWords {
    const char *status;
    const char *action;
};
constexpr std::array statusWords{
    StatusWords{"未变", "→ 保持"},         StatusWords{"左侧修改", "→ 取左侧"},   StatusWords{"右侧修改", "→ 取右侧"},
    StatusWords{"两侧相同修改", "→ 保持"}, StatusWords{"冲突", "⚡ 手动解决"},     StatusWords{"左侧新增", "+ 左侧新增"},
    StatusWords{"右侧新增", "+ 右侧新增"}, StatusWords{"左侧删除", "- 左侧删除"}, StatusWords{"右侧删除", "- 右侧删除"},
    StatusWords{"两侧删除", "- 两侧删除"},
};

const StatusWords &wordsOf(FolderMergeStatus status)
{
    return statusWords[std::size_t(status)];
}

QString sizeOf(qint64 size)
{
    constexpr qint64 kilobyte = 1024;
    if (size < 0)
        return {};
    return size >= kilobyte ? QStringLiteral("%1 KB").arg(size / kilobyte) : QStringLiteral("%1 B").arg(size);
}

/// Numbers stand under each other, and the status in the middle of its column, apart from the size beside it.
Qt::Alignment alignmentOf(int column)
{
    if (column >= FolderMergeModel::BaseSize && column <= FolderMergeModel::RightSize)
        return Qt::AlignRight | Qt::AlignVCenter;
    return column == FolderMergeModel::Status ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter;
}

QColor statusColour(FolderMergeStatus status, bool isOpen)
{
    if (isOpen)
        return folderMarkColour(FolderMark::Newer); // the ink of what wants a look
    return diffColour(status == FolderMergeStatus::Unchanged ? DiffColour::MutedText : DiffColour::Text);
}

} // namespace

void FolderMergeModel::setFiles(const QList<FolderMergeFile> &files)
{
    beginResetModel();
    m_files = files;
    m_sources = mergeSourcesOf(files);
    m_byHand.assign(m_sources.size(), false);
    fillRows();
    endResetModel();
}

void FolderMergeModel::setView(View view)
{
    beginResetModel();
    m_view = view;
    fillRows();
    endResetModel();
}

bool FolderMergeModel::shows(const FolderMergeFile &file) const
{
    const auto isBetween = [&file](FolderMergeStatus first, FolderMergeStatus last) {
        return file.status >= first && file.status <= last;
    };
    switch (m_view) {
    case View::All:
        break;
    case View::Conflicts:
        return file.status == FolderMergeStatus::Conflict;
    case View::Changed:
        return isBetween(FolderMergeStatus::LeftChanged, FolderMergeStatus::SameChange);
    case View::Added:
        return isBetween(FolderMergeStatus::LeftAdded, FolderMergeStatus::RightAdded);
    case View::Deleted:
        return isBetween(FolderMergeStatus::LeftDeleted, FolderMergeStatus::BothDeleted);
    }
    return true;
}

void FolderMergeModel::fillRows()
{
    m_rows.clear();
    for (qsizetype i = 0; i < m_files.size(); ++i) {
        if (shows(m_files.at(i)))
            m_rows.push_back(i);
    }
}

bool FolderMergeModel::isOpenAt(int row) const
{
    const qsizetype file = m_rows[std::size_t(row)];
    return m_files.at(file).status == FolderMergeStatus::Conflict && !m_byHand[std::size_t(file)];
}

qint64 FolderMergeModel::openConflicts() const
{
    qint64 open = 0;
    for (qsizetype i = 0; i < m_files.size(); ++i)
        open += m_files.at(i).status == FolderMergeStatus::Conflict && !m_byHand[std::size_t(i)] ? 1 : 0;
    return open;
}

std::pair<int, int> FolderMergeModel::rowsBelow(const QString &folder) const
{
    const QString start = folder.isEmpty() ? QString() : folder + u'/';
    // The paths are sorted, so that all with one beginning stand together.
    const auto first = std::find_if(m_rows.begin(), m_rows.end(),
                                    [&](qsizetype file) { return m_files.at(file).path.startsWith(start); });
    const auto last =
        std::find_if(first, m_rows.end(), [&](qsizetype file) { return !m_files.at(file).path.startsWith(start); });
    return {int(first - m_rows.begin()), int(last - m_rows.begin())};
}

// Choosing ----------------------------------------------------------------------------------------------------------

void FolderMergeModel::choose(qsizetype file, MergedFileSource source, bool byHand)
{
    m_sources[std::size_t(file)] = source;
    m_byHand[std::size_t(file)] = byHand;
}

void FolderMergeModel::tellChoices()
{
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    Q_EMIT choicesChanged();
}

void FolderMergeModel::take(const QModelIndexList &rows, MergeVersion version)
{
    for (const QModelIndex &row : rows) {
        if (fileAt(row.row()).sizes[version] >= 0)
            choose(indexAt(row.row()), mergeSource(version), true);
    }
    tellChoices();
}

void FolderMergeModel::takeTexts(const std::vector<qsizetype> &files)
{
    for (const qsizetype file : files)
        choose(file, MergedFileSource::Text, true);
    tellChoices();
}

void FolderMergeModel::leaveOut(const QModelIndexList &rows)
{
    for (const QModelIndex &row : rows)
        choose(indexAt(row.row()), MergedFileSource::LeftOut, true);
    tellChoices();
}

void FolderMergeModel::takeAsFound(const QModelIndexList &rows)
{
    for (const QModelIndex &row : rows) {
        const qsizetype file = indexAt(row.row());
        choose(file, mergeSourcesOf({m_files.at(file)}).front(), false);
    }
    tellChoices();
}

// The model ---------------------------------------------------------------------------------------------------------

int FolderMergeModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int FolderMergeModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString FolderMergeModel::actionText(qsizetype file) const
{
    if (!m_byHand[std::size_t(file)])
        return QString::fromUtf8(wordsOf(m_files.at(file).status).action);
    switch (m_sources[std::size_t(file)]) {
    case MergedFileSource::LeftOut:
        return Velmora::tr("✗ Leave out");
    case MergedFileSource::Text:
        return Velmora::tr("✓ Merged text");
    case MergedFileSource::Base:
        break;
    case MergedFileSource::Left:
        return QString::fromUtf8(wordsOf(FolderMergeStatus::LeftChanged).action);
    case MergedFileSource::Right:
        return QString::fromUtf8(wordsOf(FolderMergeStatus::RightChanged).action);
    }
    return QString::fromUtf8(wordsOf(FolderMergeStatus::Unchanged).action);
}

QVariant FolderMergeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const qsizetype at = m_rows[std::size_t(index.row())];
    const FolderMergeFile &file = m_files.at(at);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignmentOf(index.column()));
    if (role == Qt::ForegroundRole)
        return statusColour(file.status, isOpenAt(index.row()));
    if (role == Qt::ToolTipRole && index.column() == Path)
        return toolTipText(visibleName(file.path));
    if (role == Qt::FontRole && index.column() == Action && m_byHand[std::size_t(at)]) {
        QFont font;
        font.setItalic(true);
        return font;
    }
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Path:
        return visibleName(file.path);
    case BaseSize:
        return sizeOf(file.sizes.base);
    case LeftSize:
        return sizeOf(file.sizes.left);
    case RightSize:
        return sizeOf(file.sizes.right);
    case Status:
        return QString::fromUtf8(wordsOf(file.status).status);
    default:
        return actionText(at);
    }
}

QVariant FolderMergeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignmentOf(section));
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Path:
        return Velmora::tr("File path");
    case BaseSize:
        return Velmora::tr("Base size");
    case LeftSize:
        return Velmora::tr("Left size");
    case RightSize:
        return Velmora::tr("Right size");
    case Status:
        return Velmora::tr("Status");
    default:
        return Velmora::tr("Action");
    }
}

} // namespace velmora

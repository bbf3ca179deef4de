#include "folder/git/git_rows.h"

#include "core/path_names.h"
#include "core/visible_name.h"
#include "folder/git/git_words.h"
#include "session/folder_colours.h"
#include "session/translate.h"

#include <QLocale>

#include <algorithm>
#include <numeric>

namespace velmora {

namespace {

/// Folders in more than so many others stand beside the deepest ones.
constexpr qsizetype deepest = 300;

int compareNames(QStringView one, QStringView other)
{
    const int order = one.compare(other, Qt::CaseInsensitive);
    return order != 0 ? order : one.compare(other);
}

/// The order of paths in which folders stand before files, level by level.
bool isBeforeInTree(const QString &one, const QString &other)
{
    qsizetype from = 0;
    for (;;) {
        const qsizetype oneEnd = one.indexOf(u'/', from);
        const qsizetype otherEnd = other.indexOf(u'/', from);
        if ((oneEnd < 0) != (otherEnd < 0))
            return otherEnd < 0;
        const QStringView oneName = QStringView(one).mid(from, oneEnd < 0 ? -1 : oneEnd - from);
        const QStringView otherName = QStringView(other).mid(from, otherEnd < 0 ? -1 : otherEnd - from);
        if (const int order = compareNames(oneName, otherName); order != 0 || oneEnd < 0)
            return order < 0;
        from = oneEnd + 1;
    }
}

class NodeMaker {
public:
    explicit NodeMaker(const GitComparison &comparison) : m_comparison(comparison) {}

    void add(qint32 number)
    {
        const GitChange &change = m_comparison.changes[std::size_t(number)];
        const QString &path = change.path();
        while (!m_open.empty() && !isInside(path, nodeAt(m_open.size() - 1).path))
            m_open.pop_back();
        openFolders(path);
        for (const std::size_t around : m_open) {
            m_made.nodes[around].within.add(GitStatusSet::of(change.status));
            m_made.nodes[around].differing += change.status == GitStatus::Same ? 0 : 1;
        }
        append({number, bareName(path), path, GitStatusSet::of(change.status), change.status != GitStatus::Same, {}});
    }

    GitNodes finish() { return std::move(m_made); }

private:
    GitNode &nodeAt(std::size_t level) { return m_made.nodes[m_open[level]]; }

    void append(GitNode node)
    {
        m_made.depths.push_back(quint16(m_open.size()));
        m_made.nodes.push_back(std::move(node));
    }

    void openFolders(const QString &path)
    {
        qsizetype from = m_open.empty() ? 0 : nodeAt(m_open.size() - 1).path.size() + 1;
        for (qsizetype end = path.indexOf(u'/', from); end >= 0 && qsizetype(m_open.size()) < deepest;
             end = path.indexOf(u'/', from)) {
            append({-1, path.mid(from, end - from), path.first(end), {}, 0, {}});
            m_open.push_back(m_made.nodes.size() - 1);
            from = end + 1;
        }
    }

    const GitComparison &m_comparison;
    GitNodes m_made;
    std::vector<std::size_t> m_open; ///< the folders that the current one is in
};

} // namespace

GitNodes gitNodesOf(const GitComparison &comparison)
{
    std::vector<qint32> order(comparison.changes.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&comparison](qint32 one, qint32 other) {
        return isBeforeInTree(comparison.changes[std::size_t(one)].path(),
                              comparison.changes[std::size_t(other)].path());
    });
    NodeMaker maker(comparison);
    for (const qint32 number : order)
        maker.add(number);
    return maker.finish();
}

GitRowTree::GitRowTree(std::shared_ptr<const GitComparison> comparison, GitNodes nodes)
    : FixedRowTree(std::move(nodes.depths)), m_comparison(std::move(comparison)), m_nodes(std::move(nodes.nodes))
{
    constexpr qint32 mostOpened = 3000; // what a person may scroll through
    if (count() <= mostOpened) {
        for (qint32 number = 0; number < count(); ++number)
            FixedRowTree::setExpanded(number, true);
    }
    sumLines();
}

void GitRowTree::takeDetails(std::shared_ptr<const GitComparison> comparison)
{
    m_comparison = std::move(comparison);
    sumLines();
}

void GitRowTree::sumLines()
{
    for (GitNode &one : m_nodes)
        one.lines = {};
    for (qint32 number = count() - 1; number >= 0; --number) {
        GitNode &here = m_nodes[std::size_t(number)];
        if (here.change >= 0)
            here.lines = change(number)->lines.value_or(GitLines());
        if (const qint32 around = parent(number); around >= 0) {
            m_nodes[std::size_t(around)].lines.added += here.lines.added;
            m_nodes[std::size_t(around)].lines.removed += here.lines.removed;
        }
    }
}

const GitChange *GitRowTree::change(qint32 number) const
{
    const qint32 at = node(number).change;
    return at < 0 ? nullptr : &m_comparison->changes[std::size_t(at)];
}

QString GitRowTree::nameOn(qint32 number, Side side) const
{
    const GitChange *file = change(number);
    if (!file) {
        const bool onlyOther =
            node(number).within == GitStatusSet::of(side == Side::Left ? GitStatus::Added : GitStatus::Deleted);
        return onlyOther ? QString() : node(number).name;
    }
    const QString &path = file->paths[side];
    const bool isElsewhere = side == Side::Left && parentPath(path) != parentPath(file->path());
    return isElsewhere ? path : bareName(path);
}

QStringList GitRowTree::headings() const
{
    return {Velmora::tr("Name"), Velmora::tr("Size"), Velmora::tr("Status"), Velmora::tr("Name"),
            Velmora::tr("Size"), Velmora::tr("Kind"), QStringLiteral("+"),   QStringLiteral("−")};
}

QString GitRowTree::lineText(qint32 number, qint64 GitLines::*count, QChar sign) const
{
    const GitChange *file = change(number);
    const qint64 lines = node(number).lines.*count;
    const bool isKnown = !file || file->lines;
    return isKnown && lines > 0 ? sign + QLocale().toString(lines) : QString();
}

QString GitRowTree::text(qint32 number, int column) const
{
    const GitChange *file = change(number);
    switch (column) {
    case LeftName:
        return visibleName(nameOn(number, Side::Left));
    case RightName:
        return visibleName(nameOn(number, Side::Right));
    case LeftSize:
    case RightSize: {
        const qint64 size = file ? file->sizes[column == LeftSize ? Side::Left : Side::Right] : -1;
        return size >= 0 ? QLocale().toString(size) : QString();
    }
    case Status:
        if (!file)
            return node(number).differing > 0 ? QLocale().toString(node(number).differing) : QString();
        return file->likeness > 0 && file->likeness < 100
                   ? Velmora::tr("%1 (%2 % alike)").arg(gitStatusText(file->status)).arg(file->likeness)
                   : gitStatusText(file->status);
    case Mode:
        return file ? gitModeText(*file) : QString();
    case Added:
        return lineText(number, &GitLines::added, u'+');
    case Removed:
        return lineText(number, &GitLines::removed, u'−');
    default:
        return {};
    }
}

Qt::Alignment GitRowTree::alignment(int column) const
{
    if (column == Status)
        return Qt::AlignCenter;
    const bool isNumber = column == LeftSize || column == RightSize || column == Added || column == Removed;
    return (isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QString GitRowTree::hint(qint32 number, int /*column*/) const
{
    const GitChange *file = change(number);
    if (!file)
        return visibleName(node(number).path);
    QStringList lines;
    if (file->paths.left != file->paths.right && !file->paths.left.isEmpty() && !file->paths.right.isEmpty())
        lines << visibleName(file->paths.left) + QStringLiteral(" →");
    lines << visibleName(file->path()) << text(number, Status);
    if (const QString mode = gitModeText(*file); !mode.isEmpty())
        lines << mode;
    if (file->status == GitStatus::Modified && file->hasSameContent())
        lines << Velmora::tr("The content is the same");
    return lines.join(u'\n');
}

RowPicture GitRowTree::picture(qint32 number) const
{
    const GitChange *const file = change(number);
    const bool isSubmodule =
        file && (file->entries.left.mode == GitMode::submodule || file->entries.right.mode == GitMode::submodule);
    return !file || isSubmodule ? RowPicture::Folder : RowPicture::File;
}

QVariant GitRowTree::data(qint32 number, int column, int role) const
{
    if (role != Qt::ForegroundRole)
        return {};
    const GitChange *file = change(number);
    if (column == Added || column == Removed)
        return folderMarkColour(column == Added ? FolderMark::Unique : FolderMark::Newer);
    if (!file)
        return node(number).differing > 0 ? QVariant() : QVariant(folderMarkColour(FolderMark::Same));
    const bool isAlone = file->status == GitStatus::Added || file->status == GitStatus::Deleted;
    const FolderMark mark = file->status == GitStatus::Same ? FolderMark::Same
                            : isAlone                       ? FolderMark::Unique
                                                            : FolderMark::Newer;
    return folderMarkColour(mark);
}

qint64 GitRowTree::number(qint32 at, int column) const
{
    const GitChange *file = change(at);
    if (column == Added || column == Removed)
        return column == Added ? node(at).lines.added : node(at).lines.removed;
    if (column == Status)
        return file ? qint64(file->status) : -1;
    return file ? file->sizes[column == LeftSize ? Side::Left : Side::Right] : -1;
}

bool GitRowTree::isBefore(qint32 one, qint32 other, int column) const
{
    const bool oneIsFolder = node(one).change < 0;
    if (oneIsFolder != (node(other).change < 0))
        return oneIsFolder;
    if (column == LeftName || column == RightName)
        return compareNames(node(one).name, node(other).name) < 0;
    return column == Mode ? RowTree::isBefore(one, other, column) : number(one, column) < number(other, column);
}

bool GitRowTree::holds(qint32 at, const QString &word) const
{
    const GitChange *file = change(at);
    if (node(at).name.contains(word, Qt::CaseInsensitive))
        return true;
    return file && file->paths.left.contains(word, Qt::CaseInsensitive) && !nameOn(at, Side::Left).isEmpty() &&
           nameOn(at, Side::Left) != node(at).name;
}

} // namespace velmora

// What the rows of a duplicate finder say.

#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "folder/duplicates/duplicate_tree.h"
#include "session/diff_colours.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QDateTime>
#include <QFont>
#include <QLocale>

namespace velmora {

QStringList DuplicateTree::headings() const
{
    return {Velmora::tr("File/group"), Velmora::tr("Size"), Velmora::tr("Modified"), Velmora::tr("MD5 hash")};
}

Qt::Alignment DuplicateTree::alignment(int column) const
{
    // Times in the middle of their column stand apart from the sizes beside them.
    return Qt::AlignVCenter | (column == Size ? Qt::AlignRight : column == Modified ? Qt::AlignHCenter : Qt::AlignLeft);
}

bool DuplicateTree::losesAll(qint32 node) const
{
    const qint32 group = groupOf(node);
    return m_ticking && group >= 0 && !m_ticks.leavesOne(m_scan.groups.at(group), group);
}

QString DuplicateTree::groupName(qint32 node) const
{
    const Entry &entry = entryOf(node);
    switch (entry.kind) {
    case Kind::Folders:
        return Velmora::tr("Same folder (%1 copies, %2 file(s) each)")
            .arg(pathCount(node))
            .arg(QLocale().toString(m_scan.folders.at(entry.number).files));
    case Kind::Files: {
        const QString text = Velmora::tr("Duplicate group (%1 copies)").arg(pathCount(node));
        return losesAll(node) ? Velmora::tr("%1 – none would stay").arg(text) : text;
    }
    case Kind::Names:
        break;
    }
    return Velmora::tr("One file with %1 names, no copies").arg(pathCount(node));
}

QString DuplicateTree::copyName(const DuplicateCopy &copy) const
{
    const QString path = shownPath(copy.path);
    if (copy.isReference)
        return Velmora::tr("%1 (reference)").arg(path);
    if (copy.isLink)
        return Velmora::tr("%1 (link to elsewhere)").arg(path);
    return copy.otherNames.isEmpty() ? path : Velmora::tr("%1 (+%2 names)").arg(path).arg(copy.otherNames.size());
}

QString DuplicateTree::text(qint32 node, int column) const
{
    const std::optional<CopyPlace> place = copyAt(node);
    const qint32 group = groupOf(node);
    switch (column) {
    case Name:
        if (isGroup(node))
            return groupName(node);
        return place ? copyName(at(*place)) : shownPath(pathAt(node));
    case Size:
        return place || isGroup(node) ? sizeText(sizeOf(node)) : QString();
    case Modified:
        return place
                   ? QDateTime::fromMSecsSinceEpoch(at(*place).modifiedMs).toString(QStringLiteral("yyyy/M/d h:mm:ss"))
                   : QString();
    default:
        return place ? QString::fromLatin1(m_scan.groups.at(group).digest.toHex()) : QString();
    }
}

QString DuplicateTree::hint(qint32 node, int column) const
{
    const std::optional<CopyPlace> place = copyAt(node);
    if (column != Name || !place)
        return text(node, column);
    constexpr qsizetype mostNames = 10;
    const DuplicateCopy &copy = at(*place);
    QStringList lines{shownPath(copy.path)};
    if (!copy.otherNames.isEmpty())
        lines.append(Velmora::tr("The same file under other names:"));
    for (const QString &name : copy.otherNames.mid(0, mostNames))
        lines.append(shownPath(name));
    if (copy.otherNames.size() > mostNames)
        lines.append(QStringLiteral("…"));
    if (copy.isReference)
        lines.append(Velmora::tr("It lies in a reference folder and is not deleted."));
    return lines.join(u'\n');
}

RowPicture DuplicateTree::picture(qint32 node) const
{
    if (isGroup(node))
        return RowPicture::None;
    return kindOf(node) == Kind::Folders ? RowPicture::Folder : RowPicture::File;
}

QVariant DuplicateTree::data(qint32 node, int column, int role) const
{
    const std::optional<CopyPlace> place = copyAt(node);
    const bool isTicked = m_ticking && place && m_ticks.isTicked(place->group, place->copy);
    if (role == Qt::CheckStateRole && column == Name && hasTick(node))
        return int(isTicked ? Qt::Checked : Qt::Unchecked);
    if (role == Qt::FontRole && column == Name) {
        QFont font;
        font.setBold(isGroup(node));
        font.setStrikeOut(isTicked);
        return font;
    }
    if (role == Qt::ForegroundRole) {
        if (isGroup(node) && losesAll(node))
            return diffColour(DiffColour::RemovedStrong);
        if (isTicked || (place && !DuplicateTicks::mayTick(at(*place))))
            return diffColour(DiffColour::MutedText);
    }
    return {};
}

qint64 DuplicateTree::sizeOf(qint32 node) const
{
    const Entry &entry = entryOf(node);
    switch (entry.kind) {
    case Kind::Folders:
        return m_scan.folders.at(entry.number).bytes;
    case Kind::Files:
        return m_scan.groups.at(entry.number).size;
    case Kind::Names:
        break;
    }
    return m_scan.manyNamed.at(entry.number).size;
}

bool DuplicateTree::isBefore(qint32 one, qint32 other, int column) const
{
    switch (column) {
    case Name:
        return m_ranks[std::size_t(one)] < m_ranks[std::size_t(other)];
    case Size:
        return sizeOf(one) < sizeOf(other);
    case Modified:
        return m_times[std::size_t(one)] < m_times[std::size_t(other)];
    default:
        return groupOf(one) >= 0 && groupOf(other) >= 0 &&
               m_scan.groups.at(groupOf(one)).digest < m_scan.groups.at(groupOf(other)).digest;
    }
}

bool DuplicateTree::holds(qint32 node, const QString &word) const
{
    if (!isGroup(node))
        return pathAt(node).contains(word, Qt::CaseInsensitive);
    for (qint32 path = node + 1; path < end(node); ++path) {
        if (pathAt(path).contains(word, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace velmora

#include "folder/actions/action_request.h"

namespace velmora {

QList<Side> sidesOf(const FolderSelection &selection)
{
    return selection.side ? QList<Side>{*selection.side} : QList<Side>{Side::Left, Side::Right};
}

bool goesToOtherSide(FolderCommand command)
{
    switch (command) {
    case FolderCommand::CopyToRight:
    case FolderCommand::CopyToLeft:
    case FolderCommand::MoveToRight:
    case FolderCommand::MoveToLeft:
        return true;
    default:
        return false;
    }
}

bool isMove(FolderCommand command)
{
    return command == FolderCommand::MoveTo || command == FolderCommand::MoveToRight ||
           command == FolderCommand::MoveToLeft;
}

Side sourceOf(FolderCommand command)
{
    switch (command) {
    case FolderCommand::CopyToLeft:
    case FolderCommand::MoveToLeft:
    case FolderCommand::MirrorToLeft:
    case FolderCommand::UpdateLeft:
        return Side::Right;
    default:
        return Side::Left;
    }
}

QString newFolderPath(const ActionRequest &request, Side side)
{
    if (request.selection.items.isEmpty())
        return request.name;
    const FolderDiffItem &item = request.selection.items.first();
    const ItemTree tree(request.context.items);
    const QString &root = rootOn(request.context, side);
    const QString relative = tree.placeOf(item, side, root).mid(root.endsWith(u'/') ? root.size() : root.size() + 1);
    if (item.isDir)
        return relative + u'/' + request.name;
    return relative.left(relative.lastIndexOf(u'/') + 1) + request.name;
}

ItemTree::ItemTree(const QList<FolderDiffItem> &items) : m_items(items)
{
    m_byName.reserve(items.size());
    for (qsizetype i = 0; i < items.size(); ++i)
        m_byName.insert(items[i].name, i);
}

QString ItemTree::placeOf(const FolderDiffItem &item, Side side, const QString &root) const
{
    const QString &there = pathOn(item, side);
    if (!there.isEmpty())
        return there;
    const QString &other = pathOn(item, otherSide(side));
    const QString name = other.mid(other.lastIndexOf(u'/') + 1);
    const qsizetype parent = indexOf(item.name.left(item.name.lastIndexOf(u'/')));
    const bool isInner = item.name.contains(u'/');
    const QString folder = isInner && parent >= 0 ? placeOf(m_items[parent], side, root)
                           : isInner              ? root + u'/' + item.name.left(item.name.lastIndexOf(u'/'))
                                                  : root;
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

} // namespace velmora

#include "folder/actions/action_request.h"

#include <iterator>

namespace velmora {

namespace {

struct Traits {
    CommandKind kind;
    Side source = Side::Left;
    bool goesOver = false; ///< to the other side
};

/// By `FolderCommand`.
constexpr Traits commands[] = {
    Traits{CommandKind::Copy, Side::Left, true},
    Traits{CommandKind::Copy, Side::Right, true},
    Traits{CommandKind::Move, Side::Left, true},
    Traits{CommandKind::Move, Side::Right, true},
    Traits{CommandKind::Copy},
    Traits{CommandKind::Move},
    Traits{CommandKind::Delete},
    Traits{CommandKind::Delete},
    Traits{CommandKind::Rename},
    Traits{CommandKind::NewFolder},
    Traits{CommandKind::Mirror},
    Traits{CommandKind::Mirror, Side::Right},
    Traits{CommandKind::Update},
    Traits{CommandKind::Update, Side::Right},
    Traits{CommandKind::UpdateBoth},
    Traits{CommandKind::Show},
    Traits{CommandKind::Show},
    Traits{CommandKind::Undo},
    Traits{CommandKind::Continue},
};
static_assert(std::size(commands) == std::size_t(FolderCommand::ContinueRun) + 1);

} // namespace

QList<Side> sidesOf(const FolderSelection &selection)
{
    return selection.side ? QList<Side>{*selection.side} : QList<Side>{Side::Left, Side::Right};
}

CommandKind kindOf(FolderCommand command)
{
    return commands[std::size_t(command)].kind;
}

bool goesToOtherSide(FolderCommand command)
{
    return commands[std::size_t(command)].goesOver;
}

Side sourceOf(FolderCommand command)
{
    return commands[std::size_t(command)].source;
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

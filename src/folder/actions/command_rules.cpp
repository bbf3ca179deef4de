#include "folder/actions/command_rules.h"

#include "folder/actions/action_request.h"
#include "folder/actions/snapshot_words.h"
#include "session/translate.h"

#include <algorithm>

namespace velmora {

namespace {

bool hasRoot(const FolderActionContext &context, Side side)
{
    return !rootOn(context, side).isEmpty();
}

QString whyNotWritable(const FolderActionContext &context, const QList<Side> &sides)
{
    for (const Side side : sides) {
        if (isReadOnly(context, side))
            return side == Side::Left ? Velmora::tr("The left side is read-only")
                                      : Velmora::tr("The right side is read-only");
        if (hasRoot(context, side) && context.roots[side].source->writeBar() != WriteBar::None)
            return side == Side::Left ? Velmora::tr("The left side shows a fixed state, which cannot be changed")
                                      : Velmora::tr("The right side shows a fixed state, which cannot be changed");
    }
    return {};
}

/// `taken`: the sides whose files are to be read.
QString whyNotReadable(const FolderActionContext &context, const QList<Side> &taken)
{
    const bool areReadable = std::all_of(taken.begin(), taken.end(), [&context](Side side) {
        return !hasRoot(context, side) || context.roots[side].source->contentAccess() == ContentAccess::Readable;
    });
    return areReadable ? QString() : noContentsText();
}

bool isAnyOn(const FolderSelection &selection, Side side)
{
    return std::any_of(selection.items.begin(), selection.items.end(),
                       [side](const FolderDiffItem &item) { return !pathOn(item, side).isEmpty(); });
}

/// Of the sides that the selection means, those on which something of it is.
QList<Side> occupiedSides(const FolderSelection &selection)
{
    QList<Side> sides;
    for (const Side side : sidesOf(selection)) {
        if (isAnyOn(selection, side))
            sides.append(side);
    }
    return sides;
}

QString whyNotBothFolders(const FolderActionContext &context)
{
    const bool both = hasRoot(context, Side::Left) && hasRoot(context, Side::Right);
    return both ? QString() : Velmora::tr("Choose both folders first");
}

QString whyNotOccupied(const FolderSelection &selection)
{
    if (selection.items.isEmpty())
        return Velmora::tr("Nothing is selected");
    return occupiedSides(selection).isEmpty() ? Velmora::tr("The selection is not on this side") : QString();
}

QString whyNotOne(const FolderSelection &selection)
{
    const QString reason = whyNotOccupied(selection);
    if (!reason.isEmpty())
        return reason;
    return selection.items.size() > 1 ? Velmora::tr("Select one entry only") : QString();
}

QString whyNotToOtherSide(FolderCommand command, const FolderActionContext &context, const FolderSelection &selection)
{
    const Side source = sourceOf(command);
    if (const QString reason = whyNotBothFolders(context); !reason.isEmpty())
        return reason;
    QList<Side> written{otherSide(source)};
    if (isMove(command))
        written.append(source);
    if (const QString reason = whyNotWritable(context, written); !reason.isEmpty())
        return reason;
    if (const QString reason = whyNotReadable(context, {source}); !reason.isEmpty())
        return reason;
    if (hasRoot(context, source) && !context.roots[source].source->isLocal())
        return Velmora::tr("This side is no folder of this computer: \"Copy to folder...\" copies out of it");
    if (selection.items.isEmpty())
        return Velmora::tr("Nothing is selected");
    if (isAnyOn(selection, source))
        return {};
    return source == Side::Left ? Velmora::tr("Nothing of the selection is on the left side")
                                : Velmora::tr("Nothing of the selection is on the right side");
}

QString whyNotSynchronised(const FolderActionContext &context, const QList<Side> &written)
{
    const QString reason = whyNotBothFolders(context);
    return reason.isEmpty() ? whyNotWritable(context, written) : reason;
}

QString firstOf(const QString &reason, const QString &next)
{
    return reason.isEmpty() ? next : reason;
}

QString whyNotNewFolder(const FolderActionContext &context, const FolderSelection &selection)
{
    if (selection.items.size() > 1)
        return Velmora::tr("Select one entry only");
    for (const Side side : sidesOf(selection)) {
        if (!hasRoot(context, side))
            return Velmora::tr("Choose both folders first");
    }
    return whyNotWritable(context, sidesOf(selection));
}

} // namespace

QString whyNotPossible(FolderCommand command, const FolderActionContext &context, const FolderSelection &selection)
{
    switch (kindOf(command)) {
    case CommandKind::Copy:
    case CommandKind::Move:
        if (goesToOtherSide(command))
            return whyNotToOtherSide(command, context, selection);
        if (!isMove(command))
            return firstOf(whyNotOccupied(selection), whyNotReadable(context, occupiedSides(selection)));
        [[fallthrough]];
    case CommandKind::Delete:
        return firstOf(whyNotOccupied(selection), whyNotWritable(context, occupiedSides(selection)));
    case CommandKind::Rename:
        return firstOf(whyNotOne(selection), whyNotWritable(context, occupiedSides(selection)));
    case CommandKind::NewFolder:
        return whyNotNewFolder(context, selection);
    case CommandKind::Mirror:
    case CommandKind::Update:
        return whyNotSynchronised(context, {otherSide(sourceOf(command))});
    case CommandKind::UpdateBoth:
        return whyNotSynchronised(context, {Side::Left, Side::Right});
    case CommandKind::Show:
        return whyNotOne(selection);
    case CommandKind::Undo:
    case CommandKind::Continue:
        break;
    }
    return {};
}

} // namespace velmora

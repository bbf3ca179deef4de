#include "folder/actions/command_words.h"

#include "core/path_names.h"
#include "core/visible_name.h"
#include "folder/actions/action_words.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QLocale>

#include <algorithm>
#include <iterator>

namespace velmora {

namespace {

/// By `CommandKind`.
constexpr CommandWords words[] = {
    CommandWords{QT_TRANSLATE_NOOP("Velmora", "Copy"), QT_TRANSLATE_NOOP("Velmora", "%1 copy: %2 -> %3"),
                 QT_TRANSLATE_NOOP("Velmora", "Cannot copy: %1"), QT_TRANSLATE_NOOP("Velmora", "Cannot copy to: %1"),
                 QT_TRANSLATE_NOOP("Velmora", "Copy failed")},
    CommandWords{QT_TRANSLATE_NOOP("Velmora", "Move"), QT_TRANSLATE_NOOP("Velmora", "%1 move: %2 -> %3"),
                 QT_TRANSLATE_NOOP("Velmora", "Cannot move: %1"), QT_TRANSLATE_NOOP("Velmora", "Cannot move to: %1"),
                 QT_TRANSLATE_NOOP("Velmora", "Move failed")},
    CommandWords{QT_TRANSLATE_NOOP("Velmora", "Delete"), QT_TRANSLATE_NOOP("Velmora", "%1 delete: %2"),
                 QT_TRANSLATE_NOOP("Velmora", "Cannot delete: %1"), nullptr,
                 QT_TRANSLATE_NOOP("Velmora", "Delete failed")},
    CommandWords{QT_TRANSLATE_NOOP("Velmora", "Rename"), QT_TRANSLATE_NOOP("Velmora", "%1 rename: %2 -> %3"),
                 QT_TRANSLATE_NOOP("Velmora", "Cannot rename: %1"), nullptr,
                 QT_TRANSLATE_NOOP("Velmora", "Rename failed")},
    CommandWords{QT_TRANSLATE_NOOP("Velmora", "New folder"), QT_TRANSLATE_NOOP("Velmora", "%1 new folder: %2"),
                 QT_TRANSLATE_NOOP("Velmora", "Cannot create: %1"), nullptr,
                 QT_TRANSLATE_NOOP("Velmora", "New folder failed")},
    CommandWords{QT_TRANSLATE_NOOP("Velmora", "Mirror"), QT_TRANSLATE_NOOP("Velmora", "%1 mirror: %2 -> %3"),
                 QT_TRANSLATE_NOOP("Velmora", "Mirror failed: %1 -> %2"), nullptr,
                 QT_TRANSLATE_NOOP("Velmora", "Mirror sync failed")},
    CommandWords{QT_TRANSLATE_NOOP("Velmora", "Update"), QT_TRANSLATE_NOOP("Velmora", "%1 update: %2 -> %3"),
                 QT_TRANSLATE_NOOP("Velmora", "Update failed: %1 -> %2"), nullptr,
                 QT_TRANSLATE_NOOP("Velmora", "Update sync failed")},
    CommandWords{QT_TRANSLATE_NOOP("Velmora", "Update both sides"),
                 QT_TRANSLATE_NOOP("Velmora", "%1 update both: %2 <-> %3"),
                 QT_TRANSLATE_NOOP("Velmora", "Update both sides failed: %1 <-> %2"), nullptr,
                 QT_TRANSLATE_NOOP("Velmora", "Update sync failed")},
    CommandWords{QT_TRANSLATE_NOOP("Velmora", "Undo"), QT_TRANSLATE_NOOP("Velmora", "%1 undo: %2"),
                 QT_TRANSLATE_NOOP("Velmora", "Cannot undo: %1"), nullptr, QT_TRANSLATE_NOOP("Velmora", "Undo failed")},
    CommandWords{QT_TRANSLATE_NOOP("Velmora", "Continue"), QT_TRANSLATE_NOOP("Velmora", "%1 continue: %2"),
                 QT_TRANSLATE_NOOP("Velmora", "Cannot continue: %1"), nullptr,
                 QT_TRANSLATE_NOOP("Velmora", "Continuing failed")},
};
static_assert(std::size(words) == std::size_t(CommandKind::Show));

} // namespace

const CommandWords &wordsOf(FolderCommand command)
{
    const CommandKind kind = kindOf(command);
    return words[std::size_t(kind == CommandKind::Show ? CommandKind::Delete : kind)];
}

std::pair<QString, QString> rootsFromTo(const ActionRequest &request)
{
    const Side source = sourceOf(request.command);
    return {shownPath(rootOn(request.context, source)), shownPath(rootOn(request.context, otherSide(source)))};
}

QString actionTitle(const ActionRequest &request)
{
    return Velmora::tr("%1: %2").arg(Velmora::tr(wordsOf(request.command).name), selectionTitle(request));
}

QString selectionTitle(const ActionRequest &request)
{
    if (isAboutRoots(request.command)) {
        const auto [from, to] = rootsFromTo(request);
        const bool both = request.command == FolderCommand::UpdateBoth;
        return Velmora::tr(both ? QT_TRANSLATE_NOOP("Velmora", "%1 <-> %2") : QT_TRANSLATE_NOOP("Velmora", "%1 -> %2"))
            .arg(from, to);
    }
    if (request.command == FolderCommand::NewFolder || isAboutRun(request.command))
        return request.name;
    const QList<FolderDiffItem> &items = request.selection.items;
    if (items.size() != 1)
        return Velmora::tr("%1 entries").arg(QLocale().toString(items.size()));
    return visibleName(bareName(items.first().name));
}

QString sideLine(Side side, const QString &path)
{
    return Velmora::tr(side == Side::Left ? QT_TRANSLATE_NOOP("Velmora", "Left side: %1")
                                          : QT_TRANSLATE_NOOP("Velmora", "Right side: %1"))
        .arg(shownPath(path));
}

QString sourceLines(const ActionRequest &request)
{
    const bool hasSource = isAboutRoots(request.command) || goesToOtherSide(request.command);
    const bool isOneSided = hasSource && request.command != FolderCommand::UpdateBoth;
    QStringList lines;
    for (const Side side : isOneSided ? QList<Side>{sourceOf(request.command)} : sidesOf(request.selection)) {
        const auto isThere = [side](const FolderDiffItem &item) { return !pathOn(item, side).isEmpty(); };
        const QList<FolderDiffItem> &items = request.selection.items;
        const qsizetype count = std::count_if(items.begin(), items.end(), isThere);
        const QString root = shownPath(rootOn(request.context, side));
        if (isAboutRoots(request.command))
            lines.append(sideLine(side, root));
        else if (count == 1)
            lines.append(sideLine(side, pathOn(*std::find_if(items.begin(), items.end(), isThere), side)));
        else if (count > 1)
            lines.append(sideLine(side, Velmora::tr("%1 entries in %2").arg(QLocale().toString(count), root)));
    }
    return lines.join(u'\n');
}

} // namespace velmora

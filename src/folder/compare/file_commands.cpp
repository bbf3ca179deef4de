#include "folder/compare/file_commands.h"

#include "folder/compare/folder_compare_bar.h"
#include "folder/compare/folder_comparison.h"
#include "folder/compare/folder_view.h"
#include "folder/compare/tree_line_tree_widget.h"

#include <QAction>

namespace velmora {

namespace {

/// Whether filters hide an entry or a folder around it.
std::function<bool(const FolderDiffItem &)> hiddenTest(const FolderFilter &filter)
{
    return [filter](const FolderDiffItem &item) {
        if (!filter.shows(item))
            return true;
        FolderDiffItem folder;
        folder.isDir = true;
        for (qsizetype slash = item.name.indexOf(u'/'); slash >= 0; slash = item.name.indexOf(u'/', slash + 1)) {
            folder.name = item.name.left(slash);
            if (!filter.shows(folder))
                return true;
        }
        return false;
    };
}

} // namespace

FileCommands::FileCommands(FolderCompareBar &bar, FolderView &view, FolderComparison &comparison, QWidget &window)
    : m_view(view), m_comparison(comparison), m_actions(new FolderActions(window, this))
{
    using enum FolderCommand;
    const std::pair<QAction *, FolderCommand> commands[] = {
        {bar.copyToRight, CopyToRight},
        {bar.copyToLeft, CopyToLeft},
        {bar.copyTo, CopyTo},
        {bar.moveToRight, MoveToRight},
        {bar.moveToLeft, MoveToLeft},
        {bar.moveTo, MoveTo},
        {bar.deleteSelected, Delete},
        {bar.deleteForGood, DeleteForGood},
        {bar.rename, Rename},
        {bar.newFolder, NewFolder},
        {bar.mirrorToRight, MirrorToRight},
        {bar.mirrorToLeft, MirrorToLeft},
        {bar.updateRight, UpdateRight},
        {bar.updateLeft, UpdateLeft},
        {bar.updateBoth, UpdateBoth},
        {bar.properties, Properties},
        {bar.showInFileManager, ShowInFileManager},
        {bar.undoLast, UndoLast},
    };
    for (const auto &[action, command] : commands) {
        m_buttons.append({action, command, action->toolTip()});
        connect(action, &QAction::triggered, this, [this, wanted = command] { carryOut(wanted); });
    }
    connect(m_actions, &FolderActions::logLine, this, &FileCommands::logLine);
    connect(m_actions, &FolderActions::statusChanged, this, &FileCommands::statusChanged);
    connect(m_actions, &FolderActions::progressed, this, [this](const FolderActionProgress &progress) {
        const bool byBytes = progress.bytesTotal > 0;
        Q_EMIT progressed(byBytes ? progress.bytesDone : progress.filesDone,
                          byBytes ? progress.bytesTotal : progress.filesTotal);
    });
    connect(m_actions, &FolderActions::runningChanged, this, [this] {
        update();
        Q_EMIT runningChanged();
    });
    connect(m_actions, &FolderActions::finished, this, [this](const QStringList &touched) {
        if (m_roots == rootPaths())
            m_comparison.recompare(touched);
        else
            Q_EMIT othersTouched();
    });
    connect(&view, &FolderView::selectionChanged, this, &FileCommands::update);
    connect(&comparison, &FolderComparison::runningChanged, this, &FileCommands::update);
    m_updater.setSingleShot(true);
    m_updater.setInterval(0);
    connect(&m_updater, &QTimer::timeout, this, &FileCommands::showPossible);
}

FolderActionContext FileCommands::context(bool withItems) const
{
    const FolderSpec &spec = m_comparison.spec();
    FolderActionContext context;
    context.roots = spec.roots;
    context.identities = m_comparison.identities();
    context.options = spec.options;
    if (withItems) {
        context.items = m_comparison.tree().items();
        context.problems = m_comparison.problems();
        context.isWhole = m_comparison.isWhole();
        context.isHidden = hiddenTest(spec.filter());
    }
    return context;
}

FolderSelection FileCommands::selectionOf(const QList<qint32> &nodes) const
{
    FolderSelection selection;
    Sides<bool> isOn;
    for (const qint32 node : nodes) {
        selection.items.append(m_comparison.tree().item(node));
        for (const Side side : bothSides)
            isOn[side] = isOn[side] || !pathOn(selection.items.last(), side).isEmpty();
    }
    // Of the side that a person works on; of the other where only that one has the entries.
    const Side active = sideOf(FolderColumn(m_view.activePane().firstColumn()));
    selection.side = isOn[active] || nodes.isEmpty() ? active : otherSide(active);
    return selection;
}

FolderSelection FileCommands::selection() const
{
    return selectionOf(m_view.selectedNodes());
}

Sides<QString> FileCommands::rootPaths() const
{
    return {m_comparison.spec().roots.left.path, m_comparison.spec().roots.right.path};
}

void FileCommands::carryOut(FolderCommand command)
{
    if (command == FolderCommand::CopyTo) {
        const FolderSelection wanted = selection();
        const Side side = wanted.side.value_or(Side::Left);
        const TreeFolder &root = m_comparison.spec().roots[side];
        if (root.source && !root.source->isLocal()) {
            QStringList paths;
            for (const FolderDiffItem &item : wanted.items) {
                if (const QString &path = pathOn(item, side); !path.isEmpty())
                    paths.append(path);
            }
            Q_EMIT extractionWanted(root, paths);
            return;
        }
    }
    m_roots = rootPaths();
    m_actions->setContext(context(true));
    m_actions->carryOut(command, selection());
    // A list that is shared would be copied at the next change of the tree.
    m_actions->setContext(context(false));
}

bool FileCommands::canUndo() const
{
    return m_actions->whyNot(FolderCommand::UndoLast, {}).isEmpty();
}

void FileCommands::update()
{
    m_updater.start();
}

void FileCommands::showPossible()
{
    // Some thousands tell what can be done with all.
    constexpr qsizetype mostLookedAt = 2000;
    QList<qint32> nodes = m_view.selectedNodes();
    if (nodes.size() > mostLookedAt)
        nodes.resize(mostLookedAt);
    const FolderSelection some = selectionOf(nodes);
    m_actions->setContext(context(false));
    for (const Button &button : std::as_const(m_buttons)) {
        const QString reason = m_actions->whyNot(button.command, some);
        button.action->setEnabled(reason.isEmpty());
        button.action->setToolTip(reason.isEmpty() ? button.hint : button.hint + u'\n' + reason);
    }
}

} // namespace velmora

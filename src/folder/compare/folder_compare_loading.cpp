#include "core/path_names.h"
#include "core/settings_store.h"
#include "folder/actions/action_words.h"
#include "folder/actions/entry_extraction.h"
#include "folder/compare/contents_run.h"
#include "folder/compare/file_commands.h"
#include "folder/compare/folder_compare_side_pane.h"
#include "folder/compare/folder_compare_widget.h"
#include "folder/compare/folder_report_content.h"
#include "folder/compare/folder_view.h"
#include "folder/compare/other_trees.h"
#include "session/frame/notice_card.h"
#include "session/translate.h"
#include "settings/options/folder_settings_store.h"

#include <QDir>
#include <QTime>

#include <algorithm>
#include <optional>

namespace velmora {

FolderSpec FolderCompareWidget::spec() const
{
    const SessionPaths folders = paths();
    return {trees(folders), m_options, m_filters, {}};
}

void FolderCompareWidget::onCompare()
{
    const SessionPaths folders = paths();
    if (folders.left.isEmpty() || folders.right.isEmpty()) {
        showMessage(words().choose);
        showNotice();
        return;
    }
    log(Velmora::tr("%1 load dirs: %2 <-> %3")
            .arg(logTime(QTime::currentTime()), nativePath(folders.left), nativePath(folders.right)));
    loadCurrentLevel();
}

void FolderCompareWidget::loadCurrentLevel()
{
    m_view->notice().clear(); // what was told of the last run
    if (openTrees())
        loadOpened();
}

void FolderCompareWidget::tellUnopened(const QString &message)
{
    m_comparison.clear();
    m_hasResult = false;
    log(message);
    showMessage(message);
    m_view->notice().tell({{}, message, {{Velmora::tr("Try again"), [this] { onRefresh(); }}}});
}

void FolderCompareWidget::loadOpened()
{
    const FolderSpec wanted = spec();
    m_hasResult = false;
    m_contents->forget();
    m_cancelAsked = false;
    if (m_place.enter({wanted.roots.left.shownPath(), wanted.roots.right.shownPath(), {}})) {
        m_comparison.clear();
        rememberPaths();
    }
    showMessage(Velmora::tr("Reading directories..."));
    // A report tells of the whole trees.
    m_comparison.load(wanted, m_treeMode || !m_pendingReport.isEmpty());
    Q_EMIT tabTitleChanged(m_place.title());
    // What is over at once is not worth a word in the window.
    constexpr int tellingMs = 400;
    m_startTeller.start(tellingMs);
    showRunning();
    showNotice();
}

void FolderCompareWidget::readUnread()
{
    m_contents->readUnread();
}

void FolderCompareWidget::rememberPaths()
{
    if (!areLocal())
        return;
    SessionSettings settings;
    FolderSettingsStore store(settings);
    store.addRecentPath(m_place.folders().right);
    store.addRecentPath(m_place.folders().left);
    for (FolderCompareSidePane *side : {&m_view->leftSide(), &m_view->rightSide()})
        side->edit().setRecentPaths(store.recentPaths());
}

void FolderCompareWidget::onCancelCompare()
{
    if (m_fileCommands->isRunning())
        m_fileCommands->cancel();
    m_extraction->cancel();
    cancelOpening();
    if (!m_comparison.isRunning())
        return;
    showMessage(Velmora::tr("Cancelling..."));
    m_cancelAsked = true;
    m_contents->forget();
    m_comparison.cancel();
    showRunning();
}

void FolderCompareWidget::onFolderCompareFinished(quint64 generation, const QList<FolderDiffItem> &items,
                                                  bool cancelled)
{
    if (generation != m_comparison.generation())
        return;
    m_hasResult = true;
    m_startTeller.stop();
    if (std::exchange(m_expandAllWhenLoaded, false))
        m_view->rows().setAllExpanded(-1, true);
    if (m_treeMode && !cancelled) {
        const auto folders = std::count_if(items.begin(), items.end(), [](const auto &item) { return item.isDir; });
        const auto nested =
            std::count_if(items.begin(), items.end(), [](const auto &item) { return item.name.contains(u'/'); });
        log(Velmora::tr("%1 tree mode: %2 items (folders %3, nested %4)")
                .arg(logTime(QTime::currentTime()))
                .arg(items.size())
                .arg(folders)
                .arg(nested));
    }
    tellProblems();
    if (cancelled) {
        tellCancelled();
        showNotice();
        return;
    }
    showSummary();
    showNotice();
    Q_EMIT comparisonFinished(m_place.folders().left, m_place.folders().right);
    // What a state knows of contents tells more than times that all its files share.
    if (OtherTrees::isAnyState(m_place.folders()) && mayReadUnread())
        readUnread();
    if (!m_pendingReport.isEmpty())
        m_reports.write(std::exchange(m_pendingReport, {}),
                        folderReportWriter(shownItems(m_comparison.tree()), m_place.folders()));
}

// Levels --------------------------------------------------------------------------------------------------------------

void FolderCompareWidget::navigate(const QString &left, const QString &right)
{
    log(Velmora::tr("%1 navigate: %2 <-> %3").arg(logTime(QTime::currentTime()), nativePath(left), nativePath(right)));
    setPaths({left, right, {}});
    loadCurrentLevel();
}

void FolderCompareWidget::onNavigateUp()
{
    const Sides<TreeFolder> &roots = m_comparison.spec().roots;
    const bool isTop = std::any_of(bothSides.begin(), bothSides.end(), [&](Side side) {
        const bool isWhole = roots[side].path == u"/" && !roots[side].source->isLocal();
        return isWhole && (isGitPlace(roots[side].shownPath()) || snapshotPlaceOf(roots[side].shownPath()));
    });
    const std::optional<SessionPaths> above = isTop ? std::nullopt : m_place.goUp(paths());
    if (above)
        navigate(above->left, above->right);
    else
        showMessage(Velmora::tr("There is no folder above both sides"));
}

void FolderCompareWidget::onItemExpanded(const QModelIndex &item)
{
    m_view->rows().setExpanded(item.row(), true);
}

void FolderCompareWidget::logExpanded(qint32 node)
{
    const FolderTree &tree = m_comparison.tree();
    log(Velmora::tr("%1 expand: %2 (%3 items)")
            .arg(logTime(QTime::currentTime()), QDir::toNativeSeparators(tree.item(node).name))
            .arg(tree.childCount(node)));
}

void FolderCompareWidget::onItemCollapsed(const QModelIndex &item)
{
    m_view->rows().setExpanded(item.row(), false);
}

void FolderCompareWidget::onExpandAll()
{
    log(Velmora::tr("%1 expand all subfolders recursively").arg(logTime(QTime::currentTime())));
    m_treeMode = true;
    m_expandAllWhenLoaded = !m_comparison.isWhole();
    m_view->rows().setAllExpanded(-1, true);
    // A run that is under way finds everything; one that was cancelled has left something out.
    if (m_expandAllWhenLoaded && m_hasResult && !m_comparison.isRunning())
        loadCurrentLevel();
}

void FolderCompareWidget::onCollapseAll()
{
    m_treeMode = false;
    m_expandAllWhenLoaded = false;
    m_view->rows().setAllExpanded(-1, false);
}

} // namespace velmora

#include "folder/actions/advanced_filters_dialog.h"
#include "folder/actions/snapshot_words.h"
#include "folder/compare/entry_opener.h"
#include "folder/compare/folder_compare_bar.h"
#include "folder/compare/folder_compare_widget.h"
#include "folder/compare/folder_filter_bar.h"
#include "folder/compare/folder_report_content.h"
#include "folder/compare/folder_view.h"
#include "folder/compare/tree_line_tree_widget.h"
#include "session/dialogs.h"
#include "session/translate.h"
#include "settings/dialogs/folder_session_settings_dialog.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QMenu>

namespace velmora {

// Opening -------------------------------------------------------------------------------------------------------------

void FolderCompareWidget::onItemDoubleClicked(const QModelIndex &item, int /*column*/)
{
    openNode(m_view->rows().nodeAt(item.row()));
}

void FolderCompareWidget::openNode(qint32 node)
{
    if (node < 0)
        return;
    const FolderTree &tree = m_comparison.tree();
    const FolderDiffItem item = tree.item(node);
    const bool mixedKinds =
        item.isDir && isPair(item) && !tree.isExpandable(node) && item.diffStatus() == FolderDiffStatus::Different;
    if (mixedKinds) {
        showMessage(Velmora::tr("A folder and a file of the same name cannot be compared"));
    } else if (!item.isDir) {
        if (canOpen(item))
            m_opener->open(sourcesOf(m_comparison.spec().roots), item);
    } else if (isPair(item)) {
        navigate(writtenPath(item, Side::Left), writtenPath(item, Side::Right));
    } else {
        const QModelIndex index = m_view->rows().index(m_view->rows().rowOf(node), 0);
        if (tree.node(node).expanded)
            onItemCollapsed(index);
        else
            onItemExpanded(index);
    }
}

QString FolderCompareWidget::writtenPath(const FolderDiffItem &item, Side side) const
{
    const QString &path = pathOn(item, side);
    return path.isEmpty() ? QString() : TreeFolder{m_comparison.spec().roots[side].source, path}.shownPath();
}

bool FolderCompareWidget::areLocal() const
{
    const Sides<TreeFolder> &roots = m_comparison.spec().roots;
    return std::all_of(bothSides.begin(), bothSides.end(),
                       [&roots](Side side) { return !roots[side].source || roots[side].source->isLocal(); });
}

bool FolderCompareWidget::canOpen(const FolderDiffItem &item)
{
    const Sides<TreeFolder> &roots = m_comparison.spec().roots;
    const bool isReadable = std::all_of(bothSides.begin(), bothSides.end(), [&](Side side) {
        return pathOn(item, side).isEmpty() || roots[side].source->contentAccess() == ContentAccess::Readable;
    });
    if (!isReadable)
        showMessage(noContentsText());
    return isReadable;
}

void FolderCompareWidget::showEvent(QShowEvent *event)
{
    SessionWidget::showEvent(event);
    // Back from the tabs of some entries: what was changed there is to be seen here, and they may be gone back to.
    if (m_hasResult)
        m_comparison.recheck(m_opener->openedOf(m_comparison.tree().items()));
}

void FolderCompareWidget::openFor(SessionHost::Purpose purpose, const FolderDiffItem &item)
{
    if (item.isDir && !areLocal()) {
        host().openSession(kind(), {writtenPath(item, Side::Left), writtenPath(item, Side::Right), {}});
        return;
    }
    if (item.isDir || canOpen(item))
        m_opener->openAs(host().kindFor(purpose), sourcesOf(m_comparison.spec().roots), item);
}

void FolderCompareWidget::openIn(const QString &kind, const QString &left, const QString &right)
{
    using enum SessionHost::Purpose;
    if (kind == host().kindFor(CompareTexts))
        Q_EMIT openTextCompare(left, right);
    else if (kind == host().kindFor(CompareFolders))
        Q_EMIT openFolderCompare(left, right);
    else if (kind == host().kindFor(SyncFolders))
        Q_EMIT openFolderSync(left, right);
    else
        host().openSession(kind, {left, right, {}});
}

void FolderCompareWidget::goToDifference(bool forward)
{
    FolderRowsModel &rows = m_view->rows();
    const qint32 node = rows.nextDifference(m_view->currentNode(), forward);
    if (node < 0) {
        showMessage(forward ? Velmora::tr("No further difference") : Velmora::tr("No earlier difference"));
        return;
    }
    if (rows.view() == RowsView::Same)
        onShowAll();
    m_view->goToNode(node);
    m_view->activePane().setFocus();
}

// Views and filters ---------------------------------------------------------------------------------------------------

void FolderCompareWidget::setView(RowsView view)
{
    m_view->rows().setView(view);
    showNotice();
}

void FolderCompareWidget::onShowAll()
{
    m_bar->showAll->setChecked(true);
    setView(RowsView::All);
}

void FolderCompareWidget::onShowDifferences()
{
    m_bar->showDifferences->setChecked(true);
    setView(RowsView::Differences);
}

void FolderCompareWidget::onShowIdentical()
{
    m_bar->showIdentical->setChecked(true);
    setView(RowsView::Same);
}

void FolderCompareWidget::onNameFilterChanged()
{
    m_filters.limits.masks = m_filterBar->masks();
    applyFilters();
}

void FolderCompareWidget::onAdvancedFilter()
{
    auto *dialog = new AdvancedFiltersDialog(m_filters.limits, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        m_filters.takeRanges(dialog->limits());
        log(advancedFiltersLogLine(m_filters.limits, QTime::currentTime()));
        applyFilters();
    });
    dialog->open();
}

void FolderCompareWidget::onSessionSettings(int initialTab)
{
    auto *dialog = new FolderSessionSettingsDialog(m_options, paths(), initialTab, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        const FolderSessionOptions before = m_options;
        takeOptions(dialog->options());
        const bool comparesAnew =
            before.showHidden != m_options.showHidden || before.compareBasis != m_options.compareBasis ||
            before.timeToleranceSec != m_options.timeToleranceSec || before.alignOverrides != m_options.alignOverrides;
        if (comparesAnew && (m_hasResult || m_comparison.isRunning()))
            onRefresh();
        else
            applyFilters();
    });
    dialog->open();
}

void FolderCompareWidget::copyPaths(Side side)
{
    QStringList paths;
    for (const qint32 node : m_view->selectedNodes()) {
        if (const QString path = writtenPath(m_comparison.tree().item(node), side); !path.isEmpty())
            paths.append(QDir::toNativeSeparators(path));
    }
    if (!paths.isEmpty())
        QGuiApplication::clipboard()->setText(paths.join(u'\n'));
}

QStringList FolderCompareWidget::selectedBareNames() const
{
    QStringList names;
    for (const qint32 node : m_view->selectedNodes())
        names.append(m_comparison.tree().bareName(node).toString());
    return names;
}

// The menu of a row ---------------------------------------------------------------------------------------------------

void FolderCompareWidget::onTreeContextMenu(const QPoint &point)
{
    const qint32 node = m_view->currentNode();
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    if (node >= 0)
        fillEntryMenu(*menu, node);
    if (!m_filters.excludedNames.isEmpty()) {
        menu->addAction(Velmora::tr("Show excluded names again (%1)").arg(m_filters.excludedNames.size()), this,
                        [this] {
                            m_filters.excludedNames.clear();
                            applyFilters();
                        });
    }
    menu->addActions({m_bar->newFolder, m_bar->expandAll, m_bar->collapseAll, m_bar->refresh});
    if (node >= 0) {
        menu->addSeparator();
        menu->addActions({m_bar->showInFileManager, m_bar->properties});
    }
    menu->popup(point);
}

void FolderCompareWidget::fillEntryMenu(QMenu &menu, qint32 node)
{
    using enum SessionHost::Purpose;
    const FolderDiffItem item = m_comparison.tree().item(node);
    const auto addOpening = [&](const QString &text, SessionHost::Purpose purpose) {
        return menu.addAction(text, this, [this, purpose, item] { openFor(purpose, item); });
    };
    // A key of the panes, not of an action: it is shown and nothing else.
    const QString key = QKeySequence(Qt::Key_Return).toString(QKeySequence::NativeText);
    menu.addAction(Velmora::tr("Open") + u'\t' + key, this, [this, node] { openNode(node); });
    if (item.isDir && isPair(item)) {
        addOpening(Velmora::tr("Open in a new tab"), CompareFolders)
            ->setObjectName(QStringLiteral("openInNewTabAction"));
        if (areLocal())
            addOpening(Velmora::tr("Synchronise these folders"), SyncFolders);
    } else if (!item.isDir) {
        addOpening(Velmora::tr("Open as text"), CompareTexts);
        addOpening(Velmora::tr("Open as hex"), CompareBytes);
    }
    menu.addSeparator();
    menu.addActions({m_bar->copyToRight, m_bar->copyToLeft, m_bar->copyTo});
    menu.addActions({m_bar->moveToRight, m_bar->moveToLeft, m_bar->moveTo});
    menu.addActions({m_bar->deleteSelected, m_bar->rename});
    menu.addSeparator();
    menu.addActions({m_bar->compareContents, m_bar->align});
    menu.addSeparator();
    QAction *exclude = menu.addAction(Velmora::tr("Exclude by name"), this, [this] {
        m_filters.exclude(selectedBareNames());
        applyFilters();
    });
    exclude->setObjectName(QStringLiteral("excludeByNameAction"));
    QAction *ignore = menu.addAction(Velmora::tr("Ignore by name"), this, [this] {
        m_filters.toggleIgnored(selectedBareNames());
        applyFilters();
    });
    ignore->setObjectName(QStringLiteral("ignoreByNameAction"));
    ignore->setCheckable(true);
    ignore->setChecked(m_comparison.tree().node(node).ignored);
    ignore->setToolTip(Velmora::tr("Entries of this name are shown and count as no difference"));
    for (const Side side : bothSides) {
        if (!pathOn(item, side).isEmpty())
            menu.addAction(side == Side::Left ? Velmora::tr("Copy left path") : Velmora::tr("Copy right path"), this,
                           [this, side] { copyPaths(side); });
    }
    menu.addSeparator();
}

// Report --------------------------------------------------------------------------------------------------------------

void FolderCompareWidget::onExportHtml()
{
    if (!m_hasResult) {
        Dialogs::instance().tell(this, Dialogs::Tone::Information, Velmora::tr("Export"),
                                 Velmora::tr("No comparison result to export"));
        return;
    }
    Dialogs::instance().saveFile(this, Velmora::tr("Export diff report"),
                                 besideFile(m_place.folders().left, QStringLiteral("folder_diff_report.html")),
                                 QStringLiteral("HTML (*.html)"), [this](const QString &path) {
                                     m_reports.write(
                                         path, folderReportWriter(shownItems(m_comparison.tree()), m_place.folders()));
                                 });
}

} // namespace velmora

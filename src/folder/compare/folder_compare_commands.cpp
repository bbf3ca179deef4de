#include "folder/actions/advanced_filters_dialog.h"
#include "folder/compare/file_kind.h"
#include "folder/compare/folder_compare_bar.h"
#include "folder/compare/folder_compare_widget.h"
#include "folder/compare/folder_filter_bar.h"
#include "folder/compare/folder_report_export.h"
#include "folder/compare/folder_view.h"
#include "folder/compare/tree_line_tree_widget.h"
#include "session/dialogs.h"
#include "session/session_host.h"
#include "session/translate.h"
#include "settings/dialogs/folder_session_settings_dialog.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
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
        openFiles(item);
    } else if (isPair(item)) {
        navigate(item.leftPath, item.rightPath);
    } else {
        const QModelIndex index = m_view->rows().index(m_view->rows().rowOf(node), 0);
        if (tree.node(node).expanded)
            onItemCollapsed(index);
        else
            onItemExpanded(index);
    }
}

void FolderCompareWidget::showEvent(QShowEvent *event)
{
    SessionWidget::showEvent(event);
    // Back from the tabs of some entries: what was changed there is to be seen here, and they may be gone back to.
    if (!m_hasResult || m_openedPaths.isEmpty())
        return;
    const QSet<QString> opened(m_openedPaths.begin(), m_openedPaths.end());
    QStringList names;
    for (const FolderDiffItem &item : m_comparison.tree().items()) {
        if (opened.contains(item.leftPath) || opened.contains(item.rightPath))
            names.append(item.name);
    }
    m_comparison.recheck(names);
}

void FolderCompareWidget::rememberOpened(const FolderDiffItem &item)
{
    constexpr qsizetype mostRemembered = 200;
    for (const QString &path : {item.leftPath, item.rightPath}) {
        m_openedPaths.removeOne(path);
        if (!path.isEmpty())
            m_openedPaths.append(path);
    }
    while (m_openedPaths.size() > mostRemembered)
        m_openedPaths.removeFirst();
}

void FolderCompareWidget::openAs(const QString &kind, const FolderDiffItem &item)
{
    rememberOpened(item);
    if (kind == QLatin1String("text"))
        Q_EMIT openTextCompare(item.leftPath, item.rightPath);
    else if (kind == QLatin1String("folder"))
        Q_EMIT openFolderCompare(item.leftPath, item.rightPath);
    else if (kind == QLatin1String("sync"))
        Q_EMIT openFolderSync(item.leftPath, item.rightPath);
    else
        host().openSession(kind, {item.leftPath, item.rightPath, {}});
}

void FolderCompareWidget::openFiles(const FolderDiffItem &item)
{
    struct Answer {
        QString gone; ///< what is no longer there
        QString kind;
    };
    m_opener.start(
        [left = item.leftPath, right = item.rightPath](const CancelFlag &, Progress &) {
            for (const QString &path : {left, right}) {
                if (!path.isEmpty() && !QFileInfo::exists(path))
                    return Answer{path, {}};
            }
            return Answer{{}, kindOfPair(left, right)};
        },
        [this, item](RunOutcome<Answer> &&outcome) {
            const Answer answer = outcome.value.value_or(Answer{{}, QStringLiteral("text")});
            if (answer.gone.isEmpty()) {
                openAs(host().isBuilt(answer.kind) ? answer.kind : QStringLiteral("text"), item);
                return;
            }
            m_comparison.recompare({item.name});
            showMessage(Velmora::tr("No longer there: %1").arg(QDir::toNativeSeparators(answer.gone)));
        });
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

void FolderCompareWidget::applyFilters()
{
    m_comparison.refilter(spec());
}

void FolderCompareWidget::onNameFilterChanged()
{
    m_limits.masks = m_filterBar->masks();
    applyFilters();
}

void FolderCompareWidget::onAdvancedFilter()
{
    auto *dialog = new AdvancedFiltersDialog(m_limits, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        const QString masks = m_limits.masks;
        m_limits = dialog->limits();
        m_limits.masks = masks;
        log(advancedFiltersLogLine(m_limits, QTime::currentTime()));
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

void FolderCompareWidget::copyPaths(bool left)
{
    QStringList paths;
    for (const qint32 node : m_view->selectedNodes()) {
        const FolderDiffItem &item = m_comparison.tree().item(node);
        const QString &path = left ? item.leftPath : item.rightPath;
        if (!path.isEmpty())
            paths.append(QDir::toNativeSeparators(path));
    }
    if (!paths.isEmpty())
        QGuiApplication::clipboard()->setText(paths.join(u'\n'));
}

void FolderCompareWidget::excludeSelectedNames()
{
    const FolderTree &tree = m_comparison.tree();
    for (const qint32 node : m_view->selectedNodes())
        m_excludedNames.insert(tree.bareName(node).toString());
    applyFilters();
}

void FolderCompareWidget::ignoreSelectedNames()
{
    const FolderTree &tree = m_comparison.tree();
    for (const qint32 node : m_view->selectedNodes()) {
        const QString name = tree.bareName(node).toString();
        if (!m_ignoredNames.remove(name))
            m_ignoredNames.insert(name);
    }
    applyFilters();
}

// The menu of a row ---------------------------------------------------------------------------------------------------

void FolderCompareWidget::onTreeContextMenu(const QPoint &point)
{
    const qint32 node = m_view->currentNode();
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    if (node >= 0) {
        const FolderTree &tree = m_comparison.tree();
        const FolderDiffItem item = tree.item(node);
        // A key of the panes, not of an action: it is shown and nothing else.
        const QString key = QKeySequence(Qt::Key_Return).toString(QKeySequence::NativeText);
        menu->addAction(Velmora::tr("Open") + u'\t' + key, this, [this, node] { openNode(node); });
        if (item.isDir && isPair(item)) {
            menu->addAction(Velmora::tr("Open in a new tab"), this,
                            [this, item] { openAs(QStringLiteral("folder"), item); })
                ->setObjectName(QStringLiteral("openInNewTabAction"));
            menu->addAction(Velmora::tr("Synchronise these folders"), this,
                            [this, item] { openAs(QStringLiteral("sync"), item); });
        } else if (!item.isDir) {
            menu->addAction(Velmora::tr("Open as text"), this, [this, item] { openAs(QStringLiteral("text"), item); });
            QAction *hex = menu->addAction(Velmora::tr("Open as hex"), this,
                                           [this, item] { openAs(QStringLiteral("binary"), item); });
            hex->setEnabled(host().isBuilt(QStringLiteral("binary")));
            if (!hex->isEnabled())
                hex->setToolTip(Velmora::tr("This session is not part of this version yet."));
        }
        menu->addSeparator();
        menu->addActions({m_bar->copyToRight, m_bar->copyToLeft, m_bar->copyTo});
        menu->addActions({m_bar->moveToRight, m_bar->moveToLeft, m_bar->moveTo});
        menu->addActions({m_bar->deleteSelected, m_bar->rename});
        menu->addSeparator();
        menu->addActions({m_bar->compareContents, m_bar->align});
        menu->addSeparator();
        menu->addAction(Velmora::tr("Exclude by name"), this, &FolderCompareWidget::excludeSelectedNames)
            ->setObjectName(QStringLiteral("excludeByNameAction"));
        QAction *ignore =
            menu->addAction(Velmora::tr("Ignore by name"), this, &FolderCompareWidget::ignoreSelectedNames);
        ignore->setObjectName(QStringLiteral("ignoreByNameAction"));
        ignore->setCheckable(true);
        ignore->setChecked(tree.node(node).ignored);
        ignore->setToolTip(Velmora::tr("Entries of this name are shown and count as no difference"));
        for (const bool left : {true, false}) {
            if (!(left ? item.leftPath : item.rightPath).isEmpty())
                menu->addAction(left ? Velmora::tr("Copy left path") : Velmora::tr("Copy right path"), this,
                                [this, left] { copyPaths(left); });
        }
        menu->addSeparator();
    }
    if (!m_excludedNames.isEmpty()) {
        menu->addAction(Velmora::tr("Show excluded names again (%1)").arg(m_excludedNames.size()), this, [this] {
            m_excludedNames.clear();
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

// Report --------------------------------------------------------------------------------------------------------------

void FolderCompareWidget::onExportHtml()
{
    if (!m_hasResult) {
        Dialogs::instance().tell(this, Dialogs::Tone::Information, Velmora::tr("Export"),
                                 Velmora::tr("No comparison result to export"));
        return;
    }
    Dialogs::instance().saveFile(
        this, Velmora::tr("Export diff report"), besideFile(m_loaded.left, QStringLiteral("folder_diff_report.html")),
        QStringLiteral("HTML (*.html)"),
        [this](const QString &path) { m_reports->write(shownItems(m_comparison.tree()), m_loaded, path); });
}

} // namespace velmora

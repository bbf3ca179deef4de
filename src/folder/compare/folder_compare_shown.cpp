#include "core/path_names.h"
#include "core/visible_name.h"
#include "folder/actions/action_words.h"
#include "folder/actions/entry_extraction.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/compare/file_commands.h"
#include "folder/compare/folder_compare_bar.h"
#include "folder/compare/folder_compare_widget.h"
#include "folder/compare/folder_filter_bar.h"
#include "folder/compare/folder_view.h"
#include "folder/compare/other_trees.h"
#include "folder/compare/time_shift_bar.h"
#include "session/frame/notice_card.h"
#include "session/frame/status_line.h"
#include "session/translate.h"

#include <QLabel>
#include <QLocale>
#include <QTime>
#include <QTimer>
#include <QToolButton>

#include <algorithm>

namespace velmora {

namespace {

QString describeCounts(const FolderCounts &counts)
{
    const QLocale locale;
    QStringList parts;
    const auto add = [&](const QString &text, qint64 number) { parts.append(text.arg(locale.toString(number))); };
    if (counts.files() > 0 || counts.folders > 0) {
        add(Velmora::tr("Same: %1"), counts.same);
        if (counts.unread > 0)
            add(Velmora::tr("of these not read: %1"), counts.unread);
        add(Velmora::tr("Different: %1"), counts.different);
        add(Velmora::tr("Left only: %1"), counts.leftOnly);
        add(Velmora::tr("Right only: %1"), counts.rightOnly);
    }
    if (counts.unknown > 0)
        add(Velmora::tr("Not compared: %1"), counts.unknown);
    if (counts.hidden > 0)
        add(Velmora::tr("Hidden: %1"), counts.hidden);
    return parts.join(QStringLiteral("   "));
}

/// Whether a side has nothing that tells contents apart.
bool hasNoContentNames(const Sides<TreeFolder> &roots)
{
    return std::any_of(bothSides.begin(), bothSides.end(), [&roots](Side side) {
        return roots[side].source && roots[side].source->contentAccess() == ContentAccess::None;
    });
}

} // namespace

void FolderCompareWidget::tellProblems()
{
    constexpr qsizetype mostTold = 200;
    const QList<FolderProblem> &problems = m_comparison.problems();
    for (const FolderProblem &problem : problems.first(std::min(problems.size(), mostTold))) {
        const TreeFolder place{m_comparison.spec().roots[problem.side].source, problem.path};
        const QString path = nativePath(place.shownPath());
        switch (problem.kind) {
        case FolderProblem::Kind::UnreadableFolder:
            log(Velmora::tr("Cannot read folder: %1").arg(path));
            break;
        case FolderProblem::Kind::UnreadableFile:
            log(Velmora::tr("Cannot read file: %1").arg(path));
            break;
        case FolderProblem::Kind::LinkCycle:
            log(Velmora::tr("Link to a folder that contains it, not followed: %1").arg(path));
            break;
        }
    }
    if (problems.size() > mostTold)
        log(Velmora::tr("... and %1 more").arg(problems.size() - mostTold));
}

void FolderCompareWidget::tellCancelled()
{
    m_cancelAsked = false;
    showMessage(Velmora::tr("Compare cancelled"));
    log(Velmora::tr("%1 compare cancelled").arg(logTime(QTime::currentTime())));
}

void FolderCompareWidget::showRootsUnreadable(const Sides<FolderRead> &roots)
{
    m_startTeller.stop();
    QStringList lines;
    for (const Side side : bothSides) {
        const QString &path = m_comparison.spec().roots[side].shown();
        if (roots[side] == FolderRead::Missing)
            lines.append(Velmora::tr("Folder not found: %1").arg(path));
        else if (roots[side] == FolderRead::Unreadable)
            lines.append(Velmora::tr("Cannot read folder: %1").arg(path));
    }
    for (const QString &line : lines)
        log(line);
    showMessage(lines.first());
    m_view->notice().tell({{}, lines.join(u'\n'), {{Velmora::tr("Try again"), [this] { onRefresh(); }}}});
}

void FolderCompareWidget::showNotice()
{
    NoticeCard &notice = m_view->notice();
    const SessionPaths folders = paths();
    const FolderTree &tree = m_comparison.tree();
    if (folders.left.isEmpty() || folders.right.isEmpty()) {
        const bool none = folders.left.isEmpty() && folders.right.isEmpty();
        notice.tell({{}, none ? words().dropBoth : words().dropOther});
        return;
    }
    if (m_view->rows().rowCount() > 0 || m_comparison.stage() != FolderComparison::Stage::None || !m_hasResult) {
        notice.clear();
        return;
    }
    const Notice::Button showAll{Velmora::tr("Show all entries"), [this] { onShowAll(); }};
    if (tree.isEmpty()) {
        notice.tell({Velmora::tr("Both folders are empty."), {}});
    } else if (tree.counts().files() == 0 && tree.counts().folders == 0) {
        notice.tell({Velmora::tr("Filters hide all %1 entries.").arg(QLocale().toString(tree.counts().hidden)),
                     {},
                     {{Velmora::tr("Session settings..."), [this] { onSessionSettings(0); }}}});
    } else if (m_view->rows().view() == RowsView::Differences) {
        notice.tell({Velmora::tr("There are no differences."), {}, {showAll}});
    } else {
        notice.tell({Velmora::tr("No file is the same on both sides."), {}, {showAll}});
    }
}

QString FolderCompareWidget::verdict() const
{
    const Sides<TreeFolder> &roots = m_comparison.spec().roots;
    if (!hasNoContentNames(roots))
        return {};
    return tellTimes(sourcesOf(roots))
               ? Velmora::tr("The snapshot has no checksums: size and time decide")
               : Velmora::tr("The snapshot has no checksums and the state of the repository no times: size decides");
}

bool FolderCompareWidget::mayReadUnread() const
{
    return m_comparison.tree().counts().unread > 0 && !hasNoContentNames(m_comparison.spec().roots);
}

QString FolderCompareWidget::summary() const
{
    const FolderCounts &counts = m_comparison.tree().counts();
    const qint64 differences = counts.different + counts.leftOnly + counts.rightOnly;
    const QLocale locale;
    QString text = differences == 0
                       ? Velmora::tr("Files compared: %1, no differences").arg(locale.toString(counts.files()))
                       : Velmora::tr("Files compared: %1, differences: %2")
                             .arg(locale.toString(counts.files()), locale.toString(differences));
    if (counts.unread > 0) {
        const QString unread = locale.toString(counts.unread);
        text = tellTimes(sourcesOf(m_comparison.spec().roots))
                   ? Velmora::tr("%1; %2 of the same size and time not read").arg(text, unread)
                   : Velmora::tr("%1; %2 of the same size not read").arg(text, unread);
    }
    if (const qsizetype problems = m_comparison.problems().size(); problems > 0)
        text = Velmora::tr("%1; %2 could not be read").arg(text, locale.toString(problems));
    if (const QString whole = verdict(); !whole.isEmpty())
        text = Velmora::tr("%1. %2").arg(whole, text);
    const QString behind = caution();
    return behind.isEmpty() ? text : Velmora::tr("%1. %2").arg(text, behind);
}

void FolderCompareWidget::showSummary()
{
    m_summary = summary();
    showMessage(m_summary);
}

void FolderCompareWidget::showCounts()
{
    const FolderCounts &counts = m_comparison.tree().counts();
    m_counts->setText(describeCounts(counts));
    m_readUnread->setVisible(mayReadUnread());
    m_filterBar->showEffect(counts.hidden, m_filters.hasRanges());
    // All files of a state have one time, which says nothing of them.
    if (OtherTrees::isAnyState(m_place.folders()))
        m_timeShifts->reset();
    else
        m_timeShifts->show(m_comparison.shifts(), m_options);
    // Entries that were compared anew, aligned or filtered since change the sum; any other message stays.
    if (m_hasResult) {
        const bool isShown = m_message == m_summary;
        m_summary = summary();
        if (isShown)
            showMessage(m_summary);
    }
    showNotice();
}

void FolderCompareWidget::showProgress(const ProgressState &state)
{
    const QLocale locale;
    if (state.phase == int(FolderPhase::Reading)) {
        m_comparingSince.invalidate();
        m_status->showProgress({}, Velmora::tr("%1 entries read").arg(locale.toString(state.done)));
        return;
    }
    QString text = Velmora::tr("%1 of %2 compared").arg(sizeText(state.done), sizeText(state.total));
    if (!m_comparingSince.isValid())
        m_comparingSince.start();
    // The first moments say little about the rest.
    constexpr qint64 tellingMs = 2000;
    const qint64 elapsed = m_comparingSince.elapsed();
    if (elapsed > tellingMs && state.done > 0 && state.total > state.done) {
        const auto seconds = qint64(double(elapsed) * double(state.total - state.done) / double(state.done) / 1000.0);
        const QString left = QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
        text += u' ' + Velmora::tr("(about %1 left)").arg(left);
    }
    m_status->showProgress(state, text);
}

void FolderCompareWidget::showRunning()
{
    const bool running = isComparing() || m_fileCommands->isRunning() || m_extraction->isRunning();
    m_bar->showRunning(running, m_comparison.isCancelling());
    if (running)
        m_status->showProgress({});
    else
        m_status->clearProgress();
    m_comparingSince.invalidate();
    m_bar->syncFolders->setEnabled(areLocal());
    // A load and a comparison of contents tell their end themselves, right after this.
    QTimer::singleShot(0, this, [this] {
        if (m_cancelAsked && !m_comparison.isRunning())
            tellCancelled();
    });
}

void FolderCompareWidget::showSelection()
{
    const QList<qint32> nodes = m_view->selectedNodes();
    m_selection->setVisible(nodes.size() > 1);
    m_selection->setText(Velmora::tr("%1 selected").arg(QLocale().toString(nodes.size())));
}

void FolderCompareWidget::showMessage(const QString &message)
{
    m_message = message;
    m_status->showMessage(message);
    Q_EMIT statusMessage(visibleName(message));
}

void FolderCompareWidget::log(const QString &line)
{
    m_logPanel->addLine(visibleName(line));
}

} // namespace velmora

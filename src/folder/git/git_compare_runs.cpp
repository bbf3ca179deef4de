#include "core/path_names.h"
#include "core/visible_name.h"
#include "folder/actions/git_fault_text.h"
#include "folder/git/git_bar.h"
#include "folder/git/git_commit_list.h"
#include "folder/git/git_compare_widget.h"
#include "folder/git/git_filter_bar.h"
#include "folder/git/git_recent.h"
#include "folder/git/git_state_box.h"
#include "folder/git/git_view.h"
#include "session/frame/notice_bar.h"
#include "session/frame/notice_card.h"
#include "session/frame/run_report.h"
#include "session/frame/status_line.h"
#include "session/list/tree_model.h"
#include "session/translate.h"

#include <QAction>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QSignalBlocker>

namespace velmora {

// Comparing -----------------------------------------------------------------------------------------------------------

GitRequest GitCompareWidget::request() const
{
    GitRequest request;
    request.path = paths().left;
    request.sides = {m_left->isBlank() ? GitSide{GitSide::Kind::Revision, QStringLiteral("HEAD")} : m_left->state(),
                     m_right->isBlank() ? GitSide{GitSide::Kind::WorkTree} : m_right->state()};
    request.sinceParting = m_bar->sinceParting->isChecked();
    request.untracked = m_bar->untracked->isChecked() ? UntrackedFiles::Listed : UntrackedFiles::LeftOut;
    request.listsSame = m_bar->showSame->isChecked();
    return request;
}

void GitCompareWidget::start()
{
    m_commit.reset();
    if (paths().left.isEmpty()) {
        showNothingYet();
        return;
    }
    const GitRequest wanted = request();
    m_left->setState(wanted.sides.left);
    m_right->setState(wanted.sides.right);
    compare(wanted);
}

void GitCompareWidget::compare(const GitRequest &wanted)
{
    m_details.abandon();
    m_status->showMessage(Velmora::tr("Comparing..."));
    m_runner.start(
        [wanted, readsRefs = !m_commit](const CancelFlag &cancel, Progress &progress) {
            Result result;
            result.comparison = compareGit(wanted, cancel, progress);
            if (!result.comparison.fault.isError())
                result.nodes = gitNodesOf(result.comparison);
            // Where a state is unknown a person looks for those that there are.
            if (readsRefs && !result.comparison.repository.gitFolder.isEmpty())
                result.refs = listRefs(result.comparison.repository, cancel);
            return result;
        },
        [this](RunOutcome<Result> &&outcome) {
            handOver(std::move(outcome), *m_status, [this](Result &&result) { take(std::move(result)); });
        },
        [this](const ProgressState &state) { reportReading(*m_status, state); });
}

void GitCompareWidget::take(Result &&result)
{
    const GitRepository &repository = result.comparison.repository;
    if (result.refs) {
        const QStringList recent = recentGitStates(repository.place());
        for (const Side side : bothSides)
            box(side).setChoices(*result.refs, recent, !repository.workTree.isEmpty());
    }
    if (result.comparison.fault.isError()) {
        showFault(result.comparison.fault);
        return;
    }
    m_comparison = std::make_shared<GitComparison>(std::move(result.comparison));
    showResult(std::move(result.nodes));
    Q_EMIT tabTitleChanged(Velmora::tr("Git: %1").arg(visibleName(bareName(m_comparison->repository.place()))));
    if (!m_commit) {
        remember();
        Q_EMIT comparisonFinished(paths().left, {});
    }
    readDetails();
}

void GitCompareWidget::remember()
{
    // The work tree, the index and HEAD are always offered.
    for (const Side side : {Side::Right, Side::Left}) {
        const GitSide state = box(side).state();
        const bool isNamed = state.kind == GitSide::Kind::Revision || state.kind == GitSide::Kind::Folder;
        if (isNamed && state.name != u"HEAD")
            rememberGitState(m_comparison->repository.place(), gitSideText(state));
    }
}

void GitCompareWidget::showFault(const GitFault &fault)
{
    const QString text = gitFaultText(fault);
    m_status->showFailure(text);
    m_notice->setAction({});
    m_notice->tell(fault.detail.isEmpty() ? text : text + u'\n' + visibleName(fault.detail.simplified()),
                   NoticeBar::Tone::Warning);
}

void GitCompareWidget::showResult(GitNodes &&nodes)
{
    const qint32 current = m_view->currentNode();
    const QString path = m_tree && current >= 0 ? m_tree->node(current).path : QString();
    auto tree = std::make_unique<GitRowTree>(m_comparison, std::move(nodes));
    m_tree = tree.get();
    m_tree->setStatuses(m_filterBar->statuses());
    m_rows->setTree(std::move(tree));
    showCounts();
    showNotices();
    if (m_comparison->changes.empty())
        m_view->notice().tell({Velmora::tr("No differences"), Velmora::tr("Both sides hold the same files.")});
    else
        m_view->notice().clear();
    goToPath(path);
}

void GitCompareWidget::showCounts()
{
    std::array<qint64, gitStatusCount> counts{};
    GitLines lines;
    for (const GitChange &change : m_comparison->changes) {
        ++counts[std::size_t(change.status)];
        lines.added += change.lines.value_or(GitLines()).added;
        lines.removed += change.lines.value_or(GitLines()).removed;
    }
    m_filterBar->setCounts(counts);
    const qint64 differing = qint64(m_comparison->changes.size()) - counts[std::size_t(GitStatus::Same)];
    const QLocale locale;
    const QString files =
        differing == 1 ? Velmora::tr("1 file differs") : Velmora::tr("%1 files differ").arg(locale.toString(differing));
    m_status->showMessage(differing == 0 ? Velmora::tr("No differences") : files);
    m_counts->setText(
        lines == GitLines()
            ? QString()
            : Velmora::tr("Lines: +%1 −%2").arg(locale.toString(lines.added), locale.toString(lines.removed)));
}

void GitCompareWidget::showNotices()
{
    QStringList texts;
    if (m_commit) {
        constexpr int shownLetters = 10;
        texts << Velmora::tr("Commit %1 compared with its parent: %2")
                     .arg(QString::fromLatin1(m_commit->name.left(shownLetters)), visibleName(m_commit->subject));
    }
    if (!m_comparison->oddNames.isEmpty())
        texts << Velmora::tr("Names that lead out of their folder or into a repository; they are only listed: %1")
                     .arg(visibleName(m_comparison->oddNames.join(QStringLiteral(", "))));
    if (m_comparison->conflicts > 0)
        texts << Velmora::tr("A merge has left files open (%1); of them our version is compared")
                     .arg(m_comparison->conflicts);
    const bool isCommitOnly = m_commit && texts.size() == 1;
    m_notice->setAction(m_commit ? Velmora::tr("Back to both sides") : QString(),
                        Velmora::tr("Compare the states that the two fields name"));
    m_notice->tell(texts.join(u'\n'), isCommitOnly ? NoticeBar::Tone::Remark : NoticeBar::Tone::Warning);
}

// What takes longer ---------------------------------------------------------------------------------------------------

void GitCompareWidget::readDetails()
{
    const bool readsCommits = !m_commit;
    m_details.start(
        [shown = m_comparison, readsCommits](const CancelFlag &cancel, Progress &) {
            Details details{*shown, {}, {}};
            const Sides<GitState> &states = shown->states;
            if (readsCommits)
                details.commits = commitsBetween(shown->repository, states.left.commit, states.right.commit, cancel);
            details.fault = fillDetails(details.comparison, cancel);
            return details;
        },
        [this](RunOutcome<Details> &&outcome) {
            if (outcome.end == RunEnd::Done)
                takeDetails(std::move(*outcome.value));
        });
}

void GitCompareWidget::takeDetails(Details &&details)
{
    const Sides<GitState> states = details.comparison.states;
    if (!m_commit) {
        if (states.left.commit.isEmpty() || states.right.commit.isEmpty())
            m_commits->setNote(Velmora::tr("There are no commits between a commit and a folder"));
        else if (details.commits.fault.isError())
            m_commits->setNote(gitFaultText(details.commits.fault));
        else
            m_commits->setCommits(details.commits);
    }
    if (details.fault.isError()) {
        m_status->showFailure(gitFaultText(details.fault), details.fault.detail);
        return;
    }
    m_comparison = std::make_shared<GitComparison>(std::move(details.comparison));
    m_tree->takeDetails(m_comparison);
    m_rows->refresh();
    showCounts();
}

void GitCompareWidget::showCommit(const GitCommit &commit)
{
    if (!m_comparison)
        return;
    m_commit = commit;
    GitRequest wanted;
    wanted.path = paths().left;
    const QString parent = commit.parents.isEmpty() ? emptyTreeName(m_comparison->repository)
                                                    : QString::fromLatin1(commit.parents.first());
    wanted.sides = {{GitSide::Kind::Revision, parent}, {GitSide::Kind::Revision, QString::fromLatin1(commit.name)}};
    compare(wanted);
}

void GitCompareWidget::backToSides()
{
    m_commit.reset();
    compare(request());
}

// States of the session -----------------------------------------------------------------------------------------------

void GitCompareWidget::showRunning()
{
    const bool runs = m_runner.isRunning();
    m_bar->showRunning(runs || m_details.isRunning(), m_runner.isCancelling());
    if (runs) {
        m_status->showProgress({});
    } else {
        m_status->clearProgress();
        Q_EMIT readingEnded();
    }
}

void GitCompareWidget::showNothingYet()
{
    const QString text =
        Velmora::tr("Choose a repository above, or drop a folder of one here, then choose what to compare.");
    m_status->showMessage(text);
    m_view->notice().tell({Velmora::tr("Two states of a Git repository"), text});
    m_commits->setNote({});
}

} // namespace velmora

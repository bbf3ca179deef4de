#include "core/path_names.h"
#include "folder/snapshot/folder_snapshot_rows.h"
#include "folder/snapshot/folder_snapshot_widget.h"
#include "folder/snapshot/folder_snapshot_words.h"
#include "platform/file_manager.h"
#include "session/dialogs.h"
#include "session/frame/run_report.h"
#include "session/frame/status_line.h"
#include "session/list/list_pane.h"
#include "session/list/list_view.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>

namespace velmora {

template <typename Job, typename Done>
void FolderSnapshotWidget::run(Job job, Done done)
{
    m_runner.start(
        std::move(job),
        [this, done = std::move(done)](auto &&outcome) {
            handOver(std::forward<decltype(outcome)>(outcome), *m_status,
                     Velmora::tr("Not enough memory for these snapshots"), done);
        },
        [this](const ProgressState &state) { m_status->showProgress(state, progressText(state)); });
}

// Comparing -----------------------------------------------------------------------------------------------------------

void FolderSnapshotWidget::onCompare()
{
    const Sides<QString> compared = places();
    if (m_runner.isRunning())
        return;
    if (compared.left.isEmpty() || compared.right.isEmpty()) {
        m_status->showFailure(Velmora::tr("Enter left and right paths"));
        return;
    }
    run([compared, digests = digests()](
            const CancelFlag &cancel, Progress &progress) { return compareSides(compared, digests, cancel, progress); },
        [this, compared](FolderSnapshotOutcome &&outcome) { takeComparison(std::move(outcome), compared); });
}

void FolderSnapshotWidget::takeComparison(FolderSnapshotOutcome &&outcome, const Sides<QString> &compared)
{
    qsizetype problems = 0;
    qsizetype repeated = 0;
    for (const Side side : bothSides) {
        const FolderSnapshotSide &one = outcome.sides[side];
        if (const FolderSnapshotWords fault = faultWords(one, compared[side]); !fault.text.isEmpty()) {
            m_status->showFailure(fault.text, fault.detail);
            return;
        }
        problems += one.problems.size();
        repeated += one.reading.repeated;
    }
    const FolderSnapshotWords words = resultWords(*outcome.comparison, problems, repeated);
    m_list->setResult(std::make_unique<FolderSnapshotRows>(std::move(*outcome.comparison)));
    m_status->showMessage(words.text, words.detail);
    if (const QWidget *focus = focusWidget(); !focus || qobject_cast<const QLineEdit *>(focus))
        m_list->setFocus();
    Q_EMIT tabTitleChanged(Velmora::tr("Folder snapshot compare"));
    Q_EMIT comparisonFinished(compared.left, compared.right);
}

// Recording -----------------------------------------------------------------------------------------------------------

void FolderSnapshotWidget::onCreateSnapshot()
{
    const QString folder = places().left;
    if (m_runner.isRunning())
        return;
    if (folder.isEmpty()) {
        m_status->showFailure(Velmora::tr("Enter a folder path on the left to snapshot."));
        return;
    }
    const QString suggested =
        joinedPath(parentPath(QDir::cleanPath(folder)), QFileInfo(QDir::cleanPath(folder)).fileName());
    Dialogs::instance().saveFile(this, Velmora::tr("Save snapshot"), suggested + folderSnapshotSuffix,
                                 Velmora::tr("Folder snapshot (*.kvsnapshot)"),
                                 [this, folder](const QString &path) { saveSnapshot(folder, path); });
}

void FolderSnapshotWidget::saveSnapshot(const QString &folder, const QString &path)
{
    const auto save = [this, folder](const QString &target) {
        run(
            [folder, target, digests = digests()](const CancelFlag &cancel, Progress &progress) {
                return recordFolder(folder, target, digests, cancel, progress);
            },
            [this, target](const FolderSnapshotRecording &recording) { takeRecording(recording, target); });
    };
    if (path.endsWith(folderSnapshotSuffix, Qt::CaseInsensitive)) {
        save(path);
        return;
    }
    // The dialog has asked about the name without its extension.
    const QString target = path + folderSnapshotSuffix;
    if (!QFileInfo::exists(target)) {
        save(target);
        return;
    }
    Dialogs::instance().askYesNo(this, Velmora::tr("Save snapshot"),
                                 Velmora::tr("%1 is there already. Replace it?").arg(shownPath(target)), false,
                                 [save, target](bool yes) {
                                     if (yes)
                                         save(target);
                                 });
}

void FolderSnapshotWidget::takeRecording(const FolderSnapshotRecording &recording, const QString &target)
{
    const QString shown = QDir::toNativeSeparators(target);
    if (recording.isMissing)
        m_status->showFailure(Velmora::tr("Folder does not exist"));
    else if (!recording.saved.ok())
        m_status->showFailure(Velmora::tr("Cannot write: %1").arg(shown), recording.saved.error);
    else
        m_status->showMessage(Velmora::tr("Snapshot saved: %1 (%2 file(s))").arg(shown).arg(recording.files),
                              problemsText(recording.problems));
}

// The files of a row --------------------------------------------------------------------------------------------------

Sides<QString> FolderSnapshotWidget::currentFiles() const
{
    const int row = m_list->view().currentIndex().row();
    if (row < 0)
        return {};
    const auto &source = static_cast<const FolderSnapshotRows &>(rows().source());
    const FolderSnapshotComparison &found = source.comparison();
    const std::optional<qsizetype> number = source.find(rows().rowAt(row).key);
    if (!number)
        return {};
    Sides<QString> files;
    for (const Side side : bothSides) {
        const FolderSnapshotEntry *entry = found.entry(*number, side);
        if (!entry)
            entry = found.partner(*number);
        if (entry)
            files[side] = livePath(found.snapshots[side]->root, entry->path);
    }
    return files;
}

void FolderSnapshotWidget::onOpen()
{
    m_opening.start([files = currentFiles(),
                     test = host().kindTest()](const CancelFlag &, Progress &) { return findLiveFiles(files, test); },
                    [this](RunOutcome<LiveFiles> &&outcome) {
                        if (outcome.end == RunEnd::Done)
                            takeLiveFiles(*outcome.value);
                    });
}

void FolderSnapshotWidget::takeLiveFiles(const LiveFiles &live)
{
    if (live.paths.left.isEmpty() && live.paths.right.isEmpty())
        m_status->showFailure(Velmora::tr("Neither side has this file on this computer now"));
    else if (live.paths.left == live.paths.right)
        m_status->showMessage(Velmora::tr("Both sides lead to one file, and a snapshot keeps no contents"),
                              QDir::toNativeSeparators(live.paths.left));
    else
        host().openSession(live.kind, {live.paths.left, live.paths.right, {}});
}

void FolderSnapshotWidget::onShowInFileManager()
{
    const Sides<QString> files = currentFiles();
    const QString path = files.right.isEmpty() ? files.left : files.right;
    if (!path.isEmpty())
        showInFileManager(path, *this,
                          [this] { m_status->showFailure(Velmora::tr("No file manager could be opened")); });
}

} // namespace velmora

#include "folder/actions/entry_extraction.h"

#include "core/passing_folder.h"
#include "core/path_names.h"
#include "folder/actions/archive_words.h"
#include "folder/actions/folder_actions.h"
#include "folder/engine/folder_engine.h"
#include "session/dialogs.h"
#include "session/passing_copies.h"
#include "session/translate.h"
#include "vfs/archive/archive_layout.h"
#include "vfs/archive/archive_source.h"
#include "vfs/local_folder.h"

#include <QPointer>
#include <QSet>
#include <QWidget>

#include <algorithm>
#include <functional>
#include <iterator>

namespace velmora {

namespace {

/// Without what lies in a folder that is among them as well.
QStringList outermost(const QStringList &paths)
{
    const QSet<QString> wanted(paths.begin(), paths.end());
    const auto liesInAnother = [&wanted](QString path) {
        while (path.lastIndexOf(u'/') > 0) {
            path.truncate(path.lastIndexOf(u'/'));
            if (wanted.contains(path))
                return true;
        }
        return false;
    };
    QStringList kept;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(kept), std::not_fn(liesInAnother));
    return kept;
}

} // namespace

struct EntryExtraction::LaidOut {
    LayOutResult result;
    QList<FolderDiffItem> items; ///< what is there now, as the one side of a comparison
};

EntryExtraction::EntryExtraction(QWidget &window)
    : QObject(&window), m_window(window), m_actions(new FolderActions(window, this))
{
    connect(&m_runner, &Runner::runningChanged, this, &EntryExtraction::runningChanged);
    connect(m_actions, &FolderActions::runningChanged, this, &EntryExtraction::runningChanged);
    connect(m_actions, &FolderActions::logLine, this, &EntryExtraction::logLine);
    connect(m_actions, &FolderActions::statusChanged, this, &EntryExtraction::statusChanged);
    connect(m_actions, &FolderActions::progressed, this, [this](const FolderActionProgress &progress) {
        Q_EMIT progressed({0, progress.bytesDone, progress.bytesTotal, progress.path});
    });
}

EntryExtraction::~EntryExtraction() = default;

bool EntryExtraction::isRunning() const
{
    return m_runner.isRunning() || m_actions->isRunning();
}

void EntryExtraction::cancel()
{
    m_runner.cancel();
    if (m_actions->isRunning())
        m_actions->cancel();
}

void EntryExtraction::start(const std::shared_ptr<const ArchiveSource> &archive, const QStringList &wanted)
{
    const QStringList paths = outermost(wanted);
    if (!archive || paths.isEmpty() || isRunning())
        return;
    Dialogs::instance().openFolder(&m_window, Velmora::tr("Select destination folder"), {},
                                   [self = QPointer(this), archive, paths](const QString &folder) {
                                       if (self && !self->isRunning())
                                           self->unpack(archive, paths, folder);
                                   });
}

void EntryExtraction::unpack(const std::shared_ptr<const ArchiveSource> &archive, const QStringList &paths,
                             const QString &destination)
{
    m_folder = std::make_unique<PassingFolder>();
    if (!m_folder->isValid()) {
        Q_EMIT statusChanged(m_folder->errorString());
        return;
    }
    Q_EMIT statusChanged(Velmora::tr("Unpacking..."));
    m_runner.start(
        [archive, paths, folder = m_folder->path()](const CancelFlag &cancel, Progress &progress) {
            LaidOut laidOut;
            laidOut.result = layOutEntries(*archive, paths, folder, cancel, progress);
            FolderInput input{{localFolder(folder), {}}};
            input.hidden = HiddenEntries::Listed;
            laidOut.items = compareFolderTree(input, cancel);
            return laidOut;
        },
        [this, archive, paths, destination](RunOutcome<LaidOut> &&outcome) {
            if (outcome.end == RunEnd::Done && outcome.value) {
                for (const QString &path : paths)
                    noteOrigin(m_folder->filePath(bareName(path)), archive->location().shown + path);
                take(*outcome.value, destination);
            } else {
                Q_EMIT statusChanged(Velmora::tr("Unpacking was cancelled; nothing was written"));
            }
        },
        [this](const ProgressState &state) { Q_EMIT progressed(state); });
}

void EntryExtraction::take(const LaidOut &laidOut, const QString &destination)
{
    for (const ArchiveProblem &problem : laidOut.result.problems)
        Q_EMIT logLine(archiveProblemText(problem));
    if (!laidOut.result.error.isEmpty() || laidOut.items.isEmpty()) {
        const QString reason = laidOut.result.error.isEmpty() && !laidOut.result.problems.isEmpty()
                                   ? archiveProblemText(laidOut.result.problems.first())
                                   : laidOut.result.error;
        Q_EMIT statusChanged(Velmora::tr("Cannot unpack: %1").arg(reason));
        return;
    }
    FolderActionContext context;
    context.roots.left = localFolder(m_folder->path());
    context.items = laidOut.items;
    m_actions->setContext(context);
    FolderSelection selection;
    selection.side = Side::Left;
    std::copy_if(laidOut.items.begin(), laidOut.items.end(), std::back_inserter(selection.items),
                 [](const FolderDiffItem &item) { return !item.name.contains(u'/'); });
    Q_EMIT statusChanged({});
    m_actions->copyTo(destination, selection);
}

} // namespace velmora

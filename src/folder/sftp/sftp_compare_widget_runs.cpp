#include "core/path_names.h"
#include "core/visible_name.h"
#include "folder/engine/folder_snapshot.h"
#include "folder/sftp/sftp_compare_widget.h"
#include "folder/sftp/sftp_inputs.h"
#include "folder/sftp/sftp_rows.h"
#include "folder/sftp/sftp_words.h"
#include "session/dialogs.h"
#include "session/frame/run_report.h"
#include "session/frame/status_line.h"
#include "session/list/list_pane.h"
#include "session/list/list_view.h"
#include "session/passing_copies.h"
#include "session/session_host.h"
#include "session/translate.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>

namespace velmora {

template <typename Job, typename Done>
void SftpCompareWidget::run(const QString &doing, Job job, Done done)
{
    m_status->showMessage(doing);
    m_runner.start(
        std::move(job),
        [this, done = std::move(done)](auto &&outcome) {
            handOver(std::forward<decltype(outcome)>(outcome), *m_status, done);
        },
        [this, doing](const ProgressState &state) {
            // How long the host takes nobody knows.
            const bool isCounted = state.phase > 0;
            m_status->showProgress({state.phase, isCounted ? state.done : 0, isCounted ? state.total : 0, {}},
                                   state.phase == int(FolderSnapshotPhase::Hashing) ? hashingText(state.item) : doing);
        });
}

SshTarget SftpCompareWidget::target(const RemotePlace &place) const
{
    return {place, qEnvironmentVariable("PATH")};
}

void SftpCompareWidget::tellFailure(const SshEnd &end, const char *program, const RemotePlace &place)
{
    const RemoteWords words = faultWords(end, QLatin1String(program), place);
    m_status->showFailure(words.text, words.detail);
    m_list->setNotice(words.detail.isEmpty() ? words.text : words.text + u'\n' + words.detail);
}

// Comparing -----------------------------------------------------------------------------------------------------------

void SftpCompareWidget::onCompare()
{
    if (m_runner.isRunning())
        return;
    const RemotePlace place = m_inputs->place();
    const QString folder = m_inputs->localFolder();
    const RemotePlaceFault fault = folder.isEmpty() ? RemotePlaceFault::Missing : faultOf(place);
    if (fault != RemotePlaceFault::None) {
        m_status->showFailure(faultText(fault));
        m_inputs->focusFirstEmpty();
        return;
    }
    run(
        Velmora::tr("Scanning local and remote…"),
        [target = target(place), folder](const CancelFlag &cancel, Progress &progress) {
            return compareWithHost(target, folder, cancel, progress);
        },
        [this, place, folder](RemoteComparing &&comparing) { takeComparison(std::move(comparing), place, folder); });
}

void SftpCompareWidget::takeComparison(RemoteComparing &&comparing, const RemotePlace &place, const QString &folder)
{
    if (comparing.isMissing) {
        m_status->showFailure(Velmora::tr("Local path is not a folder"), QDir::toNativeSeparators(folder));
        return;
    }
    if (!comparing.end.ok()) {
        tellFailure(comparing.end, "ssh", place);
        return;
    }
    const RemoteWords words = resultWords(comparing);
    m_compared = {place,
                  QFileInfo(folder).absoluteFilePath(),
                  std::make_shared<RemoteComparison>(std::move(comparing.comparison)),
                  {}};
    showRows();
    m_status->showMessage(words.text, words.detail);
    m_clock->setText(clockText(comparing.skew));
    if (const QWidget *focus = focusWidget(); !focus || qobject_cast<const QLineEdit *>(focus))
        m_list->setFocus();
    Q_EMIT tabTitleChanged(Velmora::tr("SFTP %1").arg(place.text()));
    Q_EMIT comparisonFinished(folder, place.text());
}

void SftpCompareWidget::showRows()
{
    m_list->setResult(std::make_unique<SftpRows>(m_compared.comparison, m_compared.contents));
}

// Fetching one file ---------------------------------------------------------------------------------------------------

QString SftpCompareWidget::newCopyFolder()
{
    if (!m_copies)
        m_copies = std::make_shared<PassingFolder>(PassingFolder::Purpose::Fetched);
    const QString folder = m_copies->filePath(QString::number(++m_copyNumber));
    return m_copies->isValid() && QDir().mkpath(folder) ? folder : QString();
}

void SftpCompareWidget::onFetchAndCompare()
{
    const int current = m_list->view().currentIndex().row();
    if (m_runner.isRunning() || current < 0)
        return;
    const KeyedRow row = rows().rowAt(current);
    if (row.status == PairStatus::LeftOnly || row.status == PairStatus::RightOnly) {
        m_status->showMessage(Velmora::tr("Only files that both sides have can be compared"));
        return;
    }
    const QString local = joinedPath(m_compared.localFolder, row.key);
    if (!QFileInfo(local).isFile()) {
        m_status->showFailure(Velmora::tr("Local file missing; cannot run text compare"));
        return;
    }
    const QString folder = canBeNamedHere(row.key) ? newCopyFolder() : QString();
    if (folder.isEmpty()) {
        m_status->showFailure(Velmora::tr("Cannot write: %1").arg(visibleName(bareName(row.key))));
        return;
    }
    const QString fetched = joinedPath(folder, bareName(row.key));
    run(
        Velmora::tr("Fetching %1…").arg(bareName(row.key)),
        [target = target(m_compared.place), file = row.key, fetched, keep = m_copies](const CancelFlag &cancel,
                                                                                      Progress &progress) {
            return fetchFile(target, file, fetched, cancel, progress);
        },
        [this, local, fetched, origin = joinedPath(m_compared.place.text(), row.key)](const SshEnd &end) {
            if (end.ok())
                noteCopy(fetched, origin);
            takeFetched(end, local, fetched);
        });
}

void SftpCompareWidget::takeFetched(const SshEnd &end, const QString &local, const QString &fetched)
{
    if (!end.ok()) {
        tellFailure(end, "scp", m_compared.place);
        return;
    }
    m_status->showMessage(Velmora::tr("Fetched: %1").arg(bareName(fetched)));
    host().openSession(host().kindFor(SessionHost::Purpose::CompareTexts), {local, fetched, {}});
}

// A selection ---------------------------------------------------------------------------------------------------------

QStringList SftpCompareWidget::selectedPaths(bool (*isWanted)(PairStatus status)) const
{
    QStringList paths;
    for (const int row : m_list->view().selectedRows()) {
        const KeyedRow whole = rows().rowAt(row);
        if (isWanted(whole.status))
            paths.append(whole.key);
    }
    return paths;
}

void SftpCompareWidget::onCompareContents()
{
    const QStringList files =
        selectedPaths([](PairStatus status) { return status == PairStatus::Same || status == PairStatus::Changed; });
    if (m_runner.isRunning())
        return;
    if (files.isEmpty()) {
        m_status->showMessage(Velmora::tr("Only files that both sides have can be compared"));
        return;
    }
    run(
        Velmora::tr("The host computes SHA-256…"),
        [target = target(m_compared.place), folder = m_compared.localFolder, files](const CancelFlag &cancel,
                                                                                    Progress &progress) {
            return compareContents(target, folder, files, cancel, progress);
        },
        [this, asked = files.size()](const ContentsComparing &contents) { takeContents(contents, asked); });
}

void SftpCompareWidget::takeContents(const ContentsComparing &contents, qsizetype asked)
{
    if (!contents.end.ok()) {
        tellFailure(contents.end, "ssh", m_compared.place);
        return;
    }
    for (auto file = contents.same.begin(); file != contents.same.end(); ++file)
        m_compared.contents.insert(file.key(), file.value());
    showRows();
    const qsizetype same = contents.same.values().count(true);
    const qsizetype unread = asked - contents.same.size();
    m_status->showMessage(Velmora::tr("Same contents: %1, different: %2").arg(same).arg(contents.same.size() - same),
                          unread > 0 ? Velmora::tr("Could not be read: %1").arg(unread) : QString());
}

void SftpCompareWidget::onFetchFiles()
{
    const QStringList files = selectedPaths([](PairStatus status) { return status != PairStatus::LeftOnly; });
    if (m_runner.isRunning())
        return;
    if (files.isEmpty()) {
        m_status->showMessage(Velmora::tr("Select files that the host has"));
        return;
    }
    Dialogs::instance().openFolder(this, Velmora::tr("Fetch files into"), {},
                                   [this, files](const QString &folder) { fetchInto(folder, files); });
}

void SftpCompareWidget::fetchInto(const QString &folder, const QStringList &files)
{
    run(
        Velmora::tr("Fetching files…"),
        [target = target(m_compared.place), folder, files](const CancelFlag &cancel, Progress &progress) {
            return fetchFiles(target, files, folder, cancel, progress);
        },
        [this](const FetchedFiles &result) {
            if (!result.end.ok()) {
                tellFailure(result.end, "scp", m_compared.place);
                return;
            }
            const qsizetype left = result.alreadyThere.size();
            m_status->showMessage(
                Velmora::tr("Files fetched: %1").arg(result.fetched),
                left > 0 ? Velmora::tr("Left as they are, since something has that name: %1").arg(left) : QString());
        });
}

} // namespace velmora

#include "folder/actions/archive_words.h"
#include "folder/actions/entry_extraction.h"
#include "folder/browse/archive_browse_widget.h"
#include "folder/browse/archive_view.h"
#include "folder/browse/archive_view_words.h"
#include "session/passing_copies.h"
#include "session/session_host.h"
#include "vfs/archive/archive_test.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QPushButton>

#include <algorithm>

namespace velmora {

namespace {

/// An entry that was laid out for another session.
struct OpenedEntry {
    QString kind;
    LaidOutFile file;
};

} // namespace

QStringList ArchiveBrowseWidget::selectedPaths() const
{
    QStringList paths;
    if (m_listing) {
        for (const qint32 row : m_view->selectedRows())
            paths.append(m_listing->path(row));
    }
    return paths;
}

void ArchiveBrowseWidget::showCommands()
{
    const bool isFree = m_listing && !isBusy();
    m_extract->setEnabled(isFree && m_view->currentRow() >= 0);
    m_extractAll->setEnabled(isFree && m_listing->count() > 0);
    m_test->setEnabled(isFree);
}

// Extracting ----------------------------------------------------------------------------------------------------------

void ArchiveBrowseWidget::onExtract()
{
    extract(selectedPaths());
}

void ArchiveBrowseWidget::onExtractAll()
{
    QStringList paths;
    for (qint32 row = 0; m_listing && row < m_listing->count(); ++row) {
        if (m_listing->row(row).parent < 0)
            paths.append(m_listing->path(row));
    }
    extract(paths);
}

void ArchiveBrowseWidget::extract(const QStringList &paths)
{
    if (!isBusy() && !paths.isEmpty())
        m_extraction->start(m_listing->sharedSource(), paths);
}

// Testing -------------------------------------------------------------------------------------------------------------

void ArchiveBrowseWidget::onTest()
{
    if (!m_listing || isBusy())
        return;
    status().showMessage(Velmora::tr("Testing…"));
    run([archive = m_listing->sharedSource()](const CancelFlag &cancel,
                                              Progress &progress) { return testArchive(*archive, cancel, progress); },
        [this](const ArchiveTest &test) { takeTest(test); });
}

void ArchiveBrowseWidget::takeTest(const ArchiveTest &test)
{
    const bool isDamaged = std::any_of(m_problems.begin(), m_problems.end(), [](const ArchiveProblem &problem) {
        using enum ArchiveProblem::Kind;
        return problem.kind == Damaged || problem.kind == Incomplete || problem.kind == TooManyEntries ||
               problem.kind == TooMuchContent;
    });
    m_view->takeTest(test);
    m_view->setProblems(m_problems + test.problems);
    if (isDamaged || test.failed > 0 || !test.isComplete)
        status().showFailure(testText(test, isDamaged));
    else
        status().showMessage(testText(test, isDamaged));
}

// Rows ----------------------------------------------------------------------------------------------------------------

void ArchiveBrowseWidget::onOpenEntry()
{
    const qint32 row = m_view->currentRow();
    if (row < 0 || m_listing->row(row).isFolder)
        return;
    if (!m_copies)
        m_copies = std::make_unique<PassingFolder>();
    const QString path = m_listing->path(row);
    const auto archive = m_listing->sharedSource();
    m_opener.start(
        [archive, path, folder = m_copies->path(), test = host().kindTest()](const CancelFlag &cancel, Progress &) {
            OpenedEntry opened;
            opened.file = archive->layOut(path, folder, cancel);
            if (opened.file.ok())
                opened.kind = test({opened.file.path, {}});
            return opened;
        },
        [this, archive, path](RunOutcome<OpenedEntry> &&outcome) {
            if (outcome.end == RunEnd::Done && outcome.value->file.ok()) {
                noteCopy(outcome.value->file.path, archive->location().shown + path);
                host().openSession(outcome.value->kind, {outcome.value->file.path, {}, {}});
            } else if (outcome.end != RunEnd::Cancelled) {
                status().showFailure(Velmora::tr("Cannot read file: %1").arg(path),
                                     outcome.value ? outcome.value->file.error : QString());
            }
        });
}

void ArchiveBrowseWidget::onCopyPaths()
{
    const QStringList paths = selectedPaths();
    if (!paths.isEmpty())
        QGuiApplication::clipboard()->setText(paths.join(u'\n'));
}

void ArchiveBrowseWidget::openMenu(QPoint global)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const qint32 row = m_view->currentRow();
    const bool isFile = row >= 0 && !m_listing->row(row).isFolder;
    menu->addAction(Velmora::tr("Open in a new tab"), this, &ArchiveBrowseWidget::onOpenEntry)->setEnabled(isFile);
    menu->addAction(Velmora::tr("Extract…"), this, &ArchiveBrowseWidget::onExtract)->setEnabled(m_extract->isEnabled());
    menu->addAction(Velmora::tr("Copy paths"), this, &ArchiveBrowseWidget::onCopyPaths)->setEnabled(row >= 0);
    menu->addSeparator();
    menu->addAction(Velmora::tr("Open all folders"), this, [this] { m_view->setAllExpanded(true); });
    menu->addAction(Velmora::tr("Close all folders"), this, [this] { m_view->setAllExpanded(false); });
    if (m_listing->source().isEncrypted())
        menu->addAction(Velmora::tr("Enter the password…"), this, &ArchiveBrowseWidget::onPassword);
    menu->popup(global);
}

} // namespace velmora

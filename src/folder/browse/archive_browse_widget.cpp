#include "folder/browse/archive_browse_widget.h"

#include "core/path_names.h"
#include "folder/actions/archive_words.h"
#include "folder/actions/entry_extraction.h"
#include "folder/browse/archive_view.h"
#include "folder/browse/archive_view_words.h"
#include "session/dialogs.h"
#include "session/difference_keys.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <variant>

namespace velmora {

ArchiveBrowseWidget::ArchiveBrowseWidget(SessionHost &host, QWidget *parent)
    : FilesSession(host,
                   {{&SessionPaths::left, Velmora::tr("Archive:"), Velmora::tr("Choose or drop an archive…"),
                     Velmora::tr("Select archive")}},
                   parent),
      m_view(new ArchiveView),
      m_facts(status().addFact(QStringLiteral("archiveFacts"))),
      m_extraction(new EntryExtraction(*this))
{
    buildCommands();
    content().addWidget(m_view, 1);
    connectParts();
    m_view->setNotice(Velmora::tr("What is in the archive?"),
                      Velmora::tr("Choose an archive or drop one here: its entries are shown without unpacking it."));
    showCommands();
}

ArchiveBrowseWidget::~ArchiveBrowseWidget() = default;

void ArchiveBrowseWidget::buildCommands()
{
    const auto add = [this](const QString &text, const char *name, const QString &hint, const QKeySequence &key,
                            void (ArchiveBrowseWidget::*slot)()) {
        QPushButton *button = addCommand(text, QLatin1String(name));
        button->setShortcut(key);
        button->setToolTip(Velmora::tr("%1 (%2)").arg(hint, key.toString(QKeySequence::NativeText)));
        connect(button, &QPushButton::clicked, this, slot);
        return button;
    };
    add(Velmora::tr("Open"), "openButton", Velmora::tr("Read the archive, again where it is open"), Qt::Key_F5,
        &ArchiveBrowseWidget::onOpen);
    m_extract = add(Velmora::tr("Extract…"), "extractButton",
                    Velmora::tr("Copy the selected entries into a folder, folders with all that is in them"),
                    Qt::CTRL | Qt::Key_E, &ArchiveBrowseWidget::onExtract);
    m_extractAll = add(Velmora::tr("Extract all…"), "extractAllButton", Velmora::tr("Copy all entries into a folder"),
                       Qt::CTRL | Qt::SHIFT | Qt::Key_E, &ArchiveBrowseWidget::onExtractAll);
    m_test = add(Velmora::tr("Test"), "testButton",
                 Velmora::tr("Read every entry to its end, and see whether its checksum holds"), Qt::Key_F7,
                 &ArchiveBrowseWidget::onTest);
    const auto onKey = [this](const char *name, const QString &text, auto slot) {
        auto *action = new QAction(text, this);
        action->setShortcuts(differenceKeys(QLatin1String(name)));
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, m_view, slot);
        addAction(action);
    };
    onKey("focusFilterAction", Velmora::tr("Filter"), &ArchiveView::focusFilter);
    onKey("switchPaneAction", Velmora::tr("Switch between the tree and the preview"), &ArchiveView::switchPane);
}

void ArchiveBrowseWidget::connectParts()
{
    connect(m_view, &ArchiveView::selectionChanged, this, &ArchiveBrowseWidget::showCommands);
    connect(m_view, &ArchiveView::openWanted, this, &ArchiveBrowseWidget::onOpenEntry);
    connect(m_view, &ArchiveView::copyWanted, this, &ArchiveBrowseWidget::onCopyPaths);
    connect(m_view, &ArchiveView::contextMenuWanted, this, &ArchiveBrowseWidget::openMenu);
    connect(m_view, &ArchiveView::passwordWanted, this, &ArchiveBrowseWidget::onPassword);
    connect(m_extraction, &EntryExtraction::statusChanged, this,
            [this](const QString &text) { status().showMessage(text); });
    connect(m_extraction, &EntryExtraction::progressed, this,
            [this](const ProgressState &state) { status().showProgress(state, bareName(state.item)); });
    connect(m_extraction, &EntryExtraction::runningChanged, this, [this] {
        showRunning();
        showCommands();
    });
    connect(this, &SessionWidget::readingEnded, this, &ArchiveBrowseWidget::showCommands);
}

bool ArchiveBrowseWidget::hasUnsavedChanges() const
{
    return m_extraction->isRunning();
}

void ArchiveBrowseWidget::confirmClose(std::function<void(bool mayClose)> answered)
{
    if (hasUnsavedChanges())
        status().showMessage(Velmora::tr("Files are still being extracted. Cancel that first."));
    else
        answered(true);
}

bool ArchiveBrowseWidget::isBusy() const
{
    return FilesSession::isBusy() || m_extraction->isRunning();
}

void ArchiveBrowseWidget::onCancel()
{
    FilesSession::onCancel();
    m_extraction->cancel();
}

void ArchiveBrowseWidget::refreshTheme()
{
    FilesSession::refreshTheme();
    m_view->refreshTheme();
}

// Opening -------------------------------------------------------------------------------------------------------------

ArchiveBrowseWidget::Opened ArchiveBrowseWidget::open(const ArchiveRequest &request, const CancelFlag &cancel,
                                                      Progress &progress)
{
    Opened opened;
    opened.tree = treeAt(request, cancel, progress);
    if (opened.tree.opening.source)
        opened.listing = std::make_shared<ArchiveListing>(opened.tree.opening.source);
    return opened;
}

void ArchiveBrowseWidget::onOpen()
{
    if (m_extraction->isRunning())
        return;
    const QString path = paths().left;
    if (path.isEmpty()) {
        status().showFailure(Velmora::tr("Choose an archive"));
        return;
    }
    if (path != m_askedFor)
        m_password.clear();
    ArchiveRequest request{path, m_password, NestedArchives::BecomeFolders};
    request.reading = ArchiveReading::NamesOnly;
    status().showMessage(Velmora::tr("Opening the archive…"));
    Q_EMIT comparisonStarted();
    run([request](const CancelFlag &cancel, Progress &progress) { return open(request, cancel, progress); },
        [this, path](const Opened &opened) { take(opened, path); });
}

void ArchiveBrowseWidget::take(const Opened &opened, const QString &path)
{
    const ArchiveOpening &opening = opened.tree.opening;
    if (opened.tree.isFolder) {
        status().showFailure(Velmora::tr("This is a folder, not an archive"));
        return;
    }
    if (std::holds_alternative<SnapshotOpening>(opened.tree.other)) {
        status().showFailure(Velmora::tr("This is a snapshot of a folder, not an archive"));
        return;
    }
    if (opening.fault == ArchiveFault::WrongPassword) {
        m_password.clear();
        status().showFailure(archiveFaultText(path, opening));
        m_askedFor.clear();
    } else if (!opened.listing) {
        status().showFailure(archiveFaultText(path, opening), opening.reason);
    } else {
        showOpened(opened, path);
    }
}

void ArchiveBrowseWidget::showOpened(const Opened &opened, const QString &path)
{
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    const QString place = m_listing && m_view->currentRow() >= 0 && path == m_shownPath
                              ? m_listing->path(m_view->currentRow())
                              : opened.tree.folder.path;
    m_listing = opened.listing;
    m_problems = opened.tree.opening.problems;
    m_shownPath = path;
    m_view->setListing(m_listing);
    m_view->setProblems(m_problems);
    m_view->goToRow(m_listing->find(place));
    setFocusProxy(m_view);
    if (hadFocus)
        m_view->setFocus();
    m_facts->setText(archiveFactsText(*m_listing));
    m_facts->setToolTip(m_facts->text());
    if (m_problems.isEmpty())
        status().showMessage(Velmora::tr("Ready"));
    else
        status().showFailure(archiveProblemText(m_problems.first()));
    showCommands();
    Q_EMIT tabTitleChanged(Velmora::tr("Browse: %1").arg(bareName(path)));
    Q_EMIT comparisonFinished(path, {});
    const bool lacksPassword = std::any_of(m_problems.begin(), m_problems.end(), [](const ArchiveProblem &problem) {
        return problem.kind == ArchiveProblem::Kind::Encrypted;
    });
    if (lacksPassword && m_password.isEmpty() && m_askedFor != path)
        onPassword();
}

void ArchiveBrowseWidget::onPassword()
{
    m_askedFor = paths().left;
    Dialogs::instance().askPassword(this, Velmora::tr("Password"),
                                    Velmora::tr("The archive %1 is encrypted. Password:").arg(bareName(m_askedFor)),
                                    [this](const QString &password) {
                                        if (password.isEmpty())
                                            return;
                                        m_password = password.toUtf8();
                                        onOpen();
                                    });
}

} // namespace velmora

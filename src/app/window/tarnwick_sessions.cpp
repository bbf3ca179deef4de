#include "app/file_kind.h"
#include "app/library/recovery_offer.h"
#include "app/library/session_library.h"
#include "app/session_kinds.h"
#include "app/start/command_line.h"
#include "app/start/waiting_start.h"
#include "app/window/session_tabs.h"
#include "app/window/tarnwick.h"
#include "session/passing_copies.h"
#include "session/session_widget.h"
#include "session/translate.h"
#include "vfs/place/other_tree.h"
#include "vfs/place/snapshot_source.h"
#include "vfs/place/tree_path.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <optional>

// How a session comes to be opened: from paths, records, command lines and the file manager.

namespace velmora {

namespace {

QString absoluteForm(const QString &path)
{
    if (isOtherTree(path))
        return otherTreeText(path);
    return namesLiveKey(QDir(), path) ? path : QFileInfo(path).absoluteFilePath();
}

bool isWithin(const QString &path, const QString &folder)
{
    const QString prefix = folder.endsWith(u'/') ? folder : folder + u'/';
    return !folder.isEmpty() && path.startsWith(prefix);
}

/// Whether the files of a session that somebody waits for are gone once it is closed: those that version control lays
/// out for a comparison, and the versions of a merge, which it writes beside the file that is merged.
bool holdsPassing(const SessionKindRow &kind, const SessionPaths &paths)
{
    const QString temporary = QDir::tempPath();
    return kind.sides == 3 || isWithin(paths.left, temporary) || isWithin(paths.right, temporary);
}

/// Whether versions of a text merge are gone: of one that was restored after version control took them away.
bool isGone(const SessionKindRow &kind, const SessionPaths &paths)
{
    const auto isMissing = [](const QString &path) { return !path.isEmpty() && !QFileInfo::exists(path); };
    return kind.sides == 3 && kind.filesOnly &&
           (isMissing(paths.left) || isMissing(paths.right) || isMissing(paths.base));
}

/// The kind in which two paths are compared when nobody said which.
const SessionKindRow &kindForPair(const SessionPaths &paths)
{
    const auto isFolder = [](const QString &path) {
        return isOtherTree(path) || QFileInfo(path).isDir() || snapshotPlaceOf(path);
    };
    const bool folders = isFolder(paths.left) && isFolder(paths.right);
    return sessionKind(folders ? QLatin1String("folder") : QLatin1String("text"));
}

/// The kind that compares two paths as `asked`: folders of which one lies in an archive are compared as archives are.
const SessionKindRow &kindForFolders(const SessionKindRow &asked, const SessionPaths &paths)
{
    const auto isArchive = [](const QString &path) {
        const QString file = isOtherTree(path) || snapshotPlaceOf(path) ? QString() : fileOnTheWay(path);
        return kindOfPair(file, {}) == QLatin1String("archivebrowse");
    };
    const bool haveArchive = asked.id == QLatin1String("folder") && (isArchive(paths.left) || isArchive(paths.right));
    return haveArchive ? sessionKind(QLatin1String("archive")) : asked;
}

const SessionKindRow &kindOf(const SessionRecord &record)
{
    const SessionKindRow *known = findSessionKind(record.type);
    return known ? *known : kindForPair(record.paths);
}

QString titleOf(const SessionRecord &record)
{
    return record.name.isEmpty() ? sessionTitle(kindOf(record), record.paths) : record.name;
}

/// The dropped paths as the sides of a session: left, right; or base, left, right where the kind has a base and three
/// came.
SessionPaths sidesOf(const SessionKindRow &kind, const QStringList &paths)
{
    if (kind.sides == 3 && paths.size() >= 3)
        return {.left = paths[1], .right = paths[2], .base = paths[0]};
    return {.left = paths.value(0), .right = kind.sides > 1 ? paths.value(1) : QString(), .base = {}};
}

} // namespace

void Tarnwick::handleArguments(const QStringList &arguments)
{
    const CommandLine line = parseCommandLine(arguments);
    m_servesWaiting = m_servesWaiting || line.servesWaiting;
    if (!line.reportTo.isEmpty())
        m_report = std::make_shared<WaitReport>(line.reportTo);
    if (!line.report.isEmpty())
        m_pendingReport = absoluteForm(line.report);
    for (const ExplorerPick &pick : line.picks) {
        if (pick.side == ExplorerPick::Side::Left)
            setExplorerLeft(absoluteForm(pick.path));
        else
            setExplorerRight(absoluteForm(pick.path));
    }
    for (const QString &file : line.sessionFiles)
        m_library->openNamedSessionFile(absoluteForm(file));
    if (line.sessionFiles.isEmpty() && !line.workspace.isEmpty())
        m_library->openNamedWorkspace(absoluteForm(line.workspace));
    else
        openPaths(line);
    m_report.reset();
}

void Tarnwick::openPaths(const CommandLine &line)
{
    QStringList paths;
    for (const QString &path : line.paths)
        paths.append(absoluteForm(path));
    if (line.mode == QLatin1String("merge") && paths.size() >= 2) {
        openMerge({.left = paths[0], .right = paths[1], .base = paths.value(2)},
                  line.output.isEmpty() ? QString() : absoluteForm(line.output));
    } else if (paths.size() == 2) {
        openCompare(line.mode, paths[0], paths[1]);
        m_explorerLeft.clear();
    } else if (paths.size() == 1) {
        openLonePath(line.mode, paths[0]);
    }
}

void Tarnwick::openMerge(const SessionPaths &paths, const QString &output)
{
    const SessionKindRow &row = sessionKind(QLatin1String("merge"));
    SessionWidget *session = addSession(row, sessionTitle(row, paths), paths);
    if (!output.isEmpty())
        session->setOutput(output);
    startSession(session);
}

std::shared_ptr<WaitReport> Tarnwick::reportOn(const SessionPaths &paths) const
{
    if (m_report)
        return m_report;
    for (auto waited = m_reports.begin(); waited != m_reports.end(); ++waited) {
        const SessionPaths folders = waited.key()->paths();
        if (isWithin(paths.left, folders.left) || isWithin(paths.right, folders.right))
            return waited.value();
    }
    return nullptr;
}

void Tarnwick::reportClosing(const SessionWidget *session)
{
    if (const auto report = m_reports.take(session))
        report->sessionClosed(session->waitStatus());
}

void Tarnwick::closeWhenServed()
{
    // Git comes with the next file in a moment.
    constexpr int patience = 1500;
    QTimer::singleShot(patience, this, [this] {
        if (!m_servesWaiting || !m_tabs->sessions().isEmpty())
            return;
        if (m_instances.isHearing() || QApplication::activeModalWidget())
            closeWhenServed();
        else
            close();
    });
}

void Tarnwick::openLonePath(const QString &mode, const QString &path)
{
    const SessionKindRow *kind = findSessionKind(mode);
    const LonePath wanted = kind ? kind->lonePath : LonePath::None;
    const QFileInfo info(path);
    if (wanted == LonePath::Any || (wanted == LonePath::Folder && info.isDir()) ||
        (wanted == LonePath::File && info.isFile()))
        openSession(kind->id, {.left = path, .right = {}, .base = {}});
    else
        setExplorerLeft(path);
    if (!kind && info.isFile() && isMarkedMerge(path))
        openSession(velmora::kindFor(Purpose::MergeTexts), {.left = path, .right = {}, .base = {}});
}

void Tarnwick::openCompare(const QString &kind, const QString &leftPath, const QString &rightPath)
{
    const SessionPaths paths{.left = leftPath, .right = rightPath, .base = {}};
    const SessionKindRow *known = findSessionKind(kind);
    const SessionKindRow &row = known && known->opensPairs ? kindForFolders(*known, paths) : kindForPair(paths);
    SessionWidget *session = addSession(row, sessionTitle(row, paths), paths);
    // The report belongs to this comparison; a kind that writes none must not leave it to a later one.
    if (!m_pendingReport.isEmpty())
        session->setPendingReport(std::exchange(m_pendingReport, {}));
    startSession(session);
}

void Tarnwick::openSession(const QString &kind, const SessionPaths &paths)
{
    const SessionKindRow *known = findSessionKind(kind);
    const SessionKindRow &row = known ? *known : kindForPair(paths);
    if (paths == SessionPaths()) {
        openEmpty(row);
        return;
    }
    openRecord({.name = {}, .type = row.id, .paths = paths, .options = {}, .timestamp = {}});
}

void Tarnwick::openRecord(const SessionRecord &record)
{
    const SessionKindRow &row = kindOf(record);
    SessionWidget *session = addSession(row, titleOf(record), record.paths);
    if (!record.options.isEmpty())
        session->setOptions(record.options);
    startSession(session);
}

void Tarnwick::startSession(SessionWidget *session)
{
    session->start();
    if (m_sender && session->isReading()) {
        // Whoever holds the sender keeps it waiting: here the connection, which goes with the session if that closes.
        connect(
            session, &SessionWidget::readingEnded, session, [held = m_sender] {}, Qt::SingleShotConnection);
    }
}

QString Tarnwick::kindFor(Purpose purpose) const
{
    return velmora::kindFor(purpose);
}

SessionHost::KindTest Tarnwick::kindTest() const
{
    return [](const Sides<QString> &files) { return kindOfPair(files.left, files.right); };
}

void Tarnwick::restoreRecord(const SessionRecord &record)
{
    const SessionKindRow &row = kindOf(record);
    const QString title = titleOf(record);
    SessionWidget *session = row.create(*this, nullptr);
    m_servesWaiting = false;
    m_tabs->addWaitingSession(session, sessionKindIcon(row.id), title);
    fillSession(session, row, title, record.paths);
    if (!record.options.isEmpty())
        session->setOptions(record.options);
}

void Tarnwick::offerRecovery()
{
    velmora::offerRecovery(m_recovery, this, [this](const SessionKindRow &kind, const SessionPaths &paths) {
        return addSession(kind, sessionTitle(kind, paths));
    });
}

void Tarnwick::openEmpty(const SessionKindRow &kind)
{
    addSession(kind, Velmora::tr(kind.tabTitle).arg(++m_tabCounter));
}

void Tarnwick::openEmptyOf(const char *kind)
{
    openEmpty(sessionKind(QLatin1String(kind)));
}

void Tarnwick::openDropped(const SessionKindRow &kind, const QStringList &paths)
{
    const SessionPaths sides = sidesOf(kind, paths);
    SessionWidget *session = addSession(kind, sessionTitle(kind, sides), sides);
    if (kind.sides == 1 || kind.lonePath != LonePath::None || !sides.right.isEmpty())
        session->start();
    if (paths.size() > kind.sides)
        showStatus(Velmora::tr("%1 paths dropped; this session takes %2").arg(paths.size()).arg(kind.sides));
}

SessionWidget *Tarnwick::addSession(const SessionKindRow &kind, const QString &title, const SessionPaths &paths)
{
    SessionWidget *session = kind.create(*this, nullptr);
    if (const auto report = reportOn(paths))
        m_reports.insert(session, report);
    else
        m_servesWaiting = false;
    m_tabs->addSession(session, sessionKindIcon(kind.id), title);
    fillSession(session, kind, title, paths);
    return session;
}

void Tarnwick::fillSession(SessionWidget *session, const SessionKindRow &kind, const QString &title,
                           const SessionPaths &paths)
{
    if (paths != SessionPaths()) {
        session->setPaths(paths);
        recordSession(session, kind, title, paths);
        m_tabs->refreshNames();
    }
    hookSession(session, kind);
}

void Tarnwick::hookSession(SessionWidget *session, const SessionKindRow &kind)
{
    connect(session, &SessionWidget::comparisonStarted, this,
            [this, &kind] { showStatus(Velmora::tr(kind.startText), briefly); });
    connect(session, &SessionWidget::comparisonFinished, this,
            [this, session, &kind](const QString &left, const QString &right) {
                const QString title = m_tabs->titleAt(m_tabs->indexOf(session));
                const SessionPaths compared{.left = left, .right = right, .base = session->paths().base};
                if (!isGone(kind, compared))
                    recordSession(session, kind, title, compared);
            });
}

void Tarnwick::recordSession(const SessionWidget *session, const SessionKindRow &kind, const QString &name,
                             const SessionPaths &paths)
{
    const bool isPassing = m_reports.contains(session) && holdsPassing(kind, paths);
    if (!isOnCopies(paths) && !isPassing)
        m_history.add(kind.id, name, paths);
}

void Tarnwick::onOpenTextCompare(const QString &leftPath, const QString &rightPath)
{
    openCompare(QStringLiteral("text"), leftPath, rightPath);
}

void Tarnwick::onOpenBinaryCompare(const QString &leftPath, const QString &rightPath)
{
    openCompare(QStringLiteral("binary"), leftPath, rightPath);
}

void Tarnwick::onOpenFolderCompare(const QString &leftPath, const QString &rightPath)
{
    openCompare(QStringLiteral("folder"), leftPath, rightPath);
}

void Tarnwick::onOpenFolderSync(const QString &leftPath, const QString &rightPath)
{
    openCompare(QStringLiteral("sync"), leftPath, rightPath);
}

void Tarnwick::setExplorerLeft(const QString &path)
{
    m_explorerLeft = path;
    m_explorerLeftIsFolder = QFileInfo(path).isDir();
    showStatus(
        m_explorerLeftIsFolder
            ? Velmora::tr("Left folder selected: %1 — right-click another item and choose Velmora: set as right side")
                  .arg(path)
            : Velmora::tr("Left file selected: %1 — right-click another item and choose Velmora: set as right side")
                  .arg(path));
}

void Tarnwick::setExplorerRight(const QString &path)
{
    if (m_explorerLeft.isEmpty()) {
        setExplorerLeft(path);
        return;
    }
    const bool folders = m_explorerLeftIsFolder && QFileInfo(path).isDir();
    openCompare(folders ? QStringLiteral("folder") : QStringLiteral("text"), std::exchange(m_explorerLeft, {}), path);
    showStatus(Velmora::tr("Compare opened"), briefly);
}

} // namespace velmora

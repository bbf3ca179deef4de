#include "app/library/session_library.h"

#include "app/library/record_dialog.h"
#include "app/library/session_files.h"
#include "app/library/session_history.h"
#include "app/library/session_offer.h"
#include "app/library/tab_restorer.h"
#include "app/window/session_tabs.h"
#include "core/visible_name.h"
#include "session/dialogs.h"
#include "session/passing_copies.h"
#include "session/session_widget.h"
#include "session/translate.h"

#include <QFileInfo>

#include <algorithm>

namespace velmora {

namespace {

const QString sessionSuffix = QStringLiteral(".kvsession");
const QString workspaceSuffix = QStringLiteral(".kvworkspace");

QString sessionFilter()
{
    return Velmora::tr("Velmora session (*.kvsession)");
}

QString workspaceFilter()
{
    return Velmora::tr("Velmora workspace (*.kvworkspace)");
}

QString withAllFiles(const QString &filter)
{
    return filter + QStringLiteral(";;") + Velmora::tr("All files (*.*)");
}

QString withSuffix(const QString &path, const QString &suffix)
{
    return path.endsWith(suffix, Qt::CaseInsensitive) ? path : path + suffix;
}

} // namespace

SessionLibrary::SessionLibrary(SessionTabs &tabs, SessionHistory &history, QWidget *window)
    : QObject(window), m_tabs(tabs), m_history(history), m_window(window)
{}

void SessionLibrary::saveSession()
{
    const SessionWidget *session = m_tabs.currentSession();
    if (!session) {
        Q_EMIT statusMessage(Velmora::tr("Switch to a compare or tool tab first"));
        return;
    }
    SessionRecord record = session->record();
    record.name = m_tabs.titleAt(m_tabs.currentIndex());
    if (isOnCopies(record.paths)) {
        Q_EMIT statusMessage(Velmora::tr("This session is on copies that nobody can come back to"));
        return;
    }
    if (record.type.isEmpty()) {
        Q_EMIT statusMessage(Velmora::tr("Cannot determine session type for this tab"));
        return;
    }
    auto *dialog = RecordDialog::forSaving(record, m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { askAndSave(dialog->record()); });
    dialog->open();
}

void SessionLibrary::askAndSave(const SessionRecord &record)
{
    Dialogs::instance().saveFile(m_window, Velmora::tr("Save session"), besideFile(record.paths.left, {}),
                                 sessionFilter(), [this, record](const QString &path) {
                                     const QString file = withSuffix(path, sessionSuffix);
                                     Q_EMIT statusMessage(writeJsonFile(file, sessionToJson(record))
                                                              ? Velmora::tr("Session saved: %1").arg(file)
                                                              : Velmora::tr("Failed to save session"));
                                 });
}

void SessionLibrary::chooseSession()
{
    Dialogs::instance().openFile(m_window, Velmora::tr("Open session file"), {}, withAllFiles(sessionFilter()),
                                 [this](const QString &path) { openSessionFile(path); });
}

void SessionLibrary::openSessionFile(const QString &path)
{
    if (const auto record = readSession(path))
        openRead(*record);
}

void SessionLibrary::openNamedSessionFile(const QString &path)
{
    const auto record = readSession(path);
    if (!record)
        return;
    if (!leadsElsewhere(*record)) {
        openRead(*record);
        return;
    }
    askToOpen(
        {.title = Velmora::tr("Open session"),
         .text = Velmora::tr("The session \"%1\" leads to another machine. Open it?").arg(visibleText(record->name)) +
                 QStringLiteral("\n\n") + offerText(*record),
         .open = [this, record = *record] { openRead(record); }});
}

void SessionLibrary::askToOpen(const Question &question)
{
    m_questions.enqueue(question);
    if (m_questions.size() == 1)
        askNext();
}

void SessionLibrary::askNext()
{
    constexpr int yes = 1;
    if (m_questions.isEmpty())
        return;
    Dialogs::instance().ask(m_window, Dialogs::Tone::Information, m_questions.head().title, m_questions.head().text,
                            {{Velmora::tr("Open"), yes, true, false}, {Velmora::tr("Cancel"), 0, false, true}},
                            [this](int answer) {
                                const Question answered = m_questions.dequeue();
                                if (answer == yes)
                                    answered.open();
                                askNext();
                            });
}

std::optional<SessionRecord> SessionLibrary::readSession(const QString &path)
{
    const QString title = Velmora::tr("Open session");
    const JsonFile file = readJsonFile(path);
    if (file.error == JsonFileError::CannotOpen) {
        warn(title, Velmora::tr("Cannot open session file"));
        return std::nullopt;
    }
    if (file.error == JsonFileError::NoObject) {
        warn(title, Velmora::tr("Invalid session file format."));
        return std::nullopt;
    }
    SessionRecord record = sessionFromJson(file.object);
    record.timestamp = QDateTime::currentDateTime();
    if (record.type.isEmpty()) {
        warn(title, Velmora::tr("Session file is missing the type field."));
        return std::nullopt;
    }
    if (record.name.isEmpty())
        record.name = QFileInfo(path).completeBaseName();
    return record;
}

void SessionLibrary::openRead(const SessionRecord &record)
{
    Q_EMIT recordOpened(record);
    Q_EMIT statusMessage(Velmora::tr("Session opened: %1").arg(record.name));
}

void SessionLibrary::saveWorkspace()
{
    Dialogs::instance().saveFile(m_window, Velmora::tr("Save workspace"), QStringLiteral("workspace.kvworkspace"),
                                 workspaceFilter(),
                                 [this](const QString &path) { writeWorkspace(withSuffix(path, workspaceSuffix)); });
}

void SessionLibrary::writeWorkspace(const QString &path)
{
    Workspace workspace;
    workspace.sessions = m_history.records();
    workspace.activeTabIndex = m_tabs.currentIndex();
    for (int i = 0; i < m_tabs.count(); ++i) {
        const SessionWidget *session = m_tabs.sessionAt(i);
        if (!session || session->kind().isEmpty())
            continue;
        SessionRecord record = session->record();
        if (isOnCopies(record.paths))
            continue;
        record.name = m_tabs.titleAt(i);
        workspace.openTabs.append({record, i});
    }
    if (!writeJsonFile(path, workspaceToJson(workspace))) {
        Q_EMIT statusMessage(Velmora::tr("Failed to save workspace"));
        return;
    }
    Q_EMIT statusMessage(
        Velmora::tr("Workspace saved: %1 (%2 open tabs)").arg(path, QString::number(workspace.openTabs.size())));
}

void SessionLibrary::chooseWorkspace()
{
    Dialogs::instance().openFile(m_window, Velmora::tr("Open workspace"), {}, withAllFiles(workspaceFilter()),
                                 [this](const QString &path) { openWorkspace(path); });
}

void SessionLibrary::openWorkspace(const QString &path)
{
    if (const auto workspace = readWorkspace(path))
        openRead(*workspace, path);
}

void SessionLibrary::openNamedWorkspace(const QString &path)
{
    const auto workspace = readWorkspace(path);
    if (!workspace)
        return;
    if (!leadsElsewhere(*workspace)) {
        openRead(*workspace, path);
        return;
    }
    askToOpen({.title = Velmora::tr("Open workspace"),
               .text = Velmora::tr("The workspace \"%1\" leads to another machine. Open it?")
                           .arg(visibleText(QFileInfo(path).completeBaseName())) +
                       QStringLiteral("\n\n") + offerText(*workspace),
               .open = [this, workspace = *workspace, path] { openRead(workspace, path); }});
}

std::optional<Workspace> SessionLibrary::readWorkspace(const QString &path)
{
    const JsonFile file = readJsonFile(path);
    if (file.error == JsonFileError::CannotOpen) {
        Q_EMIT statusMessage(Velmora::tr("Cannot open workspace file"));
        return std::nullopt;
    }
    if (file.error == JsonFileError::NoObject) {
        warn(Velmora::tr("Open failed"), Velmora::tr("Invalid workspace file format."));
        return std::nullopt;
    }
    Workspace workspace = workspaceFromJson(file.object);
    if (workspace.sessions.isEmpty()) {
        Dialogs::instance().tell(m_window, Dialogs::Tone::Information, Velmora::tr("Open workspace"),
                                 Velmora::tr("This workspace has no saved sessions."));
        return std::nullopt;
    }
    return workspace;
}

void SessionLibrary::openRead(const Workspace &workspace, const QString &path)
{
    if (m_history.entries().isEmpty()) {
        replaceHistory(workspace, path);
        return;
    }
    Dialogs::instance().askYesNo(m_window, Velmora::tr("Open workspace"),
                                 Velmora::tr("Replace current session history with %1 session(s) from the workspace?")
                                     .arg(workspace.sessions.size()),
                                 true, [this, workspace, path](bool yes) {
                                     if (yes)
                                         replaceHistory(workspace, path);
                                 });
}

void SessionLibrary::replaceHistory(const Workspace &workspace, const QString &path)
{
    m_history.replaceAll(workspace.sessions);
    const QString question =
        workspace.openTabs.isEmpty()
            ? Velmora::tr("Open %1 session(s) from the workspace as tabs?").arg(m_history.entries().size())
            : Velmora::tr("Restore %1 saved open tab(s)?").arg(workspace.openTabs.size());
    Dialogs::instance().askYesNo(m_window, Velmora::tr("Open workspace"), question, false,
                                 [this, workspace, path](bool yes) {
                                     if (yes)
                                         restoreTabs(workspace, path);
                                     else
                                         Q_EMIT statusMessage(Velmora::tr("Workspace loaded: %1").arg(path));
                                 });
}

void SessionLibrary::restoreTabs(const Workspace &workspace, const QString &path)
{
    stopRestoring();
    QList<SessionRecord> records;
    for (const OpenTab &tab : workspace.openTabs)
        records.append(tab.record);
    if (records.isEmpty())
        records = m_history.records();
    m_front = nullptr;
    const auto open = [this, front = frontTab(workspace), opened = qsizetype(0)](const auto &turn) mutable {
        const SessionHistory::Batch batch(m_history);
        for (const SessionRecord &record : turn) {
            Q_EMIT recordRestored(record);
            if (opened++ == front)
                m_front = m_tabs.sessionAt(m_tabs.count() - 1);
        }
    };
    m_restorer = new TabRestorer(records, open, this);
    connect(m_restorer, &TabRestorer::progressed, this, &SessionLibrary::restoreProgressed);
    connect(m_restorer, &TabRestorer::finished, this, [this, workspace, path] { finishRestoring(workspace, path); });
    m_restorer->start();
}

void SessionLibrary::finishRestoring(const Workspace &workspace, const QString &path)
{
    if (m_restorer)
        m_restorer->deleteLater();
    m_restorer = nullptr;
    // Beside tabs that were open before, or when the home page had been moved, the session has another index now.
    if (m_front)
        m_tabs.setCurrentWidget(m_front);
    else if (workspace.activeTabIndex >= 0 && workspace.activeTabIndex < m_tabs.count())
        m_tabs.setCurrentIndex(workspace.activeTabIndex);
    Q_EMIT restoreFinished();
    Q_EMIT statusMessage(Velmora::tr("Workspace loaded: %1").arg(path));
}

void SessionLibrary::stopRestoring()
{
    if (m_restorer)
        m_restorer->stop();
}

void SessionLibrary::openEntry(quint64 id)
{
    if (const SessionHistory::Entry *entry = m_history.find(id))
        Q_EMIT recordOpened(SessionRecord(entry->record));
}

void SessionLibrary::editEntry(quint64 id)
{
    const SessionHistory::Entry *entry = m_history.find(id);
    if (!entry)
        return;
    auto *dialog = RecordDialog::forEditing(entry->record, m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, id, dialog] {
        SessionRecord record = dialog->record();
        record.timestamp = QDateTime::currentDateTime();
        m_history.replace(id, record);
        Q_EMIT recordOpened(record);
    });
    dialog->open();
}

void SessionLibrary::editNewestEntry()
{
    if (m_history.entries().isEmpty())
        Q_EMIT statusMessage(Velmora::tr("No recent session to edit"));
    else
        editEntry(m_history.entries().constLast().id);
}

void SessionLibrary::saveEntry(quint64 id)
{
    if (const SessionHistory::Entry *entry = m_history.find(id))
        askAndSave(entry->record);
}

void SessionLibrary::deleteEntry(quint64 id)
{
    const SessionHistory::Entry *entry = m_history.find(id);
    if (!entry)
        return;
    Dialogs::instance().askYesNo(
        m_window, Velmora::tr("Delete session"),
        Velmora::tr("Remove \"%1\" from auto-save history?").arg(visibleName(entry->record.name)), false,
        [this, id](bool yes) {
            if (!yes)
                return;
            m_history.remove(id);
            Q_EMIT statusMessage(Velmora::tr("Session removed from auto-save"));
        });
}

void SessionLibrary::warn(const QString &title, const QString &text)
{
    Dialogs::instance().tell(m_window, Dialogs::Tone::Warning, title, text);
}

} // namespace velmora

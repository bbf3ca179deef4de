#pragma once

#include "folder/operations/journal_folder.h"
#include "folder/operations/journal_lines.h"
#include "folder/operations/operation_journal.h"

namespace velmora {

/// Writes down one run while it is carried out, and sets old contents aside. Used by one thread.
class JournalRun {
public:
    /// Starts the next run of `journal`. Null with `error` set when it cannot be written. `keepsOld`: old contents are
    /// set aside, within the limits.
    [[nodiscard]] static std::unique_ptr<JournalRun> start(OperationJournal &journal, const OperationPlan &plan,
                                                           bool keepsOld, FileError &error);

    [[nodiscard]] const QString &id() const { return m_id; }

    /// How old contents are set aside.
    enum class Keep : quint8 {
        Nothing,
        Beside, ///< what is there stays there
        Away,   ///< what is there goes: moved when the volume is the same, else copied, with the original left
    };

    /// Writes the line before a copy is made at `copy`.
    [[nodiscard]] FileError copying(const Place &copy) { return writeLine(copyingLine(copy)); }

    /// Writes the line before an entry goes to the place `binPath` of the recycle bin.
    [[nodiscard]] FileError recycling(const QString &binPath)
    {
        return writeLine(recyclingLine(m_step.number, binPath));
    }

    /// Writes the line before step `number`. `old`: what will be replaced or deleted, if that is to be kept. Its
    /// contents may be beyond the limits; `isLost` tells.
    [[nodiscard]] FileError begin(qint64 number, const OperationStep &step, const NodeState *old);
    [[nodiscard]] bool isLost() const { return m_step.isLost; }

    /// Sets aside what `begin` was told of. `isMoved` tells whether the entry is gone from its place by that.
    [[nodiscard]] FileError keep(FolderHandle &folder, const QString &name, const NodeState &old, Keep manner,
                                 const FileSink::Tick &tick, bool &isMoved);
    /// What `keep` has moved away last.
    [[nodiscard]] NodeResult keptAway() { return m_kept->stat(m_step.kept); }
    /// Moves it back.
    [[nodiscard]] FileError giveBack(FolderHandle &folder, const QString &name)
    {
        return m_kept->move(m_step.kept, folder, name, FolderHandle::IfTaken::Fail);
    }

    /// Writes the line after the step that was begun last. That of a copy to where nothing was goes with the next line:
    /// after a crash in between it is found out on the disk, as when the crash comes before this call.
    [[nodiscard]] FileError endDone(const SeenEntry &now, const QString &binPath = {});
    /// The same for a step that changed nothing; what was set aside is thrown away.
    void endNothing();
    [[nodiscard]] FileError moved(qint64 number, bool stays);
    /// Takes back that a step is done: its root was lost, and undoing has to look. Where that cannot be written undoing
    /// looks all the same, and only the list of what was done has too much.
    void doubt(qint64 number) { (void)writeLine(doubtLine(number)); }

    /// To be called at the end. `isComplete`: what this run undoes has been undone as a whole, and what it is the rest
    /// of has been done.
    [[nodiscard]] FileError finish(bool isComplete);

private:
    JournalRun(OperationJournal &journal, QString id) : m_journal(journal), m_id(std::move(id)) {}
    [[nodiscard]] FileError open(const JournalHeader &header, const OperationPlan &plan);
    [[nodiscard]] FileError writePlan(const OperationPlan &plan);
    [[nodiscard]] FileError markUndone(bool isComplete);
    void giveUp();
    [[nodiscard]] FileError writeLine(const QByteArray &line);
    [[nodiscard]] FileError write(const QByteArray &bytes);
    [[nodiscard]] bool makeRoomFor(qint64 bytes);

    OperationJournal &m_journal;
    QString m_id;
    std::unique_ptr<QLockFile> m_lock;
    QString m_undoOf;
    QString m_restOf;
    std::vector<OperationKind> m_planned; ///< by the number of the step
    bool m_keepsOld = true;
    std::unique_ptr<FolderHandle> m_journalFolder;
    std::unique_ptr<FolderHandle> m_folder;
    std::unique_ptr<FolderHandle> m_kept;
    std::unique_ptr<FileSink> m_lines;
    QByteArray m_late; ///< lines that go with the next, with their ends
    JournalStep m_step;
    qint64 m_nextKept = 1;
    qint64 m_keptBytes = 0;
    qint64 m_olderBytes = 0; ///< kept by the runs before
    bool m_isBroken = false; ///< a line could not be written: nothing may follow it
};

} // namespace velmora

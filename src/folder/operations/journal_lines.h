#pragma once

#include "core/cancel_flag.h"
#include "folder/operations/operation_plan.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace velmora {

/// What the header of every journal says of its form.
inline constexpr char journalFormat[] = "velmora operations";
inline constexpr int journalVersion = 2;

/// The file of a journalled run: one JSON object on each line. The first line is the header
///
///     {"format":"velmora operations","version":2,"title":…,"started":ms since 1970
///     UTC,"undoOf":id,"roots":[path,…],"rootNumbers":[digits,…],"steps":n}
///
/// Then come all steps of the plan, so that what a crash has kept from being done is known: "plan" with the number,
/// "kind", the places "from", "to" and "counterpart" as [root, relative path] and the states "fromSeen" and "toSeen";
/// of the deletion of a copy also "keptCopy", the place of the one that stays, and "keptCopySeen".
/// Before each step that changes something comes a line with "step", its number, its "kind" where it is done in another
/// way than planned, and "kept", the name of the old contents in the folder "kept", or "lost" when they are not kept.
/// Afterwards "ended" with the same number, whether it is "done", the state "now" of what was made or recycled, and its
/// place in the recycle "bin"; once more with "doubtful" when the root was lost before anybody has looked again. When
/// the source of a copy is about to be removed comes "moved" with the number, and again with "stays" when that failed.
/// Before a copy is made beside its target comes "copying" with the place of the copy, so that one which a crash has
/// left is found; before an entry goes to the bin "recycling" with the number and the "bin". In version 1 there are no
/// planned steps: all of a step is in its "step" line. Numbers of 64 bits are strings. In texts "%" and what is no text
/// (see `nativeName`) stand as "%" and four hexadecimal digits.
struct JournalHeader {
    QString title;
    qint64 startedMs = 0;
    QString undoOf;
    QStringList roots;
    /// For each root the number that its folder has in its file system, in digits, and nothing where that gives none.
    /// It outlives the drive's being taken away and put back, unlike the number of the volume. Empty: of an older
    /// journal.
    QStringList rootNumbers;
    qint64 steps = 0; ///< of the plan; a crash may have come before all were written down, and then none was begun

    friend bool operator==(const JournalHeader &, const JournalHeader &) = default;
};

struct JournalStep {
    enum class End : quint8 {
        Open, ///< the run ended in the middle of it, or before anybody knew whether it is still there
        Done,
        Nothing, ///< it failed and changed nothing
    };

    qint64 number = 0;
    OperationStep step;
    QString kept; ///< empty when nothing was there, or it was lost
    bool isLost = false;
    End end = End::Open;
    SeenEntry now;
    QString binPath;
    bool isMoved = false;
};

struct JournalRecord {
    JournalHeader header;
    std::vector<OperationStep> planned; ///< all, by their numbers; empty where an old version has noted none
    std::vector<JournalStep> steps;     ///< in the order of their beginning
    Place lastCopy;                     ///< what was being copied last; it need not be there any more
    std::ptrdiff_t lastCopyStep = -1;   ///< into `steps`: what was begun with that copy; -1: it was not finished
};

/// What a header says of a root with this identity.
[[nodiscard]] QString rootNumber(const std::optional<FileIdentity> &identity);

/// Lines without their end.
[[nodiscard]] QByteArray headerLine(const JournalHeader &header);
[[nodiscard]] QByteArray planLine(qint64 number, const OperationStep &step);
/// `planned`: the kind that the plan says.
[[nodiscard]] QByteArray beginLine(const JournalStep &step, OperationKind planned);
[[nodiscard]] QByteArray recyclingLine(qint64 number, const QString &binPath);
[[nodiscard]] QByteArray endLine(const JournalStep &step);
[[nodiscard]] QByteArray doubtLine(qint64 number);
[[nodiscard]] QByteArray movedLine(qint64 number, bool stays);
[[nodiscard]] QByteArray copyingLine(const Place &copy);

/// Nothing when the line is no header.
[[nodiscard]] std::optional<JournalHeader> readHeaderLine(const QByteArray &line);

/// Reads a whole file, of which it holds one block at a time. A last line without an end, as a crash leaves it, is
/// ignored; anything else that is not as it should be makes the whole file unusable: nothing, with `error` unset.
/// `error` says when it could not be read to its end, or `Stopped` when `cancel` was set.
[[nodiscard]] std::optional<JournalRecord> readJournal(FileSource &source, const CancelFlag &cancel, FileError &error);

} // namespace velmora

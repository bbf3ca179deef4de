#pragma once

#include "core/sides.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <utility>

namespace velmora {

/// How an entry of one folder stands to its partner in the other (the numbers are stored in items).
enum class FolderDiffStatus : qint32 {
    Same = 0,      ///< both present and equal
    LeftOnly = 1,  ///< present on the left only; of a folder on both sides: everything in it is
    RightOnly = 2, ///< the mirror case
    Different = 3, ///< both present and different, or a folder on one side and a file on the other
};

/// One compared entry. A value; in lists every folder comes directly before what is in it.
///
/// Paths are absolute with "/" between their parts. Names and paths of Unix may hold bytes that are no text, in the
/// form of `nameFromNative`. Times are in UTC, to the millisecond: what shows them turns them into local time, which
/// costs a look at the system's clock settings each and is for the entries that are seen.
struct FolderDiffItem {
    QString name;         ///< bare, or relative to the compared folders with "/" between the parts
    QString leftPath;     ///< empty when the left side has none
    QString rightPath;    ///< empty when the right side has none
    qint32 status = 0;    ///< a `FolderDiffStatus`
    qint64 leftSize = 0;  ///< bytes; of a rolled-up folder the total of its contents; 0 when absent
    qint64 rightSize = 0; ///< the same for the right side
    QDateTime leftTime;   ///< last modification, of a rolled-up folder the latest in it; invalid when absent
    QDateTime rightTime;  ///< the same for the right side
    bool isDir = false;
    /// The same by size and time alone: nobody has read the contents. Of a folder on both sides that is the same:
    /// something in it is so. No pair of empty files is.
    bool isUnread = false;

    [[nodiscard]] FolderDiffStatus diffStatus() const noexcept { return FolderDiffStatus(status); }
    void setDiffStatus(FolderDiffStatus value) noexcept { status = qint32(value); }

    friend bool operator==(const FolderDiffItem &, const FolderDiffItem &) = default;
};

/// True when the entry is on both sides.
[[nodiscard]] inline bool isPair(const FolderDiffItem &item)
{
    return !item.leftPath.isEmpty() && !item.rightPath.isEmpty();
}

[[nodiscard]] inline const QString &pathOn(const FolderDiffItem &item, Side side)
{
    return side == Side::Left ? item.leftPath : item.rightPath;
}

[[nodiscard]] inline const QDateTime &timeOn(const FolderDiffItem &item, Side side)
{
    return side == Side::Left ? item.leftTime : item.rightTime;
}

[[nodiscard]] inline qint64 sizeOn(const FolderDiffItem &item, Side side)
{
    return side == Side::Left ? item.leftSize : item.rightSize;
}

/// What lies under a folder.
struct FolderTotals {
    quint32 files = 0;
    quint32 folders = 0;
    quint64 bytes = 0;

    friend bool operator==(const FolderTotals &, const FolderTotals &) = default;
};

/// Something that a run could not look at, or did not go into.
struct FolderProblem {
    enum class Kind : quint8 {
        UnreadableFolder, ///< listed as empty, or as far as it could be read; or gone since it was listed itself
        LinkCycle,        ///< a link to a folder that contains it; its contents are not listed
        UnreadableFile,   ///< listed as a file, and its contents could not be read to the end
    };

    Kind kind = Kind::UnreadableFolder;
    QString path;
    Side side = Side::Left; ///< paths of the two sides may be the same, of trees that are no folders of this system

    friend bool operator==(const FolderProblem &, const FolderProblem &) = default;
    /// By path.
    friend bool operator<(const FolderProblem &left, const FolderProblem &right)
    {
        return left.path != right.path ? left.path < right.path
                                       : std::pair(left.kind, left.side) < std::pair(right.kind, right.side);
    }
};

} // namespace velmora

#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "core/side.h"
#include "core/text_lines.h"

#include <QList>
#include <QStringList>

#include <vector>

namespace velmora {

// The merge line by line over the base: each line of the base stays, is replaced by the line that a version has made of
// it, or goes. What a version has inserted has no line in the base and does not reach the result; for a merge that
// keeps it see `mergeChunks`.

/// One conflict of a merge: a line that both versions have changed, each in its own way.
struct MergeConflict {
    qint32 startLine = 0;  ///< of the line "<<<<<<< LEFT" in the merged lines, 0-based
    qint32 endLine = 0;    ///< of the line ">>>>>>> RIGHT", six lines further down
    QStringList baseLines; ///< one line
    QStringList leftLines;
    QStringList rightLines;

    friend bool operator==(const MergeConflict &, const MergeConflict &) = default;
};

/// Merges two versions of a text line by line over it, and returns the merged lines. `conflicts` is cleared and then
/// has the conflicts in their order; each stands in the merged lines as seven lines: "<<<<<<< LEFT", the left text,
/// "||||||| BASE", the base text, "=======", the right text, ">>>>>>> RIGHT".
///
/// A line that one version has changed and the other one deleted is the changed one. Lines come without their line
/// feeds; all else of them counts. Empty without conflicts when cancelled. Reentrant.
[[nodiscard]] QStringList mergeThreeWay(const QStringList &base, const QStringList &left, const QStringList &right,
                                        QList<MergeConflict> &conflicts, const CancelFlag &cancel = {});

/// Whose text a merged line has.
enum class MergedFrom : quint8 {
    Base,
    Left,
    Right,
    Both, ///< the left text, which is the right one, too
    Conflict,
};

/// One line of a merge, or one conflict. Indices are 0-based.
struct MergedLine {
    MergedFrom from = MergedFrom::Base;
    qint32 base = 0;
    qint32 left = -1;  ///< the line that the left text has made of it, -1 when that has left it alone or deleted it
    qint32 right = -1; ///< the same of the right text

    friend bool operator==(const MergedLine &, const MergedLine &) = default;
};

/// A line of one version that is not in the merge: it was inserted, or resembles no line of the base.
struct LeftOutLine {
    Side side = Side::Left;
    qint32 line = 0; ///< 0-based
    qint32 at = 0;   ///< the index among the merged lines before which it would stand

    friend bool operator==(const LeftOutLine &, const LeftOutLine &) = default;
};

/// What `mergeThreeWay` makes of three texts, without their lines.
struct ThreeWayMerge {
    std::vector<MergedLine> lines;    ///< in the order of the base; a conflict counts once
    std::vector<LeftOutLine> leftOut; ///< rising by `at`, and of one place those of the left before those of the right
};

/// The same merge for texts held as `TextLines`, none of which is copied. Lines are compared without their ends.
/// `progress` counts in phase 0 the versions that have been compared with the base. Costs about two comparisons of two
/// texts, and 40 bytes a line. Empty when cancelled.
[[nodiscard]] ThreeWayMerge mergeThreeWay(const TextLines &base, const TextLines &left, const TextLines &right,
                                          const CancelFlag &cancel, Progress &progress);

} // namespace velmora

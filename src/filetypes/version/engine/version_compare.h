#pragma once

#include "core/keyed_rows.h"
#include "core/sides.h"
#include "filetypes/version/engine/program_facts.h"

namespace velmora {

/// One fact of either side.
struct VersionRow {
    ProgramFact fact = ProgramFact::FileSize;
    QString item; ///< as the left side spells it, where it has it
    PairStatus status = PairStatus::Same;
    Sides<QString> values = {};
    Sides<qint64> offsets{-1, -1}; ///< where in the files they stand, as in `FactValue`
};

/// What two programs are to each other; the first that holds.
enum class VersionVerdict : quint8 {
    SameFile,
    SameButStamps, ///< but for time stamps, checksum or signature, and of ELF files build identity or debug link
    LeftNewer,     ///< by the file versions, or, where these are equal, the product versions
    RightNewer,
    SameVersion, ///< with other contents
    Unversioned  ///< other contents, and not both say a version
};

/// "sameFile" and so on: the name in the output of programs, which stays.
[[nodiscard]] const char *versionVerdictName(VersionVerdict verdict);

[[nodiscard]] VersionVerdict judgeVersions(const ProgramFacts &left, const ProgramFacts &right);

/// The facts of both sides in the order of `ProgramFact`, those of one kind by their items. Letter case of items does
/// not matter. An item that a side has several times is paired in the order in which it has them.
[[nodiscard]] QList<VersionRow> compareVersions(const ProgramFacts &left, const ProgramFacts &right);

} // namespace velmora

#pragma once

#include "core/side.h"
#include "filetypes/version/engine/program_file.h"
#include "filetypes/version/engine/version_compare.h"

namespace velmora {

/// What a fact is called, with its item where it has one.
[[nodiscard]] QString factText(ProgramFact fact, const QString &item);

/// The value of a side as people read it: sizes with separators.
[[nodiscard]] QString valueText(const VersionRow &row, Side side);

/// Where in a file a fact stands, and at which places of both files it does.
[[nodiscard]] QString placeText(const VersionRow &row);

/// What two programs are to each other, in a sentence.
[[nodiscard]] QString verdictText(VersionVerdict verdict, const ProgramFacts &left, const ProgramFacts &right);

/// Who signed each of two programs, in a sentence; empty where that does not tell them apart or
/// cannot be read of both.
[[nodiscard]] QString signerText(const ProgramFacts &left, const ProgramFacts &right);

/// For which machines two programs are, in a sentence; empty where these are the same, or not known of both.
[[nodiscard]] QString machineText(const ProgramFacts &left, const ProgramFacts &right);

/// Which tables of a file could not be read, in a sentence; empty where all could.
[[nodiscard]] QString damageText(const ProgramFacts &facts, const QString &path);

/// Why a file was not read, in a sentence.
[[nodiscard]] QString faultText(const ProgramReading &reading, const QString &path);

} // namespace velmora

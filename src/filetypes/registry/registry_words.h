#pragma once

#include "filetypes/registry/engine/registry_compare.h"
#include "filetypes/registry/engine/registry_file.h"
#include "filetypes/registry/engine/registry_noise.h"

namespace velmora {

/// What a value or key of a row is called below the key `below`; the whole path for an empty one.
[[nodiscard]] QString rowName(const RegistryComparison &comparison, const RegistryRow &row, QStringView below);

/// The value of a side as it is shown; empty where it has none.
[[nodiscard]] QString sideText(const RegistryComparison &comparison, const RegistryRow &row, Side side);

/// The type of a row's value, or of both.
[[nodiscard]] QString typeText(const RegistryComparison &comparison, const RegistryRow &row);

/// What else is to be said of a row: its whole path, and how lists differ.
[[nodiscard]] QString noteText(const RegistryComparison &comparison, const RegistryRow &row);

[[nodiscard]] QString verdictText(const RegistryComparison &comparison);

/// Which code page a file that is not in Unicode was read by; empty where that says nothing.
[[nodiscard]] QString charsetText(const RegistryReading &reading, const QString &place);

/// What could not be read of a side or seems to be missing, in a sentence each.
[[nodiscard]] QStringList remarkTexts(const RegistryReading &reading, const QString &place);

/// Why a side was not read, in a sentence.
[[nodiscard]] QString faultText(const RegistryReading &reading, const QString &place);

[[nodiscard]] QString noiseText(NoiseKind kind);

} // namespace velmora

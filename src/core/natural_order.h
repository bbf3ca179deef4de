#pragma once

#include <QString>
#include <QStringView>

namespace velmora {

/// The order in which names are listed: without regard to case, and with runs of digits as numbers, so that "file2"
/// comes before "file10". It is the same in every locale and on every system.
///
/// Letters are compared by simple case folding, digits by their value whatever their script, everything else by its
/// code unit. "file1" and "file01" have equal keys, as "a" and "A" have.

/// A string whose code units, compared one by one, put `name` in its natural place. Linear.
[[nodiscard]] QString naturalKey(QStringView name);

/// Below, at or above 0 as `left` comes before, with or after `right`. Names with equal keys are told apart by their
/// code units, so that only equal names are with each other. Compares without making keys.
[[nodiscard]] int compareNatural(QStringView left, QStringView right);

} // namespace velmora

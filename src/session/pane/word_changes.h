#pragma once

#include "core/cancel_flag.h"
#include "text/engine/line_diff_engine.h"

#include <QList>
#include <QStringView>

namespace velmora {

/// Words consist of letters, digits, underscores and what belongs to such.
enum class CharacterClass { Space, Word, Other };
[[nodiscard]] CharacterClass classOf(QChar unit);

/// The changed characters of two long texts, found by matching their words and signs instead of their characters: the
/// longest common blocks of those, and within what lies between two blocks the characters where that is short. Costs
/// about linear time. Empty when cancelled. Usable from any thread.
struct WordChanges {
    QList<CharRange> left; ///< in UTF-16 code units, in increasing order
    QList<CharRange> right;
};
[[nodiscard]] WordChanges wordChanges(QStringView left, QStringView right, const CancelFlag &cancel = {});

} // namespace velmora

#pragma once

#include <QString>

#include <string_view>

namespace velmora {

/// What the beginning of a field, as it stands in a table, means: no more than `length` units, and an ellipsis where
/// there is more.
[[nodiscard]] QString beginningOfField(std::string_view field, qsizetype length);

/// The same on one line, with what is invisible made visible.
[[nodiscard]] QString shownField(std::string_view field);

} // namespace velmora

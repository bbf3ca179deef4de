#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// The one form that a decimal number has however it is written: a minus sign, digits without zeros at either end, and
/// "e" with the power of ten; "0" for nothing. Exact, whatever the number of digits, and read by `std::from_chars`.
///
/// Read are ASCII digits with a sign (also U+2212), a point or a comma before the fraction, an exponent, and groups of
/// three digits with commas, points, apostrophes or spaces (also U+00A0, U+2009, U+202F) between them. A lone comma
/// before exactly three digits separates groups, unless only a zero stands before it; a lone point never does. White
/// space around the number is passed over. Empty for everything else.
[[nodiscard]] std::optional<std::string> numberForm(std::string_view text);

} // namespace velmora

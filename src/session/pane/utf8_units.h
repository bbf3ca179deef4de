#pragma once

#include <QtGlobal>

#include <string_view>

namespace velmora {

/// UTF-16 code units that valid UTF-8 takes. At about the speed of memory: the longest lines are asked about with every
/// key that is typed into them.
[[nodiscard]] qsizetype utf16Length(std::string_view utf8);

/// The byte of valid UTF-8 at which UTF-16 code unit `unit` begins, or the character of which it is the second one; the
/// end for anything behind it. As fast.
[[nodiscard]] qsizetype byteOfUnit(std::string_view utf8, qsizetype unit);

} // namespace velmora

#pragma once

#include <QtGlobal>

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

/// A bracketed list of a mask: "[abc]", "[a-z]", "[!a]", "[[:digit:]]".
///
/// Means what the same list means in a regular expression that does not regard case, into which the toolkit converts
/// wildcards: "!" or "^" at the start turns it round, "]" is a character where it stands first, "-" between two
/// characters makes a range, a backslash is a character. The named classes hold ASCII characters only.
class MaskList {
public:
    /// Reads the list behind the "[" of `mask` whose place is `at - 1`, and moves `at` behind its "]". None where no
    /// list is: no "]" ends it, a range runs backwards, a separator of folders or an unknown name is in it.
    [[nodiscard]] static std::optional<MaskList> read(std::u32string_view mask, std::size_t &at);

    /// Whether the list has the character `point`, which case folding makes `folded`.
    [[nodiscard]] bool contains(char32_t point, char32_t folded) const;

private:
    using Range = std::pair<char32_t, char32_t>; ///< first and last
    using Ranges = std::vector<Range>;

    bool readRange(std::u32string_view mask, std::size_t &at);
    bool addNamed(std::u32string_view name);
    void foldCase();
    [[nodiscard]] static bool isIn(const Ranges &ranges, char32_t point);

    Ranges m_ranges; ///< sorted, apart, with the folded form of each of their characters
    Ranges m_named;  ///< of the named classes, in which case has been seen to
    bool m_negated = false;
};

} // namespace velmora

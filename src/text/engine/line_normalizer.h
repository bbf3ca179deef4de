#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace velmora {

struct TextSessionOptions;

/// What of a line does not count when it is compared.
struct KeyRules {
    bool dropLeading = false;  ///< white space at the start
    bool dropTrailing = false; ///< white space at the end
    bool collapse = false;     ///< how much white space there is, and which; goes with dropLeading
    bool foldCase = false;     ///< upper or lower case

    [[nodiscard]] static KeyRules of(const TextSessionOptions &options);
};

/// Reduces lines to what counts of them. White space is what `QChar::isSpace` says of a UTF-16 unit, lower case what
/// `QString::toLower` makes. Used by one thread.
template <typename Unit>
class LineNormalizer {
public:
    using View = std::basic_string_view<Unit>;

    explicit LineNormalizer(const KeyRules &rules) : m_rules(rules) {}

    /// The key of `line`: a part of it where that is enough, else a text of this object's that the next call
    /// overwrites. Costs no memory, and no copy for lines that keep to single spaces and, where case is folded, to
    /// lower case.
    [[nodiscard]] View key(View line);

private:
    void collapse(View line);
    void foldAsciiCase() noexcept;

    KeyRules m_rules;
    std::basic_string<Unit> m_text;
};

/// True when `line` has nothing but white space.
[[nodiscard]] bool isBlank(std::string_view line) noexcept;
[[nodiscard]] bool isBlank(std::u16string_view line) noexcept;

extern template class LineNormalizer<char>;
extern template class LineNormalizer<char16_t>;

} // namespace velmora

#pragma once

#include <QtGlobal>

#include <string>
#include <string_view>

namespace velmora {

/// When two values of one column count as the same although their bytes differ. As it is made, never.
struct ColumnRule {
    /// What values are taken for. One that is none of that is text.
    enum class Meaning : quint8 {
        Text,
        Number,       ///< see `numberForm`
        DayFirstDate, ///< see `dateForm`
        MonthFirstDate
    };
    enum class Bound : quint8 {
        Absolute, ///< the difference itself
        Relative  ///< its share of the larger number, regardless of signs; 0.01 is one in a hundred
    };

    bool isLeftOut = false; ///< all values count as the same
    bool ignoresCase = false;
    bool ignoresSpace = false; ///< white space at the ends, and how much there is between words
    Meaning meaning = Meaning::Text;
    Bound bound = Bound::Absolute;
    double tolerance = 0; ///< numbers that differ by no more count as the same

    /// True when it lets nothing count as the same but the same bytes.
    [[nodiscard]] bool isExact() const noexcept
    {
        return !isLeftOut && !ignoresCase && !ignoresSpace && meaning == Meaning::Text;
    }
    [[nodiscard]] bool hasTolerance() const noexcept { return meaning == Meaning::Number && tolerance > 0; }

    friend bool operator==(const ColumnRule &, const ColumnRule &) = default;
};

/// What stands for a value in its column, valid as long as `value` and `buffer`: but for a tolerance two values count
/// as the same just when this is the same. Rows are paired by this where the column is a key, whether or not it is left
/// out otherwise.
[[nodiscard]] std::string_view valueForm(std::string_view value, const ColumnRule &rule, std::string &buffer);

/// The same for finding rows that are alike: numbers that count as the same mostly have the same form, as do some that
/// do not. Empty for an empty value, and in a column that is left out.
[[nodiscard]] std::string_view roughForm(std::string_view value, const ColumnRule &rule, std::string &buffer);

/// Whether two values, in UTF-8, count as the same.
[[nodiscard]] bool countAsSame(std::string_view left, std::string_view right, const ColumnRule &rule);

} // namespace velmora

#include "filetypes/table/engine/column_rule.h"

#include "core/utf8_text.h"
#include "filetypes/table/engine/ascii.h"
#include "filetypes/table/engine/date_form.h"
#include "filetypes/table/engine/number_form.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace velmora {

namespace {

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

std::string_view textForm(std::string_view value, const ColumnRule &rule, std::string &buffer)
{
    if (!rule.ignoresCase && !rule.ignoresSpace)
        return value;
    if (!rule.ignoresSpace && isAscii(value)) {
        buffer.assign(value);
        std::transform(buffer.begin(), buffer.end(), buffer.begin(), lowerCase);
        return buffer;
    }
    QString text = textOfUtf8(value);
    if (rule.ignoresSpace)
        text = text.simplified();
    if (rule.ignoresCase)
        text = text.toCaseFolded();
    buffer = text.toStdString();
    return buffer;
}

std::optional<std::string> typedForm(std::string_view value, const ColumnRule &rule)
{
    switch (rule.meaning) {
    case ColumnRule::Meaning::Number:
        return numberForm(value);
    case ColumnRule::Meaning::DayFirstDate:
        return dateForm(value, DateOrder::DayFirst);
    case ColumnRule::Meaning::MonthFirstDate:
        return dateForm(value, DateOrder::MonthFirst);
    case ColumnRule::Meaning::Text:
        break;
    }
    return std::nullopt;
}

std::optional<double> readNumber(std::string_view text)
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// Nothing where the value is no number, or one beyond what a double can hold.
std::optional<double> numberOf(std::string_view value)
{
    // Most numbers are written as `std::from_chars` reads them, which spares their form.
    const bool isUsual = !value.empty() && value.find_first_not_of("0123456789.-") == std::string_view::npos;
    if (const std::optional<double> number = isUsual ? readNumber(value) : std::nullopt)
        return number;
    const std::optional<std::string> form = numberForm(value);
    return form ? readNumber(*form) : std::nullopt;
}

/// The number of the step, of several tolerances, that a number is nearest to: few of those that count as the same lie
/// at two steps.
std::string_view nearestStep(double number, const ColumnRule &rule, std::string &buffer)
{
    constexpr double tolerances = 16;
    double step = 0;
    if (rule.bound == ColumnRule::Bound::Absolute)
        step = std::round(number / (tolerances * rule.tolerance));
    else if (number != 0)
        step = std::round(std::log(std::abs(number)) / std::log1p(tolerances * rule.tolerance));
    constexpr std::size_t longestDouble = 32;
    std::array<char, longestDouble> digits{};
    const char *const end = std::to_chars(digits.data(), digits.data() + digits.size(), step).ptr;
    buffer.assign(digits.data(), std::size_t(end - digits.data()));
    if (rule.bound == ColumnRule::Bound::Relative && number != 0)
        buffer += number < 0 ? '-' : '+';
    return buffer;
}

bool isWithin(double left, double right, const ColumnRule &rule)
{
    const double size = std::max(std::abs(left), std::abs(right));
    const double most = rule.bound == ColumnRule::Bound::Absolute ? rule.tolerance : rule.tolerance * size;
    // 1.3 and 1.2 differ by more than 0.1 in binary fractions.
    const double rounding = 4 * size * std::numeric_limits<double>::epsilon();
    return std::abs(left - right) <= most + rounding;
}

} // namespace

std::string_view valueForm(std::string_view value, const ColumnRule &rule, std::string &buffer)
{
    if (std::optional<std::string> form = typedForm(value, rule)) {
        buffer = std::move(*form);
        return buffer;
    }
    return textForm(value, rule, buffer);
}

std::string_view roughForm(std::string_view value, const ColumnRule &rule, std::string &buffer)
{
    if (rule.isLeftOut)
        return {};
    const std::optional<double> number = rule.hasTolerance() ? numberOf(value) : std::nullopt;
    if (!number)
        return valueForm(value, rule, buffer);
    return nearestStep(*number, rule, buffer);
}

bool countAsSame(std::string_view left, std::string_view right, const ColumnRule &rule)
{
    if (rule.isLeftOut || left == right)
        return true;
    if (rule.isExact())
        return false;
    std::string leftBuffer;
    std::string rightBuffer;
    if (valueForm(left, rule, leftBuffer) == valueForm(right, rule, rightBuffer))
        return true;
    if (!rule.hasTolerance())
        return false;
    const std::optional<double> leftNumber = numberOf(left);
    const std::optional<double> rightNumber = numberOf(right);
    return leftNumber && rightNumber && isWithin(*leftNumber, *rightNumber, rule);
}

} // namespace velmora

#include "filetypes/table/engine/number_form.h"

#include "filetypes/table/engine/ascii.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace velmora {

namespace {

constexpr std::size_t longestNumber = 400; // of bytes; more is no number that anybody writes

/// One sign of a number: several characters have the same meaning.
struct Spelling {
    std::string_view utf8;
    char sign;
};

constexpr std::array spellings{
    Spelling{"\xE2\x88\x92", '-'}, Spelling{"\xC2\xA0", ' '},      Spelling{"\xE2\x80\x89", ' '},
    Spelling{"\xE2\x80\xAF", ' '}, Spelling{"\xE2\x80\x99", '\''},
};

/// The number with one byte for each sign; empty when it has others.
std::string inAscii(std::string_view text)
{
    std::string ascii;
    while (!text.empty()) {
        const auto *known = std::find_if(spellings.begin(), spellings.end(),
                                         [text](const Spelling &spelling) { return text.starts_with(spelling.utf8); });
        if (known != spellings.end()) {
            ascii += known->sign;
            text.remove_prefix(known->utf8.size());
        } else if (isDigit(text[0]) || std::string_view("+-.,' eE\t").find(text[0]) != std::string_view::npos) {
            ascii += text[0];
            text.remove_prefix(1);
        } else {
            return {};
        }
    }
    return std::string(trimmed(ascii));
}

/// Which of point and comma stands before the fraction; 0 for none.
char fractionMark(std::string_view mantissa)
{
    const std::size_t point = mantissa.rfind('.');
    const std::size_t comma = mantissa.rfind(',');
    if (point != std::string_view::npos && comma != std::string_view::npos)
        return point > comma ? '.' : ',';
    if (point != std::string_view::npos)
        return mantissa.find('.') == point ? '.' : '\0';
    if (comma == std::string_view::npos || mantissa.find(',') != comma)
        return '\0';
    const bool isGroup = mantissa.size() - comma == 4 && comma <= 3 && comma > 0 && mantissa.substr(0, comma) != "0";
    return isGroup ? '\0' : ',';
}

/// The digits of the whole part without what separates its groups.
std::optional<std::string> wholeDigits(std::string_view whole)
{
    std::string digits;
    char separator = '\0';
    std::size_t inGroup = 0;
    for (const char byte : whole) {
        if (isDigit(byte)) {
            digits += byte;
            ++inGroup;
            continue;
        }
        const bool isFirst = separator == '\0';
        if (inGroup == 0 || inGroup > 3 || (!isFirst && (byte != separator || inGroup != 3)))
            return std::nullopt;
        separator = byte;
        inGroup = 0;
    }
    if (separator != '\0' && inGroup != 3)
        return std::nullopt;
    return digits;
}

bool areDigits(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), isDigit);
}

std::string inOneForm(bool isNegative, std::string digits, long long power)
{
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    while (!digits.empty() && digits.back() == '0') {
        digits.pop_back();
        ++power;
    }
    if (digits.empty())
        return "0";
    return (isNegative ? "-" : "") + digits + (power == 0 ? std::string() : 'e' + std::to_string(power));
}

} // namespace

std::optional<std::string> numberForm(std::string_view text)
{
    if (text.size() > longestNumber)
        return std::nullopt;
    const std::string ascii = inAscii(text);
    std::string_view rest = ascii;
    const bool isNegative = rest.starts_with('-');
    if (isNegative || rest.starts_with('+'))
        rest.remove_prefix(1);
    long long power = 0;
    if (const std::size_t e = rest.find_first_of("eE"); e != std::string_view::npos) {
        std::string_view exponent = rest.substr(e + 1);
        if (exponent.starts_with('+'))
            exponent.remove_prefix(1);
        int value = 0;
        const auto [end, error] = std::from_chars(exponent.data(), exponent.data() + exponent.size(), value);
        if (error != std::errc() || end != exponent.data() + exponent.size())
            return std::nullopt;
        power = value;
        rest = rest.substr(0, e);
    }
    const char mark = fractionMark(rest);
    const std::size_t at = mark == '\0' ? std::string_view::npos : rest.rfind(mark);
    const std::string_view fraction = at == std::string_view::npos ? std::string_view() : rest.substr(at + 1);
    const std::optional<std::string> whole = wholeDigits(rest.substr(0, at));
    if (!whole || !areDigits(fraction) || whole->size() + fraction.size() == 0)
        return std::nullopt;
    return inOneForm(isNegative, *whole + std::string(fraction), power - static_cast<long long>(fraction.size()));
}

} // namespace velmora

#include "filetypes/table/engine/date_form.h"

#include "filetypes/table/engine/ascii.h"

#include <QDateTime>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

constexpr std::size_t longestDate = 80; // of bytes

struct Number {
    int value = 0;
    std::size_t digits = 0;
};

/// Reads a date from left to right.
class Reader {
public:
    explicit Reader(std::string_view text) : m_rest(trimmed(text)) {}

    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }
    [[nodiscard]] char peek() const { return m_rest.empty() ? '\0' : m_rest[0]; }

    bool take(std::string_view expected)
    {
        if (!m_rest.starts_with(expected))
            return false;
        m_rest.remove_prefix(expected.size());
        return true;
    }

    bool takeOneOf(std::string_view bytes)
    {
        if (m_rest.empty() || bytes.find(m_rest[0]) == std::string_view::npos)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    void skipSpace()
    {
        while (takeOneOf(" \t"))
            ;
    }

    std::optional<Number> takeNumber(std::size_t most)
    {
        Number number;
        while (number.digits < most && isDigit(peek())) {
            number.value = number.value * 10 + (peek() - '0');
            ++number.digits;
            m_rest.remove_prefix(1);
        }
        return number.digits > 0 && !isDigit(peek()) ? std::optional(number) : std::nullopt;
    }

    std::string takeDigits() { return takeWhile(isDigit); }
    /// In lower case.
    std::string takeLetters()
    {
        std::string letters = takeWhile(isLetter);
        std::transform(letters.begin(), letters.end(), letters.begin(), lowerCase);
        return letters;
    }

private:
    template <typename Belongs>
    std::string takeWhile(Belongs belongs)
    {
        const auto *end = std::find_if_not(m_rest.begin(), m_rest.end(), belongs);
        std::string taken(m_rest.begin(), end);
        m_rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view m_rest;
};

/// From 1 on; 0 for no month.
int monthOf(std::string_view name)
{
    static constexpr std::array<std::string_view, 12> names{"january",   "february", "march",    "april",
                                                            "may",       "june",     "july",     "august",
                                                            "september", "october",  "november", "december"};
    const auto *known = std::find_if(names.begin(), names.end(), [name](std::string_view month) {
        return name == month || (name.size() == 3 && month.starts_with(name)) || (name == "sept" && month[0] == 's');
    });
    return known == names.end() ? 0 : int(known - names.begin()) + 1;
}

int yearOf(const Number &number)
{
    constexpr int pivot = 69;
    if (number.digits != 2)
        return number.value;
    return number.value + (number.value < pivot ? 2000 : 1900);
}

std::optional<QDate> valid(const QDate &date)
{
    return date.isValid() ? std::optional(date) : std::nullopt;
}

/// Year, sign, month, sign, day.
std::optional<QDate> yearFirst(Reader &reader, int year)
{
    constexpr std::string_view yearSign = "\xE5\xB9\xB4";
    constexpr std::string_view monthSign = "\xE6\x9C\x88";
    constexpr std::string_view daySign = "\xE6\x97\xA5";
    const bool hasSigns = reader.take(yearSign);
    const char separator = hasSigns ? '\0' : reader.peek();
    if (!hasSigns && !reader.takeOneOf("-/."))
        return std::nullopt;
    const std::optional<Number> month = reader.takeNumber(2);
    if (!month || !(hasSigns ? reader.take(monthSign) : reader.take({&separator, 1})))
        return std::nullopt;
    const std::optional<Number> day = reader.takeNumber(2);
    if (!day || (hasSigns && !reader.take(daySign)))
        return std::nullopt;
    return valid(QDate(year, month->value, day->value));
}

/// Two numbers of which one is the month, and the year.
std::optional<QDate> yearLast(Reader &reader, int first, DateOrder order)
{
    const char separator = reader.peek();
    if (!reader.takeOneOf("-/."))
        return std::nullopt;
    const std::optional<Number> second = reader.takeNumber(2);
    if (!second || !reader.take({&separator, 1}))
        return std::nullopt;
    const std::optional<Number> year = reader.takeNumber(4);
    if (!year || (year->digits != 2 && year->digits != 4))
        return std::nullopt;
    const bool isMonthFirst = second->value > 12 || (order == DateOrder::MonthFirst && separator != '.' && first <= 12);
    return valid(isMonthFirst ? QDate(yearOf(*year), first, second->value)
                              : QDate(yearOf(*year), second->value, first));
}

/// Day and month by name in either order, and the year.
std::optional<QDate> withName(Reader &reader, std::optional<Number> day)
{
    const bool isHyphened = day && reader.takeOneOf("-");
    reader.skipSpace();
    const int month = monthOf(reader.takeLetters());
    if (month == 0)
        return std::nullopt;
    static_cast<void>(reader.takeOneOf("."));
    if (!day) {
        reader.skipSpace();
        day = reader.takeNumber(2);
    }
    static_cast<void>(reader.takeOneOf(isHyphened ? "-" : ","));
    reader.skipSpace();
    const std::optional<Number> year = reader.takeNumber(4);
    if (!day || !year || (year->digits != 2 && year->digits != 4))
        return std::nullopt;
    return valid(QDate(yearOf(*year), month, day->value));
}

/// True where the name of a month stands behind the day.
bool nameFollows(Reader ahead)
{
    static_cast<void>(ahead.takeOneOf("-"));
    ahead.skipSpace();
    return !ahead.takeLetters().empty();
}

std::optional<QDate> readDate(Reader &reader, DateOrder order)
{
    if (!isDigit(reader.peek()))
        return withName(reader, std::nullopt);
    const std::optional<Number> number = reader.takeNumber(8);
    if (!number)
        return std::nullopt;
    if (number->digits == 8)
        return valid(QDate(number->value / 10000, number->value / 100 % 100, number->value % 100));
    if (number->digits == 4)
        return yearFirst(reader, number->value);
    if (number->digits > 2)
        return std::nullopt;
    return nameFollows(reader) ? withName(reader, number) : yearLast(reader, number->value, order);
}

struct Time {
    int seconds = 0; ///< since midnight UTC, beyond the day where the offset leads there
    std::string fraction;
};

/// The seconds that local time is ahead of UTC.
std::optional<int> readOffset(Reader &reader)
{
    reader.skipSpace();
    if (reader.isAtEnd() || reader.takeOneOf("Zz"))
        return 0;
    const int sign = reader.peek() == '-' ? -1 : 1;
    if (!reader.takeOneOf("+-"))
        return std::nullopt;
    const std::string hours = reader.takeDigits();
    static_cast<void>(reader.takeOneOf(":"));
    const std::string digits = hours + reader.takeDigits();
    if (digits.size() != 2 && digits.size() != 4)
        return std::nullopt;
    const int hour = std::stoi(digits.substr(0, 2));
    const int minute = digits.size() == 4 ? std::stoi(digits.substr(2)) : 0;
    return hour <= 14 && minute < 60 ? std::optional(sign * (hour * 3600 + minute * 60)) : std::nullopt;
}

std::optional<Time> readTime(Reader &reader)
{
    if (!reader.takeOneOf("Tt \t"))
        return std::nullopt;
    reader.skipSpace();
    const std::optional<Number> hour = reader.takeNumber(2);
    if (!hour || !reader.takeOneOf(":"))
        return std::nullopt;
    const std::optional<Number> minute = reader.takeNumber(2);
    Number second;
    Time time;
    if (reader.takeOneOf(":")) {
        second = reader.takeNumber(2).value_or(Number{60, 0});
        if (reader.takeOneOf(".,"))
            time.fraction = reader.takeDigits();
    }
    Reader ahead = reader;
    ahead.skipSpace();
    const std::string half = ahead.takeLetters();
    int hours = hour->value;
    if (half == "am" || half == "pm") {
        if (hours < 1 || hours > 12)
            return std::nullopt;
        hours = hours % 12 + (half == "pm" ? 12 : 0);
        reader = ahead;
    }
    const std::optional<int> offset = readOffset(reader);
    if (!minute || hours > 23 || minute->value > 59 || second.value > 59 || !offset)
        return std::nullopt;
    time.fraction.erase(time.fraction.find_last_not_of('0') + 1);
    time.seconds = hours * 3600 + minute->value * 60 + second.value - *offset;
    return time;
}

} // namespace

std::optional<std::string> dateForm(std::string_view text, DateOrder order)
{
    if (text.size() > longestDate)
        return std::nullopt;
    Reader reader(text);
    const std::optional<QDate> date = readDate(reader, order);
    if (!date)
        return std::nullopt;
    Time time;
    if (!reader.isAtEnd()) {
        const std::optional<Time> given = readTime(reader);
        if (!given || !reader.isAtEnd())
            return std::nullopt;
        time = *given;
    }
    const QDateTime moment = QDateTime(*date, QTime(0, 0), Qt::UTC).addSecs(time.seconds);
    std::string form = moment.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")).toStdString();
    if (!time.fraction.empty())
        form += '.' + time.fraction;
    return form + 'Z';
}

} // namespace velmora

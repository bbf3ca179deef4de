#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// What the first of two numbers before a year is, where both could be either.
enum class DateOrder { DayFirst, MonthFirst };

/// The one form that a date has however it is written: "2024-03-05T10:20:30.5Z", in UTC, without zeros behind the
/// fraction of a second.
///
/// Read are the year first with "-", "/", "." between the numbers, or without anything between its eight digits, or
/// with the signs for year, month and day (U+5E74, U+6708, U+65E5); the year last with any of these between the
/// numbers, with points always the day first; English names of months or their first three letters, before or behind
/// the day. Two digits of a year are one of 1969 to 2068, as POSIX has it. A time may follow behind a space or "T":
/// hours and minutes, seconds, their fraction, AM or PM, "Z" or the offset from UTC. No time is midnight, no offset is
/// UTC. White space around is passed over. Empty for everything else, also for dates that no calendar has.
[[nodiscard]] std::optional<std::string> dateForm(std::string_view text, DateOrder order);

} // namespace velmora

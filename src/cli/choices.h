#pragma once

#include "cli/arguments.h"

#include <algorithm>
#include <array>

namespace velmora::cli {

/// One value that an option can have, with what the program makes of it. Tables of these are what is parsed and what
/// help, manual page and completion describe.
template <typename Value>
struct ChoiceOf {
    Choice choice;
    Value value;
};

/// The choices of a table, for the description of its option.
template <typename Value, std::size_t count>
constexpr std::array<Choice, count> choicesOf(const std::array<ChoiceOf<Value>, count> &table)
{
    std::array<Choice, count> choices{};
    std::transform(table.begin(), table.end(), choices.begin(), [](const auto &row) { return row.choice; });
    return choices;
}

/// The row of the table that an option names; the first one when the option is not given. `arguments` are parsed with
/// these choices, so that there is no other value.
template <typename Value, std::size_t count>
const ChoiceOf<Value> &chosen(const std::array<ChoiceOf<Value>, count> &table, const Arguments &arguments,
                              const char *option)
{
    const std::optional<QString> name = arguments.value(option);
    const auto row = std::find_if(table.begin(), table.end(),
                                  [&name](const auto &one) { return name == QLatin1String(one.choice.name); });
    return row == table.end() ? table.front() : *row;
}

} // namespace velmora::cli

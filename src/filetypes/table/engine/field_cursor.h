#pragma once

#include <QtGlobal>

#include <string>
#include <string_view>

namespace velmora {

/// Walks over the fields of one row, left to right, without a copy. A row has at least one field, an empty one when the
/// row is empty.
class FieldCursor {
public:
    /// `row`: the bytes of a row that begins outside quotes. `delimiter`: the UTF-8 form of one character. Both outlive
    /// the cursor, which stands before the first field.
    FieldCursor(std::string_view row, std::string_view delimiter) noexcept : m_row(row), m_delimiter(delimiter) {}

    /// Moves on; false behind the last field.
    bool next() noexcept;
    /// The field as it stands in the row, with its quotes: see `fieldValue`. Empty behind the last field.
    [[nodiscard]] std::string_view field() const noexcept { return m_field; }

private:
    [[nodiscard]] size_t delimiterFrom(size_t at) noexcept;

    std::string_view m_row;
    std::string_view m_delimiter;
    std::string_view m_field;
    size_t m_next = 0;          ///< where the next field begins; behind the row's end when none does
    size_t m_nextDelimiter = 0; ///< the first one behind the last place looked at
    bool m_delimiterKnown = false;
};

/// What a field means: its bytes without quotes and the carriage returns outside of them. `buffer` holds what is not in
/// `field` as it stands.
[[nodiscard]] std::string_view fieldValue(std::string_view field, std::string &buffer);

} // namespace velmora

#pragma once

#include "core/cancel_flag.h"
#include "core/text_lines.h"
#include "filetypes/table/engine/field_cursor.h"

#include <QString>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A delimited text cut into rows: immutable, cheap to copy, usable from any thread.
///
/// Rows and fields stay where the text has them, and have the meaning that `parseDelimitedText` gives them. Indices are
/// 0-based and count a header row as any other. Costs nothing beside the text, and 4 bytes a row where a quoted field
/// holds a line feed.
class TableText {
public:
    TableText() = default;
    /// Preconditions: `delimiter` is no quotation mark, line feed or carriage return, and the text has less than 2^31
    /// lines. When `cancel` is set on the way the rows are not all there.
    TableText(const TextLines &text, QChar delimiter, const CancelFlag &cancel = {});

    [[nodiscard]] qint32 rowCount() const noexcept { return m_rowCount; }
    [[nodiscard]] bool isEmpty() const noexcept { return m_rowCount == 0; }

    /// The bytes of a row without what ends it, valid as long as a copy of this lives.
    [[nodiscard]] std::string_view row(qint32 index) const noexcept;
    [[nodiscard]] FieldCursor fields(qint32 row) const noexcept { return {this->row(row), m_delimiter}; }
    /// The value of one field, empty when the row is shorter.
    [[nodiscard]] QString value(qint32 row, qint32 column) const;
    /// The most fields that any row has.
    [[nodiscard]] qint32 mostFields(const CancelFlag &cancel) const;

    /// The UTF-8 form of the delimiter.
    [[nodiscard]] std::string_view delimiter() const noexcept { return m_delimiter; }
    /// True when each field of the row means its own bytes.
    [[nodiscard]] bool isPlain() const noexcept { return m_isPlain; }
    /// The text that was cut. Its line k is row k where the table is plain, whose last line may be no row.
    [[nodiscard]] const TextLines &text() const noexcept { return m_text; }

private:
    void findRows(const CancelFlag &cancel);
    void dropNothing();

    TextLines m_text;
    std::string m_delimiter;
    std::shared_ptr<const std::vector<qint32>> m_firstLines; ///< of each row, and the end; null where a row is a line
    qint32 m_rowCount = 0;
    bool m_isPlain = true;
    bool m_endsInQuotes = false; ///< the last row reaches to the end of the text, line ends included
};

/// The text without its carriage returns where some stand within quotes, for files that are read as text: a line break
/// in a field is the same however the file ends its lines.
[[nodiscard]] TextLines withoutQuotedReturns(const TextLines &text, const CancelFlag &cancel = {});

} // namespace velmora

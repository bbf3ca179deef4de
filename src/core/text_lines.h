#pragma once

#include "core/cancel_flag.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <string_view>
#include <vector>

namespace velmora {

struct ByteCounts;

/// The bytes that end one line.
enum class LineEnd : quint8 {
    None, ///< the last line only
    Lf,
    CrLf,
    Cr, ///< the last line only: a carriage return that no line feed follows
};

/// The bytes that `end` stands for.
[[nodiscard]] std::string_view lineEndBytes(LineEnd end) noexcept;

/// A text cut into lines: immutable, cheap to copy (the bytes and the line table are shared), usable from any thread.
///
/// The text is UTF-8 without a byte-order mark. A line ends at a line feed or at the end of the text; neither the line
/// feed nor one carriage return before that end belongs to the line. A line feed at the very end of the text opens no
/// further line, and an empty text has no lines. Indices are 0-based; sizes and offsets count bytes. Costs 4 bytes a
/// line beside the text.
class TextLines {
public:
    /// The largest text that fits the 32-bit offsets of the line table.
    static constexpr qsizetype maximumSize = 0xFFFF'FFFE;

    TextLines() = default;

    /// Cuts `utf8`, from byte `begin` on, into lines; the bytes before `begin` (a mark) stay out of the text.
    /// Preconditions: the rest is valid UTF-8 and at most `maximumSize` bytes. When `cancel` is set on the way, what
    /// was cut so far is returned.
    [[nodiscard]] static TextLines split(const QByteArray &utf8, qsizetype begin = 0, const CancelFlag &cancel = {});

    /// The same for a caller that wants to know the counts of the bytes from `begin` on, too.
    [[nodiscard]] static TextLines splitCounting(const QByteArray &utf8, qsizetype begin, ByteCounts &counts,
                                                 const CancelFlag &cancel);

    /// The same for a caller that has counted the bytes from `begin` on already.
    [[nodiscard]] static TextLines split(const QByteArray &utf8, qsizetype begin, const ByteCounts &counts,
                                         const CancelFlag &cancel);

    [[nodiscard]] qsizetype count() const noexcept { return m_table ? qsizetype(m_table->size()) - 1 : 0; }
    [[nodiscard]] bool isEmpty() const noexcept { return count() == 0; }

    /// The bytes of line `index`, valid as long as a copy of this object lives. Precondition: 0 <= index < count().
    [[nodiscard]] std::string_view line(qsizetype index) const noexcept
    {
        std::string_view line = lineWithEnd(index);
        if (line.ends_with('\n'))
            line.remove_suffix(1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        return line;
    }
    [[nodiscard]] LineEnd lineEnd(qsizetype index) const noexcept;
    [[nodiscard]] QString text(qsizetype index) const;

    /// True when every byte of the text is below 0x80, so that bytes, code points and UTF-16 units are the same.
    [[nodiscard]] bool isAscii() const noexcept { return m_ascii; }

    /// All bytes of the text, line ends included.
    [[nodiscard]] std::string_view bytes() const noexcept;

    /// The line that holds the byte at `offset` of `bytes()`. Precondition: 0 <= offset < bytes().size().
    [[nodiscard]] qsizetype lineAt(qsizetype offset) const noexcept;

private:
    friend class TextLinesBuilder;

    /// Where each line starts in the bytes, and behind the last one where the text ends.
    using Table = std::vector<quint32>;

    TextLines(const QByteArray &bytes, std::shared_ptr<const Table> table, bool ascii)
        : m_bytes(bytes),
          m_table(std::move(table)),
          m_text(m_bytes.constData()),
          m_starts(m_table->data()),
          m_ascii(ascii)
    {}

    [[nodiscard]] std::string_view lineWithEnd(qsizetype index) const noexcept
    {
        const quint32 begin = m_starts[index];
        return {m_text + begin, m_starts[index + 1] - begin};
    }

    QByteArray m_bytes;
    std::shared_ptr<const Table> m_table;
    // Into the two above, which no copy ever changes: each line costs one step less.
    const char *m_text = nullptr;
    const quint32 *m_starts = nullptr;
    bool m_ascii = true;
};

/// Puts a text together line by line, for texts that are not the bytes of a file as they stand.
///
/// A line may hold line feeds; it stays one line. Used by one thread.
class TextLinesBuilder {
public:
    void reserve(qsizetype bytes, qsizetype lines);

    /// Precondition: `line` is valid UTF-8 and the text stays below `TextLines::maximumSize`.
    void append(std::string_view line, LineEnd end);
    /// The same for the first line, whose memory is taken over: not copied where it has room for the line's end.
    void appendFirst(QByteArray &&line, LineEnd end);

    /// The text so far; the builder is empty afterwards.
    [[nodiscard]] TextLines take();

private:
    QByteArray m_bytes;
    std::vector<quint32> m_table{0};
};

} // namespace velmora

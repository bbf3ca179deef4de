#include "filetypes/table/engine/table_text.h"

#include "core/utf8_text.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr qsizetype linesPerLook = 16384;

bool has(std::string_view text, char byte) noexcept
{
    return text.find(byte) != std::string_view::npos;
}

/// True for a carriage return that ends no line.
bool hasInnerReturn(const TextLines &text)
{
    if (!has(text.bytes(), '\r'))
        return false;
    for (qsizetype line = 0; line < text.count(); ++line) {
        if (has(text.line(line), '\r'))
            return true;
    }
    return false;
}

} // namespace

TableText::TableText(const TextLines &text, QChar delimiter, const CancelFlag &cancel)
    : m_text(text), m_delimiter(QString(delimiter).toStdString()), m_rowCount(qint32(text.count()))
{
    const bool quoted = has(text.bytes(), '"');
    m_isPlain = !quoted && !hasInnerReturn(text);
    if (quoted)
        findRows(cancel);
    dropNothing();
}

/// A row ends at a line feed with an even number of quotation marks before it: a doubled one counts twice.
void TableText::findRows(const CancelFlag &cancel)
{
    std::vector<qint32> firstLines;
    bool inQuotes = false;
    for (qsizetype line = 0; line < m_text.count(); ++line) {
        if (line % linesPerLook == 0 && cancel.isCancelled())
            break;
        if (!inQuotes)
            firstLines.push_back(qint32(line));
        const std::string_view bytes = m_text.line(line);
        inQuotes = inQuotes != (std::count(bytes.begin(), bytes.end(), '"') % 2 != 0);
    }
    m_endsInQuotes = inQuotes;
    m_rowCount = qint32(firstLines.size());
    if (m_rowCount == m_text.count())
        return;
    firstLines.push_back(qint32(m_text.count()));
    firstLines.shrink_to_fit();
    m_firstLines = std::make_shared<const std::vector<qint32>>(std::move(firstLines));
}

/// What follows the last line feed is a row only if there is something in it.
void TableText::dropNothing()
{
    if (m_rowCount == 0 || (!m_endsInQuotes && m_text.bytes().ends_with('\n')))
        return;
    FieldCursor cursor = fields(m_rowCount - 1);
    std::string buffer;
    static_cast<void>(cursor.next());
    if (fieldValue(cursor.field(), buffer).empty() && !cursor.next())
        --m_rowCount;
}

std::string_view TableText::row(qint32 index) const noexcept
{
    const qint32 first = m_firstLines ? (*m_firstLines)[size_t(index)] : index;
    const qint32 next = m_firstLines ? (*m_firstLines)[size_t(index) + 1] : index + 1;
    const char *begin = m_text.line(first).data();
    if (next == m_text.count() && m_endsInQuotes) {
        const std::string_view all = m_text.bytes();
        return {begin, size_t(all.data() + all.size() - begin)};
    }
    const std::string_view last = m_text.line(next - 1);
    return {begin, size_t(last.data() + last.size() - begin)};
}

QString TableText::value(qint32 row, qint32 column) const
{
    FieldCursor cursor = fields(row);
    for (qint32 at = 0; at <= column; ++at) {
        if (!cursor.next())
            return {};
    }
    std::string buffer;
    return textOfUtf8(fieldValue(cursor.field(), buffer));
}

qint32 TableText::mostFields(const CancelFlag &cancel) const
{
    qint32 most = 0;
    for (qint32 row = 0; row < m_rowCount; ++row) {
        if (row % linesPerLook == 0 && cancel.isCancelled())
            break;
        qint32 count = 0;
        for (FieldCursor cursor = fields(row); cursor.next();)
            ++count;
        most = std::max(most, count);
    }
    return most;
}

TextLines withoutQuotedReturns(const TextLines &text, const CancelFlag &cancel)
{
    const std::string_view bytes = text.bytes();
    if (!has(bytes, '"') || !has(bytes, '\r'))
        return text;
    QByteArray kept(qsizetype(bytes.size()), Qt::Uninitialized);
    const char *const end = std::remove_copy(bytes.begin(), bytes.end(), kept.data(), '\r');
    kept.truncate(end - kept.constData());
    return TextLines::split(kept, 0, cancel);
}

} // namespace velmora

#pragma once

#include "text/view/diff_document.h"

#include <QByteArray>
#include <QList>

#include <atomic>

namespace velmora::test {

/// Rows that pair line k with line k: '=' equal, '~' modified; '+' and '-' have one line.
inline QList<AlignedRow> rowsOf(const QByteArray &picture)
{
    QList<AlignedRow> rows;
    qint32 left = 0;
    qint32 right = 0;
    for (const char sign : picture) {
        if (sign == '+')
            rows.append({Added, -1, ++right});
        else if (sign == '-')
            rows.append({Removed, ++left, -1});
        else
            rows.append({sign == '~' ? Modified : Equal, ++left, ++right});
    }
    return rows;
}

inline std::shared_ptr<const LineSource> sourceOf(const QByteArray &text)
{
    return std::make_shared<TextLinesSource>(TextLines::split(text));
}

inline std::shared_ptr<const DiffDocument> documentOf(const QByteArray &picture, const QByteArray &left,
                                                      const QByteArray &right)
{
    return std::make_shared<DiffDocument>(rowsOf(picture), sourceOf(left), sourceOf(right));
}

/// Counts how often lines are asked for.
class CountingSource final : public LineSource {
public:
    explicit CountingSource(const QByteArray &text) : m_lines(TextLines::split(text)) {}

    [[nodiscard]] qsizetype count() const override { return m_lines.count(); }
    [[nodiscard]] std::string_view bytes(qsizetype line) const override
    {
        ++fetched;
        return m_lines.line(line);
    }

    mutable std::atomic<qint64> fetched = 0;

private:
    TextLines m_lines;
};

} // namespace velmora::test

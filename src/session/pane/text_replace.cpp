#include "session/pane/text_replace.h"

namespace velmora {

namespace {

constexpr qsizetype linesPerReport = 4096;

/// The line with its replacements, and how many there are: -1 where the expression gave up.
qint64 replaceIn(const QString &line, const QRegularExpression &expression, const SearchQuery &query,
                 const QString &with, const CancelFlag &cancel, QString &result)
{
    qint64 count = 0;
    qsizetype end = 0;
    auto found = expression.globalMatch(line);
    while (found.hasNext() && !cancel.isCancelled() && result.size() < ReplacedText::mostBytes) {
        const QRegularExpressionMatch match = found.next();
        if (match.capturedLength() == 0)
            continue;
        result += QStringView(line).mid(end, match.capturedStart() - end);
        result += replacementFor(match, query, with);
        end = match.capturedEnd();
        ++count;
    }
    result += QStringView(line).mid(end);
    return found.isValid() ? count : -1;
}

/// Takes new and old lines together; nothing before the first new one.
class ReplacedLines {
public:
    ReplacedLines(const EditSnapshot &text, ReplacedText &result) : m_text(text), m_result(result) {}

    void keep(qsizetype line)
    {
        if (m_begun)
            append(m_text.bytes(line), m_text.lineEnd(line));
    }

    void put(qsizetype line, const QString &text)
    {
        if (!m_begun) {
            m_begun = true;
            m_result.first = line;
            m_result.removed = m_text.count() - line;
        }
        const QStringList parts = text.split(u'\n');
        for (qsizetype k = 0; k < parts.size(); ++k) {
            const QByteArray part = parts.at(k).toUtf8();
            const bool isLast = k + 1 == parts.size();
            append({part.constData(), std::size_t(part.size())}, isLast ? m_text.lineEnd(line) : usualEnd(line));
        }
    }

    [[nodiscard]] bool isTooLong() const noexcept { return m_bytes > ReplacedText::mostBytes; }
    [[nodiscard]] TextLines take() { return m_builder.take(); }

private:
    [[nodiscard]] LineEnd usualEnd(qsizetype line) const
    {
        for (const qsizetype near : {line, line - 1}) {
            if (near >= 0 && (m_text.lineEnd(near) == LineEnd::Lf || m_text.lineEnd(near) == LineEnd::CrLf))
                return m_text.lineEnd(near);
        }
        return LineEnd::Lf;
    }

    void append(std::string_view line, LineEnd end)
    {
        m_bytes += qsizetype(line.size()) + 2;
        m_builder.append(line, end);
    }

    const EditSnapshot &m_text;
    ReplacedText &m_result;
    TextLinesBuilder m_builder;
    qsizetype m_bytes = 0;
    bool m_begun = false;
};

} // namespace

QString replacementFor(const QRegularExpressionMatch &match, const SearchQuery &query, const QString &with)
{
    if (!query.isExpression)
        return with;
    QString text;
    for (qsizetype at = 0; at < with.size(); ++at) {
        const QChar sign = with.at(at);
        const QChar next = at + 1 < with.size() ? with.at(at + 1) : QChar();
        const bool isGroup = next >= u'0' && next <= u'9';
        if ((sign != u'\\' && sign != u'$') || next.isNull() || (sign == u'$' && !isGroup)) {
            text += sign;
            continue;
        }
        ++at;
        if (isGroup)
            text += match.captured(next.digitValue());
        else
            text += next == u'n' ? QChar(u'\n') : next == u't' ? QChar(u'\t') : next;
    }
    return text;
}

ReplacedText replaceMatches(const EditSnapshot &text, const SearchQuery &query, const QString &with,
                            const CancelFlag &cancel, Progress &progress)
{
    ReplacedText result;
    const QRegularExpression expression = query.expression();
    if (query.text.isEmpty() || !expression.isValid())
        return result;
    ReplacedLines lines(text, result);
    for (qsizetype line = 0; line < text.count() && !cancel.isCancelled(); ++line) {
        if (line % linesPerReport == 0)
            progress.report(0, line, text.count());
        QString replaced;
        const qint64 count = replaceIn(text.text(line), expression, query, with, cancel, replaced);
        if (count > 0)
            lines.put(line, replaced);
        else
            lines.keep(line);
        result.matches += std::max<qint64>(count, 0);
        result.linesGivenUp += count < 0 ? 1 : 0;
        if (lines.isTooLong()) {
            result = {};
            result.tooLong = true;
            return result;
        }
    }
    result.lines = lines.take();
    return result;
}

} // namespace velmora

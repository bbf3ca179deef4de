#include "session/pane/text_search.h"

#include "core/bounded_expression.h"

#include <algorithm>

namespace velmora {

namespace {

TextPosition placeOf(const TextMatch &match)
{
    return {match.row, match.unit};
}

/// False when the expression gave up before the end of the line.
bool appendMatches(std::vector<TextMatch> &matches, const QRegularExpression &expression, const QString &text,
                   qint32 row, const CancelFlag &cancel)
{
    auto found = expression.globalMatch(text);
    while (found.hasNext() && matches.size() < TextMatches::most && !cancel.isCancelled()) {
        const QRegularExpressionMatch match = found.next();
        if (match.capturedLength() > 0)
            matches.push_back({row, qint32(match.capturedStart()), qint32(match.capturedLength())});
    }
    return found.isValid();
}

/// Looks for plain text without the cost of an expression.
bool appendMatches(std::vector<TextMatch> &matches, const QStringMatcher &matcher, const QString &text, qint32 row,
                   const CancelFlag & /*cancel*/)
{
    const auto length = qint32(matcher.pattern().size());
    for (qsizetype at = matcher.indexIn(text); at >= 0 && matches.size() < TextMatches::most;
         at = matcher.indexIn(text, at + length))
        matches.push_back({row, qint32(at), length});
    return true;
}

template <typename Matcher>
TextMatches collect(const PaneDocument &document, const Matcher &matcher, const CancelFlag &cancel)
{
    TextMatches matches;
    matches.panes.resize(std::size_t(document.paneCount()));
    for (qsizetype row = 0; row < document.rowCount() && !cancel.isCancelled(); ++row) {
        for (int pane = 0; pane < document.paneCount(); ++pane) {
            const PaneDocument::Cell cell = document.cell(row, pane);
            if (!cell.own)
                continue;
            auto &found = matches.panes[std::size_t(pane)];
            if (!appendMatches(found, matcher, cell.source->text(cell.line), qint32(row), cancel))
                ++matches.linesGivenUp;
        }
    }
    return matches;
}

} // namespace

QRegularExpression SearchQuery::expression() const
{
    QString pattern = isExpression ? text : QRegularExpression::escape(text);
    if (wholeWords)
        pattern = QStringLiteral("\\b(?:%1)\\b").arg(pattern);
    QRegularExpression::PatternOptions options = QRegularExpression::UseUnicodePropertiesOption;
    if (!matchCase)
        options |= QRegularExpression::CaseInsensitiveOption;
    return boundedExpression(pattern, options);
}

const std::vector<TextMatch> &TextMatches::of(PaneIndex pane) const
{
    static const std::vector<TextMatch> none;
    const auto number = std::size_t(pane.number());
    return number < panes.size() ? panes[number] : none;
}

TextMatches findMatches(const PaneDocument &document, const SearchQuery &query, const CancelFlag &cancel)
{
    if (query.text.isEmpty())
        return {};
    if (!query.isExpression && !query.wholeWords) {
        const auto sensitivity = query.matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
        return collect(document, QStringMatcher(query.text, sensitivity), cancel);
    }
    const QRegularExpression expression = query.expression();
    return expression.isValid() ? collect(document, expression, cancel) : TextMatches();
}

TextSearch::TextSearch(QObject *parent) : QObject(parent) {}

void TextSearch::setDocument(std::shared_ptr<const PaneDocument> document)
{
    m_document = std::move(document);
    start();
}

void TextSearch::setQuery(const SearchQuery &query)
{
    if (query == m_query)
        return;
    m_query = query;
    start();
}

void TextSearch::start()
{
    m_runner.abandon();
    m_matches = {};
    if (m_document && !m_query.text.isEmpty()) {
        m_runner.start([document = m_document, query = m_query](
                           const CancelFlag &cancel, Progress &) { return findMatches(*document, query, cancel); },
                       [this](RunOutcome<TextMatches> &&outcome) {
                           if (outcome.value)
                               m_matches = std::move(*outcome.value);
                           Q_EMIT changed();
                       });
    }
    Q_EMIT changed();
}

std::span<const TextMatch> TextSearch::matchesIn(qsizetype row, PaneIndex pane) const
{
    const auto &matches = m_matches.of(pane);
    const auto byRow = [](const TextMatch &match, qsizetype r) { return match.row < r; };
    const auto first = std::lower_bound(matches.begin(), matches.end(), row, byRow);
    const auto end = std::lower_bound(first, matches.end(), row + 1, byRow);
    return {first, end};
}

qsizetype TextSearch::firstFrom(PaneIndex pane, TextPosition from) const
{
    const auto &matches = m_matches.of(pane);
    return std::partition_point(matches.begin(), matches.end(),
                                [from](const TextMatch &match) { return placeOf(match) < from; }) -
           matches.begin();
}

} // namespace velmora

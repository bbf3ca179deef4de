#pragma once

#include "core/runner.h"
#include "session/pane/pane_document.h"
#include "session/pane/text_caret.h"

#include <QObject>
#include <QRegularExpression>

#include <memory>
#include <span>
#include <vector>

namespace velmora {

/// What is looked for in the lines of a text. A match never reaches beyond its line.
struct SearchQuery {
    QString text;
    bool matchCase = false;
    bool wholeWords = false;
    bool isExpression = false; ///< `text` is a regular expression

    /// The expression that finds it, a bounded one; invalid when `text` is no valid one.
    [[nodiscard]] QRegularExpression expression() const;

    friend bool operator==(const SearchQuery &, const SearchQuery &) = default;
};

/// One place where a query was found.
struct TextMatch {
    qint32 row = 0;    ///< 0-based in the document
    qint32 unit = 0;   ///< UTF-16 code units before it in its line
    qint32 length = 0; ///< units, at least one

    friend bool operator==(const TextMatch &, const TextMatch &) = default;
};

/// The matches of each pane, ordered by place.
struct TextMatches {
    /// No more than so many are collected in a pane.
    static constexpr std::size_t most = 1'000'000;

    std::vector<std::vector<TextMatch>> panes;
    qint64 linesGivenUp = 0; ///< lines whose matches are not all known: the expression is too slow there

    [[nodiscard]] const std::vector<TextMatch> &of(PaneIndex pane) const;
};

/// Finds `query` in the lines that the rows of `document` have in each pane. Usable from any thread; incomplete when
/// cancelled. An invalid or empty query finds nothing.
[[nodiscard]] TextMatches findMatches(const PaneDocument &document, const SearchQuery &query,
                                      const CancelFlag &cancel = {});

/// The matches of one query in one document, found on a worker. Lives on the interface thread.
class TextSearch final : public QObject {
    Q_OBJECT
public:
    explicit TextSearch(QObject *parent = nullptr);

    /// Looks for the same query in another document; null for none.
    void setDocument(std::shared_ptr<const PaneDocument> document);
    /// An empty query ends the search.
    void setQuery(const SearchQuery &query);
    [[nodiscard]] const SearchQuery &query() const noexcept { return m_query; }

    /// True until all matches of the query are known.
    [[nodiscard]] bool isSearching() const { return m_runner.isRunning(); }

    [[nodiscard]] const TextMatches &matches() const noexcept { return m_matches; }
    /// The matches in `row` of `pane`.
    [[nodiscard]] std::span<const TextMatch> matchesIn(qsizetype row, PaneIndex pane) const;

    /// The number of the first match of `pane` at or behind `from`; the number of matches when there is none.
    [[nodiscard]] qsizetype firstFrom(PaneIndex pane, TextPosition from) const;

Q_SIGNALS:
    /// The matches are others than before.
    void changed();

private:
    void start();

    std::shared_ptr<const PaneDocument> m_document;
    SearchQuery m_query;
    TextMatches m_matches;
    Runner m_runner;
};

} // namespace velmora

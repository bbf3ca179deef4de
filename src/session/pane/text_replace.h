#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "session/pane/edit_buffer.h"
#include "session/pane/text_search.h"

#include <QString>

namespace velmora {

/// What stands in the place of a match. For a query that is an expression, `\1` to `\9` and `$1` to `$9` stand for its
/// groups, `\0` and `$0` for the whole, `\n` for a line feed and `\t` for a tabulator; a backslash before anything
/// else stands for that.
[[nodiscard]] QString replacementFor(const QRegularExpressionMatch &match, const SearchQuery &query,
                                     const QString &with);

/// A text with replacements: the lines from `first` to the end, in the place of `removed` lines.
struct ReplacedText {
    TextLines lines;
    qsizetype first = 0; ///< 0-based
    qsizetype removed = 0;
    qint64 matches = 0;
    qint64 linesGivenUp = 0; ///< lines that stay as they are: the expression is too slow there
    bool tooLong = false;    ///< nothing was replaced: the text would have more than `mostBytes`

    static constexpr qsizetype mostBytes = 1'000'000'000;
};

/// Replaces each match of `query` in the lines of `text`; a match never reaches beyond its line. A line feed in the
/// replacement parts a line, with the end that is usual there. Runs on any thread; incomplete when cancelled. Progress
/// counts lines in phase 0.
[[nodiscard]] ReplacedText replaceMatches(const EditSnapshot &text, const SearchQuery &query, const QString &with,
                                          const CancelFlag &cancel, Progress &progress);

} // namespace velmora

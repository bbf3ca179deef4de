#pragma once

#include "core/cancel_flag.h"
#include "text/syntax/syntax_state.h"

#include <QString>

#include <functional>
#include <limits>
#include <string_view>
#include <vector>

namespace velmora {

struct SyntaxDefinition;

/// The lines of a text: UTF-8 without line ends, indices from 0. The texts stay valid as long as this does.
struct SyntaxText {
    qsizetype count = 0;
    std::function<std::string_view(qsizetype line)> line;
};

/// As much of a line as colouring looks at, and a little more when there is more.
[[nodiscard]] QString colouredPart(std::string_view utf8);

/// The states before some lines of a text, close enough to each other that the state before any line is near.
///
/// Known from the start of the text on, as far as somebody asked for. After an edit, the states behind it are kept on
/// trial: finding them again takes the lines up to the first one where the state is what it was. A value, usable from
/// any thread.
class SyntaxCheckpoints {
public:
    /// Lines between two states, at most.
    static constexpr qsizetype spacing = 64;

    struct Checkpoint {
        qsizetype line = 0;
        SyntaxState state; ///< before that line
    };

    /// Knows the start of the text alone.
    SyntaxCheckpoints();

    /// The last one whose state is sure and that is not behind `line`.
    [[nodiscard]] const Checkpoint &before(qsizetype line) const;
    /// Whether the state before `line` is no more than `spacing` lines away.
    [[nodiscard]] bool reaches(qsizetype line) const { return line - before(line).line <= spacing; }

    /// Reads on until the state before `line` is near, but no more than about `bytes` bytes. Returns what it has read.
    qsizetype extend(const SyntaxDefinition &definition, const SyntaxText &text, qsizetype line,
                     qsizetype bytes = std::numeric_limits<qsizetype>::max(), const CancelFlag &cancel = {});

    /// Lines [first, first + removed) became [first, first + inserted).
    void edit(qsizetype first, qsizetype removed, qsizetype inserted);

private:
    struct Entry {
        Checkpoint checkpoint;
        bool follows = true; ///< whether the state is what the text makes of the one before
    };

    void take(qsizetype line, const SyntaxState &state);
    void findSure();

    std::vector<Entry> m_entries;
    std::size_t m_sure = 1; ///< entries from the first on whose states are sure
};

} // namespace velmora

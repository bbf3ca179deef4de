#pragma once

#include <QList>
#include <QString>

namespace velmora {

/// A span of text that is open: a comment, a string, an embedded language.
struct SyntaxFrame {
    quint16 context = 0; ///< of the definition
    qint32 indent = 0;   ///< columns of the line that began a text which ends by its indentation
    QString end;         ///< what ends it, where that is not the same for every such span

    friend bool operator==(const SyntaxFrame &, const SyntaxFrame &) = default;
};

/// What a line leaves open for the next one. The first line of a text starts with nothing open.
///
/// A value, cheap to copy. Equal states of one definition colour every text alike, which is what lets colouring stop
/// behind an edit.
struct SyntaxState {
    QList<SyntaxFrame> open; ///< from the outermost on

    friend bool operator==(const SyntaxState &, const SyntaxState &) = default;
};

} // namespace velmora

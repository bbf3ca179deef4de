#pragma once

#include "text/line_pairs.h"

#include <QObject>

#include <optional>

namespace velmora {

class PaneEditor;
class DiffView;

/// Lets a person align a line of one side with a line of the other, and undo that. A command says which line: it is
/// chosen first on the one side, then on the other. Keeps the pairs right while texts are edited. Lives on the
/// interface thread.
class ManualAlignment final : public QObject {
    Q_OBJECT
public:
    /// Both outlive this object.
    ManualAlignment(DiffView &view, PaneEditor &editor, QObject *parent);

    [[nodiscard]] const LinePairs &pairs() const noexcept { return m_pairs; }
    void setPairs(const LinePairs &pairs);

    /// Chooses the line of the caret, or aligns it with the one that was chosen on the other side.
    void chooseLine();
    /// Forgets a line that was chosen; false when there is none.
    bool giveUp();
    /// Undoes the alignment of the line of the caret.
    void release();
    void releaseAll();

    /// What `chooseLine` would do now, as the text of a command.
    [[nodiscard]] QString commandText() const;
    [[nodiscard]] bool canRelease() const;

Q_SIGNALS:
    void message(const QString &text);
    /// Another comparison is due.
    void changed();

private:
    struct Chosen {
        Side side = Side::Left;
        qint32 line = 0;
    };
    /// The line of the caret, from 1; -1 without one.
    [[nodiscard]] qint32 caretLine() const;
    void showPairs();

    DiffView &m_view;
    LinePairs m_pairs;
    std::optional<Chosen> m_chosen;
};

} // namespace velmora

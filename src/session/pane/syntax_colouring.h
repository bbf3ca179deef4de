#pragma once

#include "core/runner.h"
#include "session/pane/pane_document.h"
#include "text/syntax/syntax_checkpoints.h"
#include "text/syntax/syntax_definition.h"
#include "text/syntax/syntax_scanner.h"

#include <QHash>

#include <memory>
#include <vector>

namespace velmora {

/// What the lines in sight of one text consist of.
///
/// Nothing but these lines and what leads to them from the last known state is read. What fits into a frame is
/// answered at once; a jump far ahead is left to a worker, and `arrived` says when there is more to paint. After an
/// edit, lines are read again up to where it makes no difference. Lives on the interface thread.
class SyntaxColouring final : public QObject {
    Q_OBJECT
public:
    explicit SyntaxColouring(PaneIndex pane, QObject *parent = nullptr);

    /// Another text, or none. Everything is forgotten.
    void setDocument(std::shared_ptr<const PaneDocument> document);
    /// The text after lines [first, first + removed) became [first, first + inserted).
    void takeEdit(std::shared_ptr<const PaneDocument> document, qsizetype first, qsizetype removed, qsizetype inserted);

    /// The same text in another document.
    void takeSameText(std::shared_ptr<const PaneDocument> document);

    /// How the text is coloured, null for not at all.
    void setDefinition(std::shared_ptr<const SyntaxDefinition> definition);
    [[nodiscard]] const std::shared_ptr<const SyntaxDefinition> &definition() const { return m_definition; }

    /// Starts and ends a frame: one frame costs some milliseconds at most.
    void beginFrame();
    void endFrame();
    /// The tokens of a line, 0-based; none while they are not known. Valid until the next call.
    [[nodiscard]] const std::vector<SyntaxToken> &tokensOf(qsizetype line);

Q_SIGNALS:
    void arrived();

private:
    [[nodiscard]] const ColouredLine *colour(qsizetype line);
    [[nodiscard]] SyntaxText text() const;
    void forget();
    void startWorker();

    PaneIndex m_pane;
    std::shared_ptr<const PaneDocument> m_document;
    std::shared_ptr<const SyntaxDefinition> m_definition;
    SyntaxCheckpoints m_checkpoints;
    QHash<qsizetype, ColouredLine> m_known;
    qsizetype m_budget = 0;      ///< units that the frame may still read
    qsizetype m_wanted = -1;     ///< the last line in sight that is too far from what is known
    bool m_isUnfinished = false; ///< the frame had to leave lines out
    Runner m_runner;
};

} // namespace velmora

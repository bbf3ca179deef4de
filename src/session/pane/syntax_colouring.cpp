#include "session/pane/syntax_colouring.h"

#include <QTimer>

#include <algorithm>
#include <limits>
#include <utility>

namespace velmora {

namespace {

// Reading a million units takes about ten milliseconds.
constexpr qsizetype unitsPerFrame = 128 * 1024;
// What is farther away from what is known is left to the worker altogether.
constexpr qsizetype linesAtOnce = 2000;
// More rows than the tallest screens show in the smallest font, and what leads to them, several times over.
constexpr qsizetype keptLines = 4096;
// What the worker reads beyond the lines in sight, so that scrolling on does not wait for it again.
constexpr qsizetype linesAhead = 20'000;

SyntaxText textOf(const PaneDocument &document, PaneIndex pane)
{
    const LineSource &source = document.source(pane);
    return {source.count(), [&source](qsizetype line) { return source.bytes(line); }};
}

} // namespace

SyntaxColouring::SyntaxColouring(PaneIndex pane, QObject *parent) : QObject(parent), m_pane(pane) {}

SyntaxText SyntaxColouring::text() const
{
    return textOf(*m_document, m_pane);
}

void SyntaxColouring::forget()
{
    m_runner.abandon();
    m_known.clear();
    m_wanted = -1;
}

void SyntaxColouring::setDocument(std::shared_ptr<const PaneDocument> document)
{
    forget();
    m_checkpoints = {};
    m_document = std::move(document);
}

void SyntaxColouring::takeEdit(std::shared_ptr<const PaneDocument> document, qsizetype first, qsizetype removed,
                               qsizetype inserted)
{
    m_runner.abandon();
    m_wanted = -1;
    m_document = std::move(document);
    m_checkpoints.edit(first, removed, inserted);
    m_known.removeIf([first](const QHash<qsizetype, ColouredLine>::iterator &line) { return line.key() >= first; });
}

void SyntaxColouring::takeSameText(std::shared_ptr<const PaneDocument> document)
{
    // A worker keeps the document that it reads.
    m_document = std::move(document);
}

void SyntaxColouring::setDefinition(std::shared_ptr<const SyntaxDefinition> definition)
{
    if (definition == m_definition)
        return;
    forget();
    m_checkpoints = {};
    m_definition = std::move(definition);
    Q_EMIT arrived();
}

void SyntaxColouring::beginFrame()
{
    m_budget = unitsPerFrame;
    m_isUnfinished = false;
    m_wanted = -1;
    if (m_known.size() > keptLines)
        m_known.clear();
}

const std::vector<SyntaxToken> &SyntaxColouring::tokensOf(qsizetype line)
{
    static const std::vector<SyntaxToken> none;
    if (!m_definition || !m_document || line < 0 || line >= m_document->source(m_pane).count())
        return none;
    const ColouredLine *coloured = colour(line);
    return coloured ? coloured->tokens : none;
}

const ColouredLine *SyntaxColouring::colour(qsizetype line)
{
    const auto known = m_known.constFind(line);
    if (known != m_known.constEnd())
        return &*known;
    const auto above = m_known.constFind(line - 1);
    SyntaxCheckpoints::Checkpoint from{line, {}};
    if (above != m_known.constEnd()) {
        from.state = above->end;
    } else {
        // While the worker runs, it would be in vain: what it finds takes the place of what is known here.
        if (!m_runner.isRunning() && line - m_checkpoints.before(line).line <= linesAtOnce)
            m_budget -= m_checkpoints.extend(*m_definition, text(), line, m_budget);
        if (!m_checkpoints.reaches(line)) {
            m_wanted = std::max(m_wanted, line);
            return nullptr;
        }
        from = m_checkpoints.before(line);
    }
    const SyntaxText lines = text();
    SyntaxState state = from.state;
    for (qsizetype at = from.line; at <= line; ++at) {
        const auto found = m_known.constFind(at);
        if (found != m_known.constEnd()) {
            state = found->end;
            continue;
        }
        if (m_budget <= 0) {
            m_isUnfinished = true;
            return nullptr;
        }
        const QString part = colouredPart(lines.line(at));
        m_budget -= part.size() + 1;
        state = m_known.insert(at, colourLine(*m_definition, state, part))->end;
    }
    return &*m_known.constFind(line);
}

void SyntaxColouring::endFrame()
{
    if (m_isUnfinished)
        QTimer::singleShot(0, this, &SyntaxColouring::arrived);
    if (m_wanted >= 0 && !m_runner.isRunning())
        startWorker();
}

void SyntaxColouring::startWorker()
{
    m_runner.start(
        [document = m_document, pane = m_pane, definition = m_definition, checkpoints = m_checkpoints,
         target = m_wanted + linesAhead](const CancelFlag &cancel, Progress &) mutable {
            const SyntaxText lines = textOf(*document, pane);
            checkpoints.extend(*definition, lines, std::min(target, lines.count), std::numeric_limits<qsizetype>::max(),
                               cancel);
            return checkpoints;
        },
        [this](RunOutcome<SyntaxCheckpoints> &&outcome) {
            // A run that failed for want of memory leaves its text plain rather than trying for ever.
            if (outcome.value)
                m_checkpoints = std::move(*outcome.value);
            else
                m_definition = nullptr;
            Q_EMIT arrived();
        });
}

} // namespace velmora

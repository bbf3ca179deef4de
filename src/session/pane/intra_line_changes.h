#pragma once

#include "core/runner.h"
#include "session/pane/pane_document.h"
#include "text/engine/line_marks.h"

#include <QHash>

#include <memory>

namespace velmora {

/// Two panes whose lines of a row are compared character by character.
struct PanePair {
    PaneIndex left = 0;
    PaneIndex right = 1;
};

/// The changed characters of one modified row, in each of two panes.
struct RowChanges {
    QList<CharRange> left;
    QList<CharRange> right;

    QList<LineMark> leftMarks = {}; ///< the same as they are shown
    QList<LineMark> rightMarks = {};
};

/// Finds the changed characters of the row's two lines by `intraLineChanges`, and which of them count under `rules`.
///
/// Lines too long for that are first relieved of what they have in common at both ends; when the rest is still too
/// long, it is matched word by word, and when it is longer than anybody reads, it is one change; of such lines all
/// changes count. Usable from any thread; empty when cancelled.
[[nodiscard]] RowChanges findRowChanges(const PaneDocument &document, qsizetype row, const PanePair &panes = {},
                                        const KeyRules &rules = {}, const CancelFlag &cancel = {});

/// The units of a line at which changes begin, in increasing order, from the changed characters of its `own` and those
/// of the `other` line: also where the line itself has nothing.
[[nodiscard]] QList<qint32> changeStarts(const QList<CharRange> &own, const QList<CharRange> &other);

/// Keeps the changed characters, between two panes, of the modified rows that were in sight.
///
/// Short rows are answered at once, as many as fit into one frame; the others are worked out on a worker, for the rows
/// of the latest frame only, and `arrived` says when there is more to paint. Lives on the interface thread.
class IntraLineChanges final : public QObject {
    Q_OBJECT
public:
    explicit IntraLineChanges(const PanePair &panes = {}, QObject *parent = nullptr);

    [[nodiscard]] const PanePair &panes() const noexcept { return m_panes; }
    [[nodiscard]] bool concerns(PaneIndex pane) const { return pane == m_panes.left || pane == m_panes.right; }
    /// What concerns one of the two panes.
    [[nodiscard]] const QList<CharRange> &changesIn(const RowChanges &changes, PaneIndex pane) const
    {
        return pane == m_panes.left ? changes.left : changes.right;
    }
    [[nodiscard]] const QList<LineMark> &marksIn(const RowChanges &changes, PaneIndex pane) const
    {
        return pane == m_panes.left ? changes.leftMarks : changes.rightMarks;
    }

    /// By which rules changes count or not, from the next document on.
    void setRules(const KeyRules &rules) { m_rules = rules; }

    /// Forgets everything. Null when there is nothing to show.
    void setDocument(std::shared_ptr<const PaneDocument> document);

    /// Starts a frame that shows rows from `first` to `last`: other rows that nobody has begun are forgotten.
    void beginFrame(qsizetype first, qsizetype last);
    /// The changes of `row`, which is `Modified`; null while they are not known. Valid until the next call.
    [[nodiscard]] const RowChanges *changesOf(qsizetype row);
    /// Ends a frame: the worker gets the rows that had no answer.
    void endFrame();

Q_SIGNALS:
    void arrived();

private:
    using Answers = QHash<qsizetype, RowChanges>;

    void startWorker();

    const PanePair m_panes;
    std::shared_ptr<const PaneDocument> m_document;
    KeyRules m_rules;
    Answers m_known;
    QList<qsizetype> m_waiting; ///< rows in sight that were asked for and not yet begun
    QList<qsizetype> m_begun;   ///< rows the worker is at
    qint64 m_frameCost = 0;
    Runner m_runner;
};

} // namespace velmora

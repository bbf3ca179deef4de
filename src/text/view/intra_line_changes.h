#pragma once

#include "core/runner.h"
#include "text/engine/line_marks.h"
#include "text/view/diff_document.h"

#include <QHash>

#include <memory>

namespace velmora {

/// The changed characters of one modified row, on each side.
struct RowChanges {
    QList<CharRange> left;
    QList<CharRange> right;

    QList<LineMark> leftMarks = {}; ///< the same as they are shown
    QList<LineMark> rightMarks = {};

    [[nodiscard]] const QList<CharRange> &of(Side side) const { return side == Side::Left ? left : right; }
    [[nodiscard]] const QList<LineMark> &marksOf(Side side) const
    {
        return side == Side::Left ? leftMarks : rightMarks;
    }
};

/// Finds the changed characters of the row's two lines by `intraLineChanges`, and which of them count under `rules`.
///
/// Lines too long for that are first relieved of what they have in common at both ends; when the rest is still too
/// long, it is matched word by word, and when it is longer than anybody reads, it is one change; of such lines all
/// changes count. Usable from any thread; empty when cancelled.
[[nodiscard]] RowChanges findRowChanges(const DiffDocument &document, qsizetype row, const KeyRules &rules = {},
                                        const CancelFlag &cancel = {});

/// The units of the line of `side` at which changes begin, in increasing order: also those of which this side has
/// nothing.
[[nodiscard]] QList<qint32> changeStarts(const RowChanges &changes, Side side);

/// Keeps the changed characters of the modified rows that were in sight.
///
/// Short rows are answered at once, as many as fit into one frame; the others are worked out on a worker, for the rows
/// of the latest frame only, and `arrived` says when there is more to paint. Lives on the interface thread.
class IntraLineChanges final : public QObject {
    Q_OBJECT
public:
    explicit IntraLineChanges(QObject *parent = nullptr);

    /// By which rules changes count or not, from the next document on.
    void setRules(const KeyRules &rules) { m_rules = rules; }

    /// Forgets everything. Null when there is nothing to show.
    void setDocument(std::shared_ptr<const DiffDocument> document);

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

    std::shared_ptr<const DiffDocument> m_document;
    KeyRules m_rules;
    Answers m_known;
    QList<qsizetype> m_waiting; ///< rows in sight that were asked for and not yet begun
    QList<qsizetype> m_begun;   ///< rows the worker is at
    qint64 m_frameCost = 0;
    Runner m_runner;
};

} // namespace velmora

#pragma once

#include "text/engine/line_diff_engine.h"
#include "text/engine/line_normalizer.h"

namespace velmora {

/// A part of a changed line as it is shown to a person.
struct LineMark {
    qint32 start = 0; ///< in UTF-16 code units
    qint32 length = 0;
    bool minor = false; ///< differs only in what the rules ignore

    [[nodiscard]] qint32 end() const noexcept { return start + length; }
    friend bool operator==(const LineMark &, const LineMark &) = default;
};

/// What to mark in `own` against `other`: `changes`, which are `intraLineChanges(other, own)`, told apart by whether
/// they count under `rules`, and joined where two of them are parts of one word with one or two characters between. In
/// order; empty when cancelled.
[[nodiscard]] QList<LineMark> lineMarks(QStringView own, const QList<CharRange> &changes, QStringView other,
                                        const KeyRules &rules, const CancelFlag &cancel = {});

} // namespace velmora

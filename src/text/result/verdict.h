#pragma once

#include "text/text_compare_job.h"

#include <QString>
#include <QStringList>

namespace velmora {

/// What a comparison has found, beside the texts themselves.
struct Findings {
    DiffCounts rows;
    LineEndCounts lineEnds;
    qint64 unimportantRows = 0; ///< equal rows of different texts: they differ in nothing but what the rules ignore
    qint64 reindentedRows = 0;  ///< those of them whose lines begin with different white space
};

/// Looks at the unimportant rows' texts.
[[nodiscard]] Findings findingsOf(const DiffDocument &document);

/// What is to be said of a result above its texts, and the way on that goes with it.
struct Verdict {
    enum class Offer { None, CountUnimportant, IgnoreUnimportant };

    QString text; ///< empty for nothing
    Offer offer = Offer::None;
    bool warns = false; ///< a person could take the texts for equal, which they are not
};

/// How unimportant differences are taken, and in what file type.
struct VerdictScope {
    bool countsUnimportant = false;
    QString indentedType; ///< the name of the texts' file type where indentation has meaning in it, else empty
};

[[nodiscard]] Verdict judge(const Findings &findings, const LoadedText &left, const LoadedText &right,
                            const TextSessionOptions &options, const VerdictScope &scope);

/// What `options` ignore, as a list in words; empty when every character counts.
[[nodiscard]] QString describeIgnored(const TextSessionOptions &options);

/// What of the line ends differs, a sentence each.
[[nodiscard]] QStringList describeLineEnds(const LineEndCounts &counts);

/// The line at the foot: the counts of rows, and what differs beside them.
[[nodiscard]] QString describeCounts(const Findings &findings, bool countsUnimportant);

} // namespace velmora

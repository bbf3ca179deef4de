#include "text/engine/line_diff_engine.h"
#include "text/engine/sequence_matcher.h"

#include <vector>

namespace velmora {

QList<CharRange> intraLineChanges(QStringView a, QStringView b, const CancelFlag &cancel)
{
    const std::vector<qint32> first(a.utf16(), a.utf16() + a.size());
    const std::vector<qint32> second(b.utf16(), b.utf16() + b.size());
    const std::vector<MatchPair> pairs = matchSequences(first, second, characterTableLimit, cancel);
    if (cancel.isCancelled())
        return {};

    QList<CharRange> ranges;
    qint32 unmatched = 0;
    const auto closeAt = [&](qint32 position) {
        if (position > unmatched)
            ranges.append({unmatched, position - unmatched});
        unmatched = position + 1;
    };
    for (const MatchPair &pair : pairs)
        closeAt(pair.j);
    closeAt(qint32(b.size()));
    return ranges;
}

} // namespace velmora

#include "session/pane/line_inks.h"

#include <algorithm>

namespace velmora {

namespace {

/// Puts `tint` over those it overlaps.
void cover(std::vector<Tint> &tints, const Tint &tint)
{
    std::vector<Tint> covered;
    covered.reserve(tints.size() + 2);
    for (const Tint &below : tints) {
        if (below.first < tint.first)
            covered.push_back({below.first, std::min(below.end, tint.first), below.colour});
    }
    covered.push_back(tint);
    for (const Tint &below : tints) {
        if (below.end > tint.end)
            covered.push_back({std::max(below.first, tint.end), below.end, below.colour});
    }
    tints = std::move(covered);
}

} // namespace

std::vector<Tint> tintsIn(const LineInks &inks, qsizetype first, qsizetype end)
{
    std::vector<Tint> tints;
    if (first >= end)
        return tints;
    auto token = std::partition_point(inks.tokens.begin(), inks.tokens.end(),
                                      [first](const SyntaxToken &at) { return at.start + at.length <= first; });
    for (; token != inks.tokens.end() && token->start < end; ++token) {
        const QColor &ink = (*inks.ofRoles)[std::size_t(token->role)];
        if (ink.isValid())
            tints.push_back({std::max(token->start, first), std::min(token->start + token->length, end), ink});
    }
    for (const Tint &over : inks.over) {
        const Tint part{std::max(over.first, first), std::min(over.end, end), over.colour};
        if (part.first < part.end)
            cover(tints, part);
    }
    return tints;
}

} // namespace velmora

#include "folder/operations/place_look.h"

#include <algorithm>

namespace velmora {

FoundEntry PlaceLook::entryAt(const Place &place)
{
    const qsizetype slash = place.relative.lastIndexOf(u'/');
    const Place folder{place.root, place.relative.left(std::max<qsizetype>(slash, 0))};
    if (!m_reached.folder || !(folder == m_folder)) {
        m_reached = m_chain.reach(place);
        m_folder = folder;
    }
    if (!m_reached.folder)
        return m_reached.error.kind == FileErrorKind::Missing ? FoundEntry() : FoundEntry{false, {}, m_reached.error};
    const NodeResult found = m_reached.folder->stat(place.relative.mid(slash + 1));
    if (!found.error.isError())
        return {true, found.node, {}};
    return found.error.kind == FileErrorKind::Missing ? FoundEntry() : FoundEntry{false, {}, found.error};
}

std::optional<NodeState> PlaceLook::at(const Place &place)
{
    if (!place.isSet() || place.relative.isEmpty())
        return std::nullopt;
    const FoundEntry found = entryAt(place);
    return found.isThere ? std::optional(found.node) : std::nullopt;
}

Place PlaceLook::linkOnTheWay(const Place &place) const
{
    for (qsizetype slash = place.relative.indexOf(u'/'); slash > 0; slash = place.relative.indexOf(u'/', slash + 1)) {
        const Place folder{place.root, place.relative.left(slash)};
        const ReachedPlace reached = m_chain.reach(folder);
        if (reached.folder && reached.folder->stat(reached.name).node.kind == NodeKind::Link)
            return folder;
    }
    return place;
}

} // namespace velmora

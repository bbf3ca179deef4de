#include "folder/operations/place_look.h"

namespace velmora {

std::optional<NodeState> PlaceLook::at(const Place &place)
{
    if (!place.isSet() || place.relative.isEmpty())
        return std::nullopt;
    const qsizetype slash = place.relative.lastIndexOf(u'/');
    const Place folder{place.root, place.relative.left(std::max<qsizetype>(slash, 0))};
    if (!m_reached.folder || !(folder == m_folder)) {
        m_reached = m_chain.reach(place);
        m_folder = folder;
    }
    const NodeResult found =
        m_reached.folder ? m_reached.folder->stat(place.relative.mid(slash + 1)) : NodeResult{{}, m_reached.error};
    return found.error.isError() ? std::nullopt : std::optional(found.node);
}

} // namespace velmora

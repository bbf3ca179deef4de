#pragma once

#include "folder/operations/operation_plan.h"

#include <QHash>
#include <QSet>

namespace velmora {

inline size_t qHash(const Place &place, size_t seed = 0)
{
    return qHash(place.relative, seed ^ size_t(place.root + 1));
}

/// Places, of which some may lie in others. Their paths are those of the steps and take no room of their own.
class PlaceSet {
public:
    void add(const Place &place) { m_places.insert(place); }
    void remove(const Place &place) { m_places.remove(place); }
    [[nodiscard]] bool contains(const Place &place) const { return m_places.contains(place); }
    [[nodiscard]] bool containsFolderOf(const Place &place) const
    {
        if (m_places.isEmpty())
            return false;
        for (qsizetype slash = place.relative.lastIndexOf(u'/'); slash > 0;
             slash = place.relative.lastIndexOf(u'/', slash - 1)) {
            if (m_places.contains({place.root, QString::fromRawData(place.relative.constData(), slash)}))
                return true;
        }
        return false;
    }

private:
    QSet<Place> m_places;
};

} // namespace velmora

#pragma once

#include "folder/operations/operation_plan.h"

#include <QSet>
#include <QStringBuilder>

namespace velmora {

/// A place as one text. Roots are few, so that a number and a path make a key.
inline QString keyOf(int root, QStringView relative)
{
    return QString(QChar(char16_t(root + 1)) % relative);
}

inline QString keyOf(const Place &place)
{
    return keyOf(place.root, place.relative);
}

/// Places, of which some may lie in others.
class PlaceSet {
public:
    void add(const Place &place) { m_keys.insert(keyOf(place)); }
    void remove(const Place &place) { m_keys.remove(keyOf(place)); }
    [[nodiscard]] bool contains(const Place &place) const { return m_keys.contains(keyOf(place)); }
    [[nodiscard]] bool containsFolderOf(const Place &place) const
    {
        for (qsizetype slash = place.relative.lastIndexOf(u'/'); slash > 0;
             slash = place.relative.lastIndexOf(u'/', slash - 1)) {
            if (m_keys.contains(keyOf(place.root, QStringView(place.relative).left(slash))))
                return true;
        }
        return false;
    }

private:
    QSet<QString> m_keys;
};

} // namespace velmora

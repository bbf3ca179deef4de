#include "session/pane/text_appearance.h"

#include "core/settings_store.h"

#include <algorithm>

namespace velmora {

namespace {

// In the store of the sessions.
constexpr QLatin1String familyKey("textView/fontFamily");
constexpr QLatin1String usualPointsKey("textView/usualFontPoints");
constexpr QLatin1String pointsKey("textView/fontPoints"); // that was last zoomed to
constexpr QLatin1String tabWidthKey("textView/tabWidth");

} // namespace

TextAppearance TextAppearance::load()
{
    const SessionSettings settings;
    const TextAppearance usual;
    TextAppearance stored;
    stored.family = settings.value(familyKey, usual.family).toString();
    stored.points = std::clamp(settings.value(usualPointsKey, usual.points).toDouble(), leastPoints, mostPoints);
    stored.tabWidth = std::clamp(settings.value(tabWidthKey, usual.tabWidth).toInt(), 1, mostTabWidth);
    return stored;
}

void TextAppearance::save() const
{
    const bool isOtherSize = points != load().points;
    SessionSettings settings;
    settings.setValue(familyKey, family);
    settings.setValue(usualPointsKey, points);
    if (isOtherSize)
        settings.setValue(pointsKey, points);
    settings.setValue(tabWidthKey, tabWidth);
}

} // namespace velmora

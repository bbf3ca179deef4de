#include "app/window/window_memory.h"

#include "core/settings_store.h"

#include <QWidget>

namespace velmora {

namespace {

constexpr QLatin1String placeKey("windowPlace");
constexpr QLatin1String panelShownKey("sessionsPanelShown");
constexpr QLatin1String panelWidthKey("sessionsPanelWidth");

} // namespace

PanelMemory PanelMemory::load()
{
    const InterfaceSettings settings;
    return {settings.value(panelShownKey, true).toBool(), settings.value(panelWidthKey, 0).toInt()};
}

void PanelMemory::save() const
{
    InterfaceSettings settings;
    settings.setValue(panelShownKey, shown);
    settings.setValue(panelWidthKey, width);
}

void rememberPlace(const QWidget &window)
{
    InterfaceSettings().setValue(placeKey, window.saveGeometry());
}

bool restorePlace(QWidget &window)
{
    return window.restoreGeometry(InterfaceSettings().value(placeKey).toByteArray());
}

} // namespace velmora

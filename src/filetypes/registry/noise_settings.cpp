#include "filetypes/registry/noise_settings.h"

#include "core/settings_store.h"

namespace velmora {

namespace {

QString keyOf(NoiseKind kind, QLatin1String what)
{
    return QStringLiteral("registryNoise/%1/%2").arg(QLatin1String(noiseName(kind)), what);
}

constexpr QLatin1String onKey("on");
constexpr QLatin1String masksKey("masks");

} // namespace

QList<NoiseProfile> storedNoiseProfiles()
{
    const SessionSettings settings;
    QList<NoiseProfile> profiles = defaultNoiseProfiles();
    for (NoiseProfile &profile : profiles) {
        profile.isOn = settings.value(keyOf(profile.kind, onKey)).toBool();
        const QVariant masks = settings.value(keyOf(profile.kind, masksKey));
        if (masks.isValid())
            profile.masks = splitMasks(masks.toString());
    }
    return profiles;
}

void storeNoiseProfiles(const QList<NoiseProfile> &profiles)
{
    SessionSettings settings;
    for (const NoiseProfile &profile : profiles) {
        settings.setValue(keyOf(profile.kind, onKey), profile.isOn);
        settings.setValue(keyOf(profile.kind, masksKey), profile.masks.join(u';'));
    }
}

} // namespace velmora

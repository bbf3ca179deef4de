#include "filetypes/registry/engine/registry_noise.h"

namespace velmora {

const char *noiseName(NoiseKind kind)
{
    static constexpr std::array<const char *, noiseKinds.size()> names{"recentLists", "windowPlaces", "counters",
                                                                       "caches", "own"};
    return names[std::size_t(kind)];
}

QList<NoiseProfile> defaultNoiseProfiles()
{
    static constexpr std::array<const char *, noiseKinds.size()> masks{
        "*\\RecentDocs\\*;*MRU\\*;*MRU*;*\\TypedURLs\\*;*\\TypedPaths\\*;*\\Recent File List\\*;*\\Recently*",
        "*\\Shell\\Bags\\*;*\\BagMRU\\*;*\\Streams\\*;*WindowPos*;*Placement*;*\\Window Position*;*WINDOWPOS*",
        "*\\UserAssist\\*;*Counter;*Count;*LastUsed*;*LastRun*;*LastWrite*;*\\SessionInfo\\*;*\\FeatureUsage\\*",
        "*\\MuiCache\\*;*\\Cache\\*;*\\Caches\\*;*Cache;*\\IconStreams;*\\PastIconsStream;*\\AppCompatCache\\*", ""};
    QList<NoiseProfile> profiles;
    for (const NoiseKind kind : noiseKinds)
        profiles.append({kind, false, splitMasks(QString::fromLatin1(masks[std::size_t(kind)]))});
    return profiles;
}

RegistryNoise::RegistryNoise(const QList<NoiseProfile> &profiles)
{
    QStringList masks;
    for (const NoiseProfile &profile : profiles) {
        if (profile.isOn)
            masks += profile.masks;
    }
    m_masks = WildcardList(masks);
}

bool RegistryNoise::holds(const QString &path, const QString &name) const
{
    return !m_masks.isEmpty() && m_masks.matches(path + u'\\' + name);
}

} // namespace velmora

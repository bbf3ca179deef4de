#pragma once

#include "core/wildcard.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>

namespace velmora {

/// What changes all the time and says nothing: the kinds of it that can be left out.
enum class NoiseKind : quint8 { RecentLists, WindowPlaces, Counters, Caches, Own };

inline constexpr std::array noiseKinds{NoiseKind::RecentLists, NoiseKind::WindowPlaces, NoiseKind::Counters,
                                       NoiseKind::Caches, NoiseKind::Own};

/// One profile of noise: masks for the path of a key, a backslash and the name of a value together. Under Own are those
/// of a person.
struct NoiseProfile {
    NoiseKind kind = NoiseKind::Own;
    bool isOn = false;
    QStringList masks;

    friend bool operator==(const NoiseProfile &, const NoiseProfile &) = default;
};

/// "recentLists" and so on: what a kind is called where profiles are stored and named on the command line.
[[nodiscard]] const char *noiseName(NoiseKind kind);

/// The profiles as they come, all of them off.
[[nodiscard]] QList<NoiseProfile> defaultNoiseProfiles();

/// Tells what is noise under the profiles that are on.
class RegistryNoise {
public:
    RegistryNoise() = default;
    explicit RegistryNoise(const QList<NoiseProfile> &profiles);

    [[nodiscard]] bool holds(const QString &path, const QString &name) const;

private:
    WildcardList m_masks;
};

} // namespace velmora

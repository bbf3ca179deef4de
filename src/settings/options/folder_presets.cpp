#include "settings/options/folder_presets.h"

#include <QtGlobal>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

constexpr std::array presets{
    FolderPreset{"@preset/folder/vm-rules", QT_TRANSLATE_NOOP("Velmora", "Date and size (rules)"), CompareMethod::Rules,
                 2},
    FolderPreset{"@preset/folder/vm-crc", QT_TRANSLATE_NOOP("Velmora", "CRC content compare"), CompareMethod::Crc,
                 std::nullopt},
    FolderPreset{"@preset/folder/vm-binary", QT_TRANSLATE_NOOP("Velmora", "Binary content compare"),
                 CompareMethod::Binary, std::nullopt},
};

constexpr std::array earlierNames{
    "@preset/folder/flibelag-rules",
    "@preset/folder/flibelag-crc",
    "@preset/folder/flibelag-binary",
};
static_assert(earlierNames.size() == presets.size());

} // namespace

std::span<const FolderPreset> folderPresets()
{
    return presets;
}

bool applyFolderPreset(const QString &name, FolderSessionOptions &options)
{
    for (std::size_t i = 0; i < presets.size(); ++i) {
        if (name != QLatin1String(presets[i].name) && name != QLatin1String(earlierNames[i]))
            continue;
        options.compareBasis = qint32(presets[i].method);
        options.timeToleranceSec = presets[i].timeToleranceSec.value_or(options.timeToleranceSec);
        return true;
    }
    return false;
}

} // namespace velmora

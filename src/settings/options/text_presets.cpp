#include "settings/options/text_presets.h"

#include "settings/options/text_session_options.h"

#include <QtGlobal>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

constexpr std::array presets{
    TextPreset{"@preset/text/vm-strict", "strict", QT_TRANSLATE_NOOP("Velmora", "Strict (all significant)"), true, true,
               true, false, false},
    TextPreset{"@preset/text/vm-ignore-whitespace", "ignore-whitespace",
               QT_TRANSLATE_NOOP("Velmora", "Ignore whitespace"), false, true, true, false, false},
    TextPreset{"@preset/text/vm-ignore-case", "ignore-case", QT_TRANSLATE_NOOP("Velmora", "Ignore case"), true, false,
               true, false, false},
    TextPreset{"@preset/text/vm-relaxed", "relaxed",
               QT_TRANSLATE_NOOP("Velmora", "Relaxed (ws, case, EOL, blank lines)"), false, false, false, true, true},
};

struct Alias {
    const char *oldName;
    const char *name;
};

constexpr std::array aliases{
    Alias{"@preset/text/flibelag-strict", "@preset/text/vm-strict"},
    Alias{"@preset/text/flibelag-ignore-whitespace", "@preset/text/vm-ignore-whitespace"},
    Alias{"@preset/text/flibelag-ignore-case", "@preset/text/vm-ignore-case"},
    Alias{"@preset/text/flibelag-relaxed", "@preset/text/vm-relaxed"},
};

QLatin1String currentName(const QString &name, const QByteArray &latin1)
{
    const auto alias = std::find_if(aliases.begin(), aliases.end(),
                                    [&](const Alias &entry) { return name == QLatin1String(entry.oldName); });
    return alias != aliases.end() ? QLatin1String(alias->name) : QLatin1String(latin1);
}

} // namespace

std::span<const TextPreset> textPresets()
{
    return presets;
}

bool applyTextPreset(const QString &name, TextSessionOptions &options)
{
    const QByteArray latin1 = name.toLatin1();
    const QLatin1String current = currentName(name, latin1);
    const auto preset = std::find_if(presets.begin(), presets.end(),
                                     [&](const TextPreset &entry) { return current == QLatin1String(entry.name); });
    if (preset == presets.end())
        return false;

    options.importantLeadingWhitespace = preset->importantWhitespace;
    options.importantEmbeddedWhitespace = preset->importantWhitespace;
    options.importantTrailingWhitespace = preset->importantWhitespace;
    options.importantEverythingElse = true;
    options.importantCharacterCase = preset->importantCharacterCase;
    options.compareLineEndings = preset->compareLineEndings;
    options.ignoreBlankLines = preset->ignoreBlankLines;
    if (preset->forgetsOrphanRule)
        options.orphanLinesAlwaysImportant = false;
    options.unimportantText.clear();

    options.alignAlgorithm = qint32(AlignAlgorithm::Standard);
    options.useNearbyMatches = true;
    options.neverAlignDifferences = false;
    deriveLegacySwitches(options);
    return true;
}

const TextPreset *matchingTextPreset(const TextSessionOptions &options)
{
    const auto preset = std::find_if(presets.begin(), presets.end(), [&options](const TextPreset &entry) {
        TextSessionOptions applied = options;
        return applyTextPreset(QLatin1String(entry.name), applied) && applied == options;
    });
    return preset != presets.end() ? &*preset : nullptr;
}

} // namespace velmora

#include "platform/live_registry.h"

namespace velmora {

namespace {

struct Root {
    QLatin1String name;
    QLatin1String shortName;
};

constexpr Root roots[] = {{QLatin1String("HKEY_CLASSES_ROOT"), QLatin1String("HKCR")},
                          {QLatin1String("HKEY_CURRENT_USER"), QLatin1String("HKCU")},
                          {QLatin1String("HKEY_LOCAL_MACHINE"), QLatin1String("HKLM")},
                          {QLatin1String("HKEY_USERS"), QLatin1String("HKU")},
                          {QLatin1String("HKEY_CURRENT_CONFIG"), QLatin1String("HKCC")}};

constexpr QLatin1String prefix32("32:");
constexpr QLatin1String prefix64("64:");

} // namespace

std::optional<LiveKey> liveKeyOf(const QString &text)
{
    QString path = text.trimmed();
    LiveKey key;
    for (const auto &[prefix, view] :
         {std::pair(prefix32, RegistryView::Bits32), std::pair(prefix64, RegistryView::Bits64)}) {
        if (path.startsWith(prefix)) {
            key.view = view;
            path = path.mid(prefix.size()).trimmed();
        }
    }
    while (path.endsWith(u'\\'))
        path.chop(1);
    const QString first = path.section(u'\\', 0, 0);
    for (const Root &root : roots) {
        if (first.compare(root.name, Qt::CaseInsensitive) != 0 &&
            first.compare(root.shortName, Qt::CaseInsensitive) != 0)
            continue;
        key.path = root.name + path.mid(first.size());
        return key;
    }
    return std::nullopt;
}

QString liveKeyText(const LiveKey &key)
{
    if (key.view == RegistryView::Own)
        return key.path;
    return (key.view == RegistryView::Bits32 ? prefix32 : prefix64) + key.path;
}

} // namespace velmora

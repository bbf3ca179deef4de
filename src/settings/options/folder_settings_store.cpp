#include "settings/options/folder_settings_store.h"

#include <QSettings>

#include <array>

namespace velmora {

namespace {

using Options = FolderSessionOptions;

const QString defaultsGroup = QStringLiteral("FolderCompare/Defaults");
const QString presetsGroup = QStringLiteral("FolderCompare/Presets");
const QString recentPathsKey = QStringLiteral("FolderCompare/RecentPaths");

struct SwitchKey {
    const char *key;
    bool Options::*member;
};
constexpr std::array switchKeys{
    SwitchKey{"leftReadOnly", &Options::leftReadOnly},     SwitchKey{"rightReadOnly", &Options::rightReadOnly},
    SwitchKey{"excludeOsFiles", &Options::excludeOsFiles}, SwitchKey{"showLogPanel", &Options::showLogPanel},
    SwitchKey{"showFilterBar", &Options::showFilterBar},   SwitchKey{"showHidden", &Options::showHidden},
};

struct MasksKey {
    const char *key;
    QStringList Options::*member;
};
constexpr std::array masksKeys{
    MasksKey{"includeFiles", &Options::includeFiles},     MasksKey{"excludeFiles", &Options::excludeFiles},
    MasksKey{"includeFolders", &Options::includeFolders}, MasksKey{"excludeFolders", &Options::excludeFolders},
    MasksKey{"otherExclude", &Options::otherExclude},
};

struct NumberKey {
    const char *key;
    qint32 Options::*member;
};
constexpr std::array numberKeys{
    NumberKey{"compareBasis", &Options::compareBasis},
    NumberKey{"timeToleranceSec", &Options::timeToleranceSec},
};

/// Enters a group of the store for as long as the object lives.
class GroupScope {
public:
    GroupScope(QSettings &settings, const QString &group) : m_settings(settings) { m_settings.beginGroup(group); }
    ~GroupScope() { m_settings.endGroup(); }
    GroupScope(const GroupScope &) = delete;
    GroupScope &operator=(const GroupScope &) = delete;

private:
    QSettings &m_settings;
};

/// A preset's name as one level of the store, where both slashes would open another one.
QString groupOfPreset(const QString &name)
{
    QString encoded = name;
    encoded.replace(u'%', QLatin1String("%25")).replace(u'/', QLatin1String("%2F"));
    encoded.replace(u'\\', QLatin1String("%5C"));
    return presetsGroup + u'/' + encoded;
}

QString presetOfGroup(const QString &group)
{
    QString name = group;
    name.replace(QLatin1String("%5C"), QLatin1String("\\")).replace(QLatin1String("%2F"), QLatin1String("/"));
    return name.replace(QLatin1String("%25"), QLatin1String("%"));
}

QString keyOf(const char *key)
{
    return QString::fromLatin1(key);
}

QString listKey(const char *list, int index, const char *field)
{
    return QLatin1String(list) + QString::number(index) + u'.' + QLatin1String(field);
}

QList<FileFormatGroup> readFormats(const QSettings &settings)
{
    if (!settings.contains(QStringLiteral("formatCount")))
        return defaultFileFormats();
    const int count = settings.value(QStringLiteral("formatCount")).toInt();
    QList<FileFormatGroup> formats;
    for (int i = 0; i < count; ++i) {
        const QString nameKey = listKey("format", i, "name");
        if (!settings.contains(nameKey))
            break; // a damaged count must not make entries
        formats.append({settings.value(nameKey).toString(), settings.value(listKey("format", i, "mask")).toString(),
                        settings.value(listKey("format", i, "on")).toBool()});
    }
    return formats;
}

QList<ManualAlignRule> readRules(const QSettings &settings)
{
    const int count = settings.value(QStringLiteral("alignCount")).toInt();
    QList<ManualAlignRule> rules;
    for (int i = 0; i < count; ++i) {
        const QString leftKey = listKey("align", i, "left");
        if (!settings.contains(leftKey))
            break;
        rules.append({settings.value(leftKey).toString(), settings.value(listKey("align", i, "right")).toString()});
    }
    return rules;
}

} // namespace

StoredFolderSet FolderSettingsStore::readSet(const QString &group) const
{
    const GroupScope scope(m_settings, group);
    StoredFolderSet set;
    set.description = m_settings.value(QStringLiteral("description")).toString();
    set.savedAt = QDateTime::fromString(m_settings.value(QStringLiteral("savedAt")).toString(), Qt::ISODate);
    Options &options = set.options;
    for (const SwitchKey &entry : switchKeys)
        options.*entry.member = m_settings.value(keyOf(entry.key), options.*entry.member).toBool();
    for (const MasksKey &entry : masksKeys)
        options.*entry.member = m_settings.value(keyOf(entry.key)).toStringList();
    for (const NumberKey &entry : numberKeys)
        options.*entry.member = m_settings.value(keyOf(entry.key), options.*entry.member).toInt();
    options.fileFormats = readFormats(m_settings);
    options.alignOverrides = readRules(m_settings);
    return set;
}

void FolderSettingsStore::writeSet(const QString &group, const StoredFolderSet &set)
{
    m_settings.remove(group); // entries of a longer list before
    const GroupScope scope(m_settings, group);
    const Options &options = set.options;
    m_settings.setValue(QStringLiteral("description"), set.description);
    m_settings.setValue(QStringLiteral("savedAt"), set.savedAt.toString(Qt::ISODate));
    for (const SwitchKey &entry : switchKeys)
        m_settings.setValue(keyOf(entry.key), options.*entry.member);
    for (const MasksKey &entry : masksKeys)
        m_settings.setValue(keyOf(entry.key), options.*entry.member);
    for (const NumberKey &entry : numberKeys)
        m_settings.setValue(keyOf(entry.key), options.*entry.member);
    m_settings.setValue(QStringLiteral("formatCount"), int(options.fileFormats.size()));
    for (int i = 0; i < options.fileFormats.size(); ++i) {
        m_settings.setValue(listKey("format", i, "name"), options.fileFormats.at(i).name);
        m_settings.setValue(listKey("format", i, "mask"), options.fileFormats.at(i).mask);
        m_settings.setValue(listKey("format", i, "on"), options.fileFormats.at(i).on);
    }
    m_settings.setValue(QStringLiteral("alignCount"), int(options.alignOverrides.size()));
    for (int i = 0; i < options.alignOverrides.size(); ++i) {
        m_settings.setValue(listKey("align", i, "left"), options.alignOverrides.at(i).left);
        m_settings.setValue(listKey("align", i, "right"), options.alignOverrides.at(i).right);
    }
}

StoredFolderSet FolderSettingsStore::defaults() const
{
    return readSet(defaultsGroup);
}

void FolderSettingsStore::setDefaults(const StoredFolderSet &set)
{
    writeSet(defaultsGroup, set);
}

QStringList FolderSettingsStore::presetNames() const
{
    const GroupScope scope(m_settings, presetsGroup);
    QStringList names;
    for (const QString &group : m_settings.childGroups())
        names.append(presetOfGroup(group));
    names.sort(Qt::CaseInsensitive);
    return names;
}

std::optional<StoredFolderSet> FolderSettingsStore::preset(const QString &name) const
{
    if (name.isEmpty() || !presetNames().contains(name))
        return std::nullopt;
    return readSet(groupOfPreset(name));
}

void FolderSettingsStore::setPreset(const QString &name, const StoredFolderSet &set)
{
    if (!name.isEmpty())
        writeSet(groupOfPreset(name), set);
}

void FolderSettingsStore::removePreset(const QString &name)
{
    if (!name.isEmpty())
        m_settings.remove(groupOfPreset(name));
}

QStringList FolderSettingsStore::recentPaths() const
{
    return m_settings.value(recentPathsKey).toStringList();
}

void FolderSettingsStore::addRecentPath(const QString &path)
{
    QStringList paths = recentPaths();
    paths.removeAll(path);
    paths.prepend(path);
    m_settings.setValue(recentPathsKey, QStringList(paths.mid(0, recentPathLimit)));
}

} // namespace velmora

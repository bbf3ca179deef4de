#pragma once

#include "settings/options/folder_session_options.h"

#include <QDateTime>

#include <optional>

class QSettings;

namespace velmora {

/// One stored set of folder options.
struct StoredFolderSet {
    QString description;
    FolderSessionOptions options;
    QDateTime savedAt; ///< when it was stored; invalid for sets that do not tell

    friend bool operator==(const StoredFolderSet &, const StoredFolderSet &) = default;
};

/// The folder options that outlive a session: the defaults, the presets that the user made, and the paths used last.
///
/// A view of a settings store that it does not own (`SessionSettings` outside tests), used on the store's thread.
/// Whatever a stored set lacks has its built-in value; entries that make no sense are passed over.
class FolderSettingsStore final {
public:
    explicit FolderSettingsStore(QSettings &settings) : m_settings(settings) {}

    [[nodiscard]] StoredFolderSet defaults() const;
    void setDefaults(const StoredFolderSet &set);

    /// In alphabetical order, without regard to case.
    [[nodiscard]] QStringList presetNames() const;
    [[nodiscard]] std::optional<StoredFolderSet> preset(const QString &name) const;
    /// Replaces a preset of the same name. Any text but the empty one is a name.
    void setPreset(const QString &name, const StoredFolderSet &set);
    void removePreset(const QString &name);

    /// The latest first, at most `recentPathLimit`.
    [[nodiscard]] QStringList recentPaths() const;
    void addRecentPath(const QString &path);
    static constexpr int recentPathLimit = 20;

private:
    [[nodiscard]] StoredFolderSet readSet(const QString &group) const;
    void writeSet(const QString &group, const StoredFolderSet &set);

    QSettings &m_settings;
};

} // namespace velmora

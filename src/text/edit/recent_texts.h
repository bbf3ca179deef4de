#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

/// The files that were last opened or saved in text edit sessions, the latest first, as the settings hold them.
class RecentTexts {
public:
    static constexpr qsizetype most = 12;

    /// Those of them that are still there.
    [[nodiscard]] static QStringList load();
    static void add(const QString &path);
    static void clear();
};

} // namespace velmora

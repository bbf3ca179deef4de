#pragma once

#include <QString>

namespace velmora {

/// A tree of files before anybody opens it: what it is, where it is and how it is shown. A value.
struct Location {
    enum class Kind : quint8 {
        None,        ///< no tree has been named yet
        LocalFolder, ///< `place` is its absolute path with "/"
        OtherTree,   ///< `place` is what its source makes of it; no path of this system
    };

    Kind kind = Kind::None;
    QString place;
    QString shown; ///< for people: of a local folder its path as the system writes it

    /// The folder at `path`, which may be relative; none when that is empty.
    [[nodiscard]] static Location ofFolder(const QString &path);

    friend bool operator==(const Location &, const Location &) = default;
};

} // namespace velmora

#pragma once

#include <QString>

namespace velmora {

/// The current user's part of the system's registry. Any thread. Keys are paths below it, with backslashes.
class UserRegistry {
public:
    UserRegistry() = default;
    UserRegistry(const UserRegistry &) = delete;
    UserRegistry &operator=(const UserRegistry &) = delete;
    virtual ~UserRegistry() = default;

    /// The system's own; null where there is no registry.
    [[nodiscard]] static UserRegistry *system();

    [[nodiscard]] virtual bool contains(const QString &key) const = 0;
    /// Writes a string value into a key, which is made when it is missing. An empty name means the key's default value.
    [[nodiscard]] virtual bool setString(const QString &key, const QString &name, const QString &value) = 0;
    /// Removes a key with everything below it; one that is not there is fine.
    virtual void removeTree(const QString &key) = 0;
};

} // namespace velmora

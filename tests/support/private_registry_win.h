#pragma once

#include <QString>

namespace velmora::test {

/// While it lives, this process sees an empty registry in place of the current user's, so that nobody's settings are
/// read or written. Programs that it starts see the true one.
class PrivateRegistry final {
public:
    PrivateRegistry();
    ~PrivateRegistry();
    PrivateRegistry(const PrivateRegistry &) = delete;
    PrivateRegistry &operator=(const PrivateRegistry &) = delete;

    [[nodiscard]] bool isValid() const { return m_valid; }

private:
    QString m_place;
    bool m_valid = false;
};

} // namespace velmora::test

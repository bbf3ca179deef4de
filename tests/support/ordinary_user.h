#pragma once

#include <sys/fsuid.h>
#include <sys/types.h>

namespace velmora::test {

/// Makes this thread, and those that it begins, open files as a user without rights of its own, for as long as it
/// lives: to root nothing is unreadable.
class OrdinaryUser {
public:
    OrdinaryUser() : m_user(::setfsuid(65'534)) {}
    ~OrdinaryUser() { ::setfsuid(uid_t(m_user)); }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    int m_user;
};

} // namespace velmora::test

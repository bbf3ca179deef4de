#include "platform/peer_user.h"

#include <vector>

#include <windows.h>

namespace velmora {

namespace {

/// A handle that is closed with its owner.
class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE handle) : m_handle(handle) {}
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;
    ~Handle()
    {
        if (m_handle)
            CloseHandle(m_handle);
    }

    [[nodiscard]] HANDLE get() const { return m_handle; }
    [[nodiscard]] HANDLE *target() { return &m_handle; }

private:
    HANDLE m_handle = nullptr;
};

/// The TOKEN_USER of a process; empty when it may not be read.
std::vector<unsigned char> userOf(HANDLE process)
{
    Handle token;
    if (!OpenProcessToken(process, TOKEN_QUERY, token.target()))
        return {};
    DWORD size = 0;
    GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    std::vector<unsigned char> user(size);
    if (size == 0 || !GetTokenInformation(token.get(), TokenUser, user.data(), size, &size))
        return {};
    return user;
}

PSID sidOf(std::vector<unsigned char> &user)
{
    return reinterpret_cast<TOKEN_USER *>(user.data())->User.Sid;
}

} // namespace

bool peerIsSameUser(qintptr descriptor, PeerEnd end)
{
    const auto pipe = reinterpret_cast<HANDLE>(descriptor);
    ULONG id = 0;
    const BOOL known =
        end == PeerEnd::Server ? GetNamedPipeServerProcessId(pipe, &id) : GetNamedPipeClientProcessId(pipe, &id);
    if (!known)
        return false;
    const Handle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    if (!process.get())
        return false;
    std::vector<unsigned char> peer = userOf(process.get());
    std::vector<unsigned char> own = userOf(GetCurrentProcess());
    return !peer.empty() && !own.empty() && EqualSid(sidOf(peer), sidOf(own));
}

} // namespace velmora

#include "platform/long_path_win.h"
#include "platform/private_folder.h"

#include <vector>

#include <windows.h>
#include <aclapi.h>

namespace velmora {

namespace {

/// What the token of this process says of `about`; empty when it may not be read.
std::vector<unsigned char> ofOwnToken(TOKEN_INFORMATION_CLASS about)
{
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token))
        return {};
    DWORD size = 0;
    GetTokenInformation(token, about, nullptr, 0, &size);
    std::vector<unsigned char> answer(size);
    if (size == 0 || !GetTokenInformation(token, about, answer.data(), size, &size))
        answer.clear();
    CloseHandle(token);
    return answer;
}

bool isOwn(PSID owner)
{
    std::vector<unsigned char> user = ofOwnToken(TokenUser);
    if (!user.empty() && EqualSid(owner, reinterpret_cast<TOKEN_USER *>(user.data())->User.Sid))
        return true;
    // What an administrator makes may belong to the group of administrators.
    std::vector<unsigned char> given = ofOwnToken(TokenOwner);
    return !given.empty() && EqualSid(owner, reinterpret_cast<TOKEN_OWNER *>(given.data())->Owner);
}

} // namespace

bool isOwnPrivateFolder(const QString &path)
{
    std::wstring native = longPath(path);
    const DWORD attributes = GetFileAttributesW(native.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY) ||
        (attributes & FILE_ATTRIBUTE_REPARSE_POINT))
        return false;
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(native.data(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr, nullptr,
                              nullptr, &descriptor) != ERROR_SUCCESS)
        return false;
    const bool own = owner && isOwn(owner);
    LocalFree(descriptor);
    return own;
}

} // namespace velmora

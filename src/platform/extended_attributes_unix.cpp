#include "platform/extended_attributes_unix.h"

#ifdef __linux__
#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>
#include <sys/xattr.h>
#endif

namespace velmora {

#ifdef __linux__

namespace {

constexpr char accessList[] = "system.posix_acl_access";
constexpr char defaultList[] = "system.posix_acl_default";

ssize_t listNames(const AttributeSource &from, char *buffer, std::size_t size)
{
    return from.file >= 0 ? ::flistxattr(from.file, buffer, size) : ::listxattr(from.path, buffer, size);
}

ssize_t readValue(const AttributeSource &from, const char *name, char *buffer, std::size_t size)
{
    return from.file >= 0 ? ::fgetxattr(from.file, name, buffer, size) : ::getxattr(from.path, name, buffer, size);
}

/// What `read(buffer, size)` gives, whatever its length; nothing, with errno set, when it fails.
template <typename Read>
std::optional<std::string> whole(const Read &read)
{
    for (;;) {
        const ssize_t expected = read(nullptr, 0);
        if (expected < 0)
            return std::nullopt;
        std::string bytes(std::size_t(expected), '\0');
        const ssize_t length = expected == 0 ? 0 : read(bytes.data(), bytes.size());
        if (length >= 0) {
            bytes.resize(std::size_t(length));
            return bytes;
        }
        if (errno != ERANGE) // grown in between
            return std::nullopt;
    }
}

std::vector<std::string> namesOf(const AttributeSource &from)
{
    const std::optional<std::string> list =
        whole([&from](char *buffer, std::size_t size) { return listNames(from, buffer, size); });
    std::vector<std::string> names;
    for (std::size_t begin = 0; list && begin < list->size(); begin += names.back().size() + 1)
        names.emplace_back(list->c_str() + begin);
    return names;
}

bool contains(const std::vector<std::string> &names, const char *name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool knowsNone(int error)
{
    return error == ENOTSUP || error == EOPNOTSUPP || error == ENOSYS;
}

unsigned numberAt(std::string_view bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes[at]) | unsigned(static_cast<unsigned char>(bytes[at + 1])) << 8U;
}

/// The permissions of group and others that mode bits alone may not give when the list is lost: nobody must gain any.
/// The list as the kernel hands it out: a version of 32 bits, then for each entry its tag and permissions of 16 bits
/// and the user or group of 32, all with the lowest byte first (linux/posix_acl_xattr.h).
mode_t withheldWithout(std::string_view list)
{
    enum Tag : unsigned { User = 0x02, OwningGroup = 0x04, Group = 0x08, Mask = 0x10, Other = 0x20 };
    constexpr std::size_t headSize = 4;
    constexpr std::size_t entrySize = 8;
    constexpr unsigned all = 07;
    if (list.size() < headSize || (list.size() - headSize) % entrySize != 0)
        return S_IRWXG | S_IRWXO;
    const auto each = [&list](const auto &take) {
        for (std::size_t at = headSize; at < list.size(); at += entrySize)
            take(numberAt(list, at), numberAt(list, at + 2) & all);
    };
    unsigned mask = all;
    each([&mask](unsigned tag, unsigned rights) { mask = tag == Mask ? rights : mask; });
    unsigned group = mask;
    unsigned other = all;
    each([&](unsigned tag, unsigned rights) {
        // A user of the list may be in the group; users and groups of the list are others without it.
        if (tag == OwningGroup || tag == User)
            group &= rights;
        if (tag == Other)
            other &= rights;
        else if (tag == User || tag == Group)
            other &= rights & mask;
    });
    return mode_t((~group & all) << 3U | (~other & all));
}

class Carrying {
public:
    Carrying(const AttributeSource &from, int to)
        : m_from(from),
          m_to(to),
          m_names(from.hasNone ? std::vector<std::string>() : namesOf(from)),
          m_inherited(namesOf({to}))
    {}

    CarriedAttributes run()
    {
        // A list may take the right to write away, which attributes need.
        carryUserAttributes();
        if (const std::optional<std::string> lost = carryList(accessList))
            m_result.withheld = withheldWithout(*lost);
        (void)carryList(defaultList);
        return m_result;
    }

private:
    [[nodiscard]] std::optional<std::string> valueOf(const char *name) const
    {
        return whole([this, name](char *buffer, std::size_t size) { return readValue(m_from, name, buffer, size); });
    }

    void miss(int error) { m_result.error = m_result.error == 0 ? error : m_result.error; }

    void carryUserAttributes()
    {
        for (const std::string &name : m_names) {
            if (name.compare(0, 5, "user.") != 0)
                continue;
            const std::optional<std::string> value = valueOf(name.c_str());
            if (value && ::fsetxattr(m_to, name.c_str(), value->data(), value->size(), 0) == 0)
                continue;
            if (value && knowsNone(errno))
                return;
            if (value || errno != ENODATA) // removed in between
                miss(errno);
        }
    }

    /// The list, when there is one and `m_to` could not take it.
    std::optional<std::string> carryList(const char *name)
    {
        if (!contains(m_names, name)) {
            if (contains(m_inherited, name) && ::fremovexattr(m_to, name) != 0)
                miss(errno);
            return std::nullopt;
        }
        const std::optional<std::string> list = valueOf(name);
        if (list && ::fsetxattr(m_to, name, list->data(), list->size(), 0) == 0)
            return std::nullopt;
        miss(errno);
        return list.value_or(std::string()); // one that cannot be read may deny anything
    }

    const AttributeSource &m_from;
    int m_to;
    std::vector<std::string> m_names;
    std::vector<std::string> m_inherited; ///< what `m_to` has from the folder that it was made in
    CarriedAttributes m_result;
};

} // namespace

bool hasAttributes(int file)
{
    return ::flistxattr(file, nullptr, 0) != 0;
}

CarriedAttributes carryAttributes(const AttributeSource &from, int to)
{
    return Carrying(from, to).run();
}

#else

bool hasAttributes(int)
{
    return false;
}

CarriedAttributes carryAttributes(const AttributeSource &, int)
{
    return {};
}

#endif

} // namespace velmora

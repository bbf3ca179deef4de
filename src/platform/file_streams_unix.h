#pragma once

#include "platform/descriptor_unix.h"
#include "platform/extended_attributes_unix.h"
#include "platform/file_layer.h"

namespace velmora {

inline constexpr mode_t permissionBits = 0777; // what acts in the owner's or the group's name is not copied along

/// What errno means.
[[nodiscard]] FileError lastError();

/// Whether a file system keeps the numbers of its files, or gives them anew whenever they come into memory. Asks the
/// system once for each volume: that takes as long as ten looks at an entry. Copies know what their original knew.
class LastingIdentities {
public:
    /// For `status`, that of what `place` is or of an entry in it.
    [[nodiscard]] bool of(int place, const struct stat &status);

private:
    std::optional<dev_t> m_volume;
    bool m_last = true;
};

/// `lastingIdentities`: the file system does not number its files anew whenever they come into memory.
[[nodiscard]] NodeState stateOf(const struct stat &status, bool lastingIdentities);

/// Sets the modification time of the link `name` in the folder `base`.
[[nodiscard]] FileError setLinkTime(int base, const char *name, const NodeState &model);

/// Sets modification time and permissions of the open file or folder `file`, with regard to what became of the
/// attributes that were carried to it before: an error also when some of these are missed.
[[nodiscard]] FileError setAttributes(int file, const NodeState &model, const CarriedAttributes &carried);

class UnixSource final : public FileSource {
public:
    UnixSource(Descriptor file, const LastingIdentities &identities) : m_file(std::move(file)), m_identities(identities)
    {}

    NodeResult state() override;
    FilePiece read(char *buffer, qint64 length) override;
    void readAhead(qint64 most) override;

    [[nodiscard]] int descriptor() const { return m_file.get(); }
    /// What `readAhead` has read: all of the file, or nothing.
    [[nodiscard]] const std::optional<std::string> &contents() const { return m_contents; }
    /// For `carryAttributes`.
    [[nodiscard]] AttributeSource attributes() const { return {m_file.get(), nullptr, m_hasNoAttributes}; }

private:
    Descriptor m_file;
    std::optional<std::string> m_contents;
    bool m_hasNoAttributes = false; ///< as far as is known
    LastingIdentities m_identities;
};

class UnixSink final : public FileSink {
public:
    UnixSink(Descriptor file, const LastingIdentities &identities) : m_file(std::move(file)), m_identities(identities)
    {}

    FileError write(const char *bytes, qint64 length) override;
    FileError copyFrom(FileSource &source, const Tick &tick) override;
    FileError keepAttributes(const NodeState &model) override;
    FileError flush() override;
    NodeResult state() override;

private:
    Descriptor m_file;
    CarriedAttributes m_carried;
    LastingIdentities m_identities;
};

} // namespace velmora

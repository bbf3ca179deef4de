#pragma once

#include "platform/descriptor_unix.h"
#include "platform/file_layer.h"

namespace velmora {

inline constexpr mode_t permissionBits = 0777; // what acts in the owner's or the group's name is not copied along

/// What errno means.
[[nodiscard]] FileError lastError();

/// `lastingIdentities`: the file system does not number its files anew whenever they come into memory.
[[nodiscard]] NodeState stateOf(const struct stat &status, bool lastingIdentities);

/// Sets modification time and permissions of the entry `name` of the folder `base`, links not followed, or, without a
/// name, of the open file `base`.
[[nodiscard]] FileError setAttributes(int base, const char *name, const NodeState &model);

class UnixSource final : public FileSource {
public:
    UnixSource(Descriptor file, bool lastingIdentities)
        : m_file(std::move(file)), m_lastingIdentities(lastingIdentities)
    {}

    NodeResult state() override;
    FilePiece read(char *buffer, qint64 length) override;
    [[nodiscard]] int descriptor() const { return m_file.get(); }

private:
    Descriptor m_file;
    bool m_lastingIdentities;
};

class UnixSink final : public FileSink {
public:
    UnixSink(Descriptor file, bool lastingIdentities) : m_file(std::move(file)), m_lastingIdentities(lastingIdentities)
    {}

    FileError write(const char *bytes, qint64 length) override;
    FileError copyFrom(FileSource &source, const Tick &tick) override;
    FileError keepAttributes(const NodeState &model) override;
    FileError flush() override;
    NodeResult state() override;

private:
    /// Lets the file system share the contents between both files, where it can.
    [[nodiscard]] bool shareBlocks(int from, qint64 size);
    /// Lets the system copy. Ends early without an error where it cannot; what is left is copied through memory.
    [[nodiscard]] FileError copyInSystem(int from, qint64 size, qint64 &copied, const Tick &tick);
    [[nodiscard]] FileError copyThroughMemory(UnixSource &from, qint64 copied, const Tick &tick);

    Descriptor m_file;
    bool m_lastingIdentities;
};

} // namespace velmora

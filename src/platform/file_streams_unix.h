#pragma once

#include "platform/descriptor_unix.h"
#include "platform/extended_attributes_unix.h"
#include "platform/file_layer.h"

namespace velmora {

inline constexpr mode_t permissionBits = 0777; // what acts in the owner's or the group's name is not copied along

/// What errno means.
[[nodiscard]] FileError lastError();

/// `lastingIdentities`: the file system does not number its files anew whenever they come into memory.
[[nodiscard]] NodeState stateOf(const struct stat &status, bool lastingIdentities);

/// Sets the modification time of the link `name` in the folder `base`.
[[nodiscard]] FileError setLinkTime(int base, const char *name, const NodeState &model);

/// Sets modification time and permissions of the open file or folder `file`, with regard to what became of the
/// attributes that were carried to it before: an error also when some of these are missed.
[[nodiscard]] FileError setAttributes(int file, const NodeState &model, const CarriedAttributes &carried);

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
    Descriptor m_file;
    CarriedAttributes m_carried;
    bool m_lastingIdentities;
};

} // namespace velmora

#pragma once

#include "vfs/archive/single_contents.h"
#include "vfs/remote/remote_files.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace velmora {

/// The contents of a folder on a host. Opened ones come piece by piece, as they are read.
class RemoteContents final : public SingleContents {
public:
    RemoteContents(const SshTarget &target, std::shared_ptr<const std::vector<ArchiveEntry>> entries, qint64 mostRead);

    [[nodiscard]] std::unique_ptr<OpenFile> open(qint32 entry, const CancelFlag &cancel) const override;
    /// Computed on the host.
    [[nodiscard]] std::optional<ContentIdentity> identity(qint32 entry) const override;
    [[nodiscard]] qsizetype identitiesAtOnce() const override;
    [[nodiscard]] std::vector<std::optional<ContentIdentity>> identities(std::span<const qint32> entries,
                                                                         ContentIdentity::Algorithm algorithm,
                                                                         const CancelFlag &cancel) const override;

protected:
    [[nodiscard]] bool read(qint32 entry, const Sink &sink, const CancelFlag &cancel) const override;

private:
    [[nodiscard]] RemoteFiles::File fileAt(qint32 entry) const;

    std::shared_ptr<const RemoteFiles> m_files; ///< open files hold it, too
};

} // namespace velmora

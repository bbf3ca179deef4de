#pragma once

#include "folder/sftp/engine/ssh_runs.h"

namespace velmora {

/// A message, and what is said beside it.
struct SftpWords {
    QString text;
    QString detail;
};

/// Why nothing can be asked of a place; empty where something can.
[[nodiscard]] QString faultText(RemotePlaceFault fault);
/// Why `program`, ssh or scp, did not do its work for `place`.
[[nodiscard]] SftpWords faultWords(const SshEnd &end, const QString &program, const RemotePlace &place);
/// What came of a comparison.
[[nodiscard]] SftpWords resultWords(const RemoteComparing &comparing);
/// What is known of the host's clock; empty for nothing.
[[nodiscard]] QString clockText(const std::optional<ClockSkew> &skew);
/// That the digest of a local file is computed.
[[nodiscard]] QString hashingText(const QString &path);
/// How many rows there are of each status, how many are not shown, and how many files the host could not list.
[[nodiscard]] QString countsText(const PairCounts &counts, qsizetype hidden, qsizetype unlisted);

} // namespace velmora

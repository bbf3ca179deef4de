#pragma once

#include "folder/actions/remote_words.h"
#include "folder/sftp/engine/ssh_runs.h"

namespace velmora {

/// What came of a comparison.
[[nodiscard]] RemoteWords resultWords(const RemoteComparing &comparing);
/// What is known of the host's clock; empty for nothing.
[[nodiscard]] QString clockText(const std::optional<ClockSkew> &skew);
/// That the digest of a local file is computed.
[[nodiscard]] QString hashingText(const QString &path);
/// How many rows there are of each status, how many are not shown, and how many files the host could not list.
[[nodiscard]] QString countsText(const PairCounts &counts, qsizetype hidden, qsizetype unlisted);

} // namespace velmora

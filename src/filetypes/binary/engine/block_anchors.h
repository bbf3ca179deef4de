#pragma once

#include "core/cancel_flag.h"
#include "filetypes/binary/engine/binary_source.h"

#include <vector>

namespace velmora {

/// A place at which a block begins by its contents: the same bytes make the same anchor wherever they stand.
struct Anchor {
    quint64 hash = 0;
    qint64 begin = 0; ///< of the bytes that make it
};

/// A pair of places with the same bytes after them, as far as hashes tell.
struct AnchorPair {
    qint64 left = 0;
    qint64 right = 0;
};

/// How anchors are chosen within a window: about 10,000 in windows of any size, so that memory does not grow.
struct AnchorRule {
    qint64 window = 0;   ///< bytes that are looked at on each side
    int hashedBytes = 0; ///< which make an anchor
    quint64 mask = 0;    ///< of the hash, zero at an anchor

    [[nodiscard]] static AnchorRule of(qint64 window);
};

/// The anchors of a side in the window that begins at `from`. A byte that cannot be read ends the window.
///
/// The hash is the "gear" hash of content-defined chunking (Xia et al., FastCDC, 2016): it is shifted for each byte, so
/// that the oldest one drops out of it.
[[nodiscard]] std::vector<Anchor> findAnchors(const BinaryPart &part, qint64 from, const AnchorRule &rule,
                                              const CancelFlag &cancel);

/// The pairs of equal anchors, those that cost the least bytes first: of anchors that each side has once, or, without
/// any, of those that both have first. At most `limit`.
[[nodiscard]] std::vector<AnchorPair> pairAnchors(std::vector<Anchor> left, std::vector<Anchor> right,
                                                  std::size_t limit);

} // namespace velmora

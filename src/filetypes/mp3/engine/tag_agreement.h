#pragma once

#include "filetypes/mp3/engine/common_fields.h"
#include "filetypes/mp3/engine/song_field.h"

namespace velmora {

/// The tag systems that stand beside the main one of a file, and are kept in step with it.
[[nodiscard]] constexpr bool isSecondary(SongGroup group)
{
    return group == SongGroup::Id3v1 || group == SongGroup::Ape;
}

/// `tags` with `field` in the secondary system `follower` as `leader` has it, as far as there is room and letters for
/// it, where the two contradict each other; else as they are. A genre or a number that ID3v1 cannot name goes from it.
/// `charset` as in `valueIn`.
[[nodiscard]] SongTags withAgreement(SongTags tags, SongGroup leader, SongGroup follower, CommonField field,
                                     const QString &charset);

} // namespace velmora

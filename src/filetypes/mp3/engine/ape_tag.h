#pragma once

#include "filetypes/mp3/engine/sound_bytes.h"

#include <optional>

namespace velmora {

/// Where an APE tag lies, after its footer. Format: the APE tag in versions 1 and 2, whose header and footer of 32
/// bytes each hold a mark, the version, the length with the footer and without the header, the number of items and
/// flags.
struct ApePlace {
    qint64 begin = 0; ///< of the header, or of the items where there is none
    qint64 items = 0;
    qint64 end = 0; ///< behind the footer
    qint64 statedLength = 0;
    qint64 statedCount = 0;
    bool isFound = false;  ///< the length leads to a beginning; else the footer alone counts for the tag
    bool isHeader = false; ///< it is a header that stands where the footer ought to be
    bool agrees = false;   ///< the header is there if the footer says so, and says the same

    [[nodiscard]] qint64 footer() const { return end - endLength; }

    static constexpr qint64 endLength = 32;
};

/// The tag whose footer ends there. It does not begin before `floor`.
[[nodiscard]] std::optional<ApePlace> apeTagBefore(SoundBytes &bytes, qint64 floor, qint64 end);

/// Whether a header or a footer stands there.
[[nodiscard]] bool isApeEnd(SoundBytes &bytes, qint64 at);

/// An item of such a tag, whose bytes lie in those it was read from.
struct ApeItem {
    QByteArrayView name;
    QByteArrayView value; ///< as much as is there
    quint32 flags = 0;
    qint64 statedLength = 0; ///< of the value

    [[nodiscard]] bool isText() const { return (flags & 6) == 0; }
    [[nodiscard]] bool hasGoodName() const;
};

/// The item at `at` of the bytes between header and footer, and moves `at` behind it. None where there is no room for
/// one, or nothing ends its name.
[[nodiscard]] std::optional<ApeItem> takeApeItem(QByteArrayView items, qsizetype &at);

} // namespace velmora

#pragma once

#include "core/mask_list.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <string>
#include <vector>

namespace velmora {

/// One compiled wildcard, matched against a whole bare name without regard to case (simple case folding of Unicode).
///
/// Immutable, usable from any thread. A match costs at most the product of the two lengths, whatever the mask.
class Wildcard {
public:
    /// "*" is any run of characters, "?" any one, everything else itself.
    [[nodiscard]] static Wildcard fromPattern(QStringView pattern);

    /// As `fromPattern`, after trimming, and a bracketed list stands for any one of its characters (see `MaskList`). A
    /// "[" that begins no list makes a mask that matches nothing.
    [[nodiscard]] static Wildcard fromMask(const QString &mask);

    /// False for a mask that matches nothing because of a "[" that begins no list.
    [[nodiscard]] bool isValid() const noexcept { return m_valid; }

    [[nodiscard]] bool matches(QStringView name) const;

private:
    static constexpr char32_t anyRun = 0x11'0000; // beyond the last code point
    static constexpr char32_t anyOne = 0x11'0001;
    static constexpr char32_t firstList = 0x11'0002;

    [[nodiscard]] static char32_t elementOf(char32_t folded);
    [[nodiscard]] bool fits(char32_t element, char32_t plain, char32_t folded) const;

    std::u32string m_pattern;      ///< case-folded; the two marks for wildcards, `firstList + index` for a list
    std::vector<MaskList> m_lists; ///< in the order in which the pattern has them
    bool m_valid = true;
};

/// Several masks; matches what one of them matches.
class WildcardList {
public:
    WildcardList() = default;
    explicit WildcardList(const QStringList &masks);

    [[nodiscard]] bool isEmpty() const noexcept { return m_masks.isEmpty(); }
    [[nodiscard]] bool matches(QStringView name) const;

private:
    QList<Wildcard> m_masks;
};

/// The masks of a text that separates them with ";": trimmed, the empty ones dropped.
[[nodiscard]] QStringList splitMasks(QStringView text);

} // namespace velmora

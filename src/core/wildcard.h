#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <string>

namespace velmora {

/// One compiled wildcard, matched against a whole bare name without regard to case (simple case folding of Unicode).
///
/// Immutable, usable from any thread. A match costs at most the product of the two lengths, whatever the mask.
class Wildcard {
public:
    /// "*" is any run of characters, "?" any one, everything else itself.
    [[nodiscard]] static Wildcard fromPattern(QStringView pattern);

    /// As `fromPattern`, after trimming, and a bracketed list is a character class as Qt's conversion of wildcards has
    /// it.
    [[nodiscard]] static Wildcard fromMask(const QString &mask);

    [[nodiscard]] bool matches(QStringView name) const;

private:
    static constexpr char32_t anyRun = 0x11'0000; // beyond the last code point
    static constexpr char32_t anyOne = 0x11'0001;

    std::u32string m_pattern;     ///< case-folded, with the two marks for wildcards
    QRegularExpression m_classes; ///< used instead where the mask has brackets
    bool m_hasClasses = false;
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

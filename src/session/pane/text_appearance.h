#pragma once

#include <QString>

namespace velmora {

/// How texts look that are compared and edited, as a person has chosen it for all sessions.
struct TextAppearance {
    static constexpr double leastPoints = 6;
    static constexpr double mostPoints = 40;
    static constexpr int mostTabWidth = 16;

    QString family;     ///< of the font; empty for the system's own with letters of one width
    double points = 10; ///< the size that "Usual text size" brings back
    int tabWidth = 4;   ///< columns from one tab stop to the next, 1 to 16

    /// What is stored, brought into its bounds.
    [[nodiscard]] static TextAppearance load();
    /// Stores it; sessions that are opened from now on begin with this size when it is another one than before.
    void save() const;

    friend bool operator==(const TextAppearance &, const TextAppearance &) = default;
};

} // namespace velmora

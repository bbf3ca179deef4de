#pragma once

#include <QtGlobal>

namespace velmora {

/// What a folder comparison says of a file, or of the files that a folder contains.
enum class FolderMark : quint8 {
    Unknown,  ///< not compared yet
    Scanning, ///< being compared
    Same,
    Older,
    Unique,   ///< on one side only
    Newer,    ///< newer, or different without one being newer
    Filtered, ///< left out by a filter
};

inline constexpr int folderMarkCount = int(FolderMark::Filtered) + 1;

/// Several marks at once, as a folder has them for what is in it.
class MarkSet {
public:
    MarkSet() = default;
    explicit MarkSet(FolderMark mark) { add(mark); }

    void add(FolderMark mark) noexcept { m_bits = quint8(m_bits | bit(mark)); }
    void add(MarkSet other) noexcept { m_bits = quint8(m_bits | other.m_bits); }
    void remove(FolderMark mark) noexcept { m_bits = quint8(m_bits & ~unsigned(bit(mark))); }
    [[nodiscard]] bool has(FolderMark mark) const noexcept { return (m_bits & bit(mark)) != 0; }
    [[nodiscard]] bool isEmpty() const noexcept { return m_bits == 0; }

    friend bool operator==(MarkSet, MarkSet) = default;

private:
    [[nodiscard]] static quint8 bit(FolderMark mark) noexcept { return quint8(1U << unsigned(mark)); }

    quint8 m_bits = 0;
};

} // namespace velmora

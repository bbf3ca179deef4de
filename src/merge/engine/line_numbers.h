#pragma once

#include "core/cancel_flag.h"
#include "core/text_lines.h"

#include <QtGlobal>

#include <array>
#include <memory>
#include <vector>

namespace velmora {

/// The lines of three texts as numbers from 0 to `count` - 1: equal lines have one number.
struct NumberedTexts {
    std::array<std::vector<qint32>, 3> texts;
    qint32 count = 0;
};

/// The numbers of the lines of a base, to which those of its two versions are added: a base can be numbered while its
/// versions are still being read.
class LineNumbering {
public:
    /// Numbers `base`, its lines with their ends or without; shares the text.
    LineNumbering(const TextLines &base, bool withEnds, const CancelFlag &cancel);
    LineNumbering(LineNumbering &&) noexcept;
    LineNumbering &operator=(LineNumbering &&) noexcept;
    ~LineNumbering();

    /// Numbers the versions, too, for the one time that this can be asked for. Incomplete when this or the numbering
    /// of the base was cancelled.
    [[nodiscard]] NumberedTexts with(const TextLines &left, const TextLines &right, const CancelFlag &cancel) &&;

private:
    struct Base;

    std::unique_ptr<Base> m_base;
};

} // namespace velmora

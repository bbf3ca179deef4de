#include "filetypes/binary/engine/byte_search.h"

#include "core/aligned_buffer.h"

#include <QByteArrayMatcher>

#include <algorithm>

namespace velmora {

namespace {

/// New places that are looked at in one step; what a match there reaches into beyond is read with them.
constexpr qint64 step = 1024 * 1024;

} // namespace

std::optional<qint64> findForwards(const BinarySource &source, const QByteArray &pattern, qint64 from,
                                   const CancelFlag &cancel, Progress &progress)
{
    const QByteArrayMatcher matcher(pattern);
    const AlignedBuffer buffer(std::size_t(step + pattern.size()));
    // Holes have nothing but zeros.
    const bool skipsHoles = pattern.count('\0') < pattern.size();
    for (qint64 offset = std::max<qint64>(from, 0); offset < source.size() && !cancel.isCancelled(); offset += step) {
        progress.report(0, offset, source.size());
        if (skipsHoles)
            offset = std::max(offset, source.nextData(offset) - pattern.size());
        const FilePiece piece = source.readSome(offset, buffer.data(), step + pattern.size() - 1);
        const qsizetype found = matcher.indexIn(buffer.data(), piece.length);
        if (found >= 0)
            return offset + found;
    }
    return std::nullopt;
}

std::optional<qint64> findBackwards(const BinarySource &source, const QByteArray &pattern, qint64 before,
                                    const CancelFlag &cancel, Progress &progress)
{
    const AlignedBuffer buffer(std::size_t(step + pattern.size()));
    for (qint64 end = std::min(before, source.size()); end > 0 && !cancel.isCancelled(); end -= step) {
        progress.report(0, source.size() - end, source.size());
        const qint64 offset = std::max<qint64>(end - step, 0);
        const FilePiece piece = source.readSome(offset, buffer.data(), end - offset + pattern.size() - 1);
        const qsizetype found = QByteArrayView(buffer.data(), piece.length).lastIndexOf(pattern);
        if (found >= 0)
            return offset + found;
    }
    return std::nullopt;
}

} // namespace velmora

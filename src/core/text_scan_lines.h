#pragma once

// The inner loop of cutting a text into lines; included by text_scan.h, which documents it.

#include <bit>
#include <cstring>

// Every x86-64 processor has SSE2; elsewhere the plain loops do.
#if defined(__SSE2__) || defined(_M_X64)
#define VELMORA_SSE2 1
#include <emmintrin.h>
#else
#define VELMORA_SSE2 0
#endif

namespace velmora {

template <typename Found>
void forEachLineFeed(std::string_view text, size_t begin, size_t end, Found found)
{
    size_t at = begin;
#if VELMORA_SSE2
    // Short lines make a search per line slow; one mask for 64 bytes costs the same however many line feeds it holds.
    const __m128i lineFeed = _mm_set1_epi8('\n');
    const auto maskAt = [&](size_t offset) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text.data() + offset));
        return quint64(quint32(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, lineFeed))));
    };
    for (; at + 64 <= end; at += 64) {
        quint64 mask = maskAt(at) | maskAt(at + 16) << 16 | maskAt(at + 32) << 32 | maskAt(at + 48) << 48;
        for (; mask != 0; mask &= mask - 1)
            found(at + size_t(std::countr_zero(mask)));
    }
#endif
    while (at < end) {
        const void *hit = std::memchr(text.data() + at, '\n', end - at);
        if (!hit)
            return;
        at = size_t(static_cast<const char *>(hit) - text.data());
        found(at++);
    }
}

} // namespace velmora

#include "text/engine/line_normalizer.h"

#include "settings/options/text_session_options.h"
#include "text/engine/utf16_units.h"
#include "text/engine/white_space.h"

#include <algorithm>
#include <bit>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define VELMORA_ENGINE_SSE2 1
#else
#define VELMORA_ENGINE_SSE2 0
#endif

namespace velmora {

namespace {

template <typename Unit>
using View = std::basic_string_view<Unit>;

std::u16string toStdU16(const QString &text)
{
    return {QStringView(text).utf16(), size_t(text.size())};
}

/// What a line holds that may make its key differ from it.
struct Findings {
    bool wide = false;     ///< units from 0x80 on
    bool oddSpace = false; ///< below 0x80: white space other than the space, or two spaces in a row
    bool upper = false;    ///< below 0x80: capital letters
};

quint32 toValue(char unit) noexcept
{
    return static_cast<unsigned char>(unit);
}

quint32 toValue(char16_t unit) noexcept
{
    return unit;
}

template <typename Unit>
bool isUpper(Unit unit) noexcept
{
    return unit >= Unit('A') && unit <= Unit('Z');
}

template <typename Unit>
void inspectUnits(View<Unit> text, Findings &findings) noexcept
{
    bool afterSpace = false;
    for (const Unit unit : text) {
        const auto value = toValue(unit);
        const bool space = value == ' ';
        findings.wide |= value >= 0x80;
        findings.oddSpace |= (space && afterSpace) || (!space && isAsciiSpace(value));
        findings.upper |= isUpper(unit);
        afterSpace = space;
    }
}

Findings inspect(std::u16string_view text) noexcept
{
    Findings findings;
    inspectUnits(text, findings);
    return findings;
}

#if VELMORA_ENGINE_SSE2

/// Gathers what vectors of 16 bytes hold.
class VectorInspector {
public:
    /// `afterSpace` is 1 when a space stands before the vector.
    void inspect(const char *at, quint32 afterSpace) noexcept
    {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(at));
        m_wide = _mm_or_si128(m_wide, bytes);
        m_control = _mm_or_si128(m_control, inRange(bytes, '\t', '\r'));
        m_upper = _mm_or_si128(m_upper, inRange(bytes, 'A', 'Z'));
        m_spaces = quint32(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(' '))));
        m_doubled |= m_spaces & (m_spaces << 1 | afterSpace);
    }
    [[nodiscard]] quint32 endsWithSpace() const noexcept { return m_spaces >> 15; }

    [[nodiscard]] Findings findings() const noexcept
    {
        return {_mm_movemask_epi8(m_wide) != 0, m_doubled != 0 || _mm_movemask_epi8(m_control) != 0,
                _mm_movemask_epi8(m_upper) != 0};
    }

private:
    static __m128i inRange(__m128i bytes, char first, char last) noexcept
    {
        const __m128i shifted = _mm_sub_epi8(bytes, _mm_set1_epi8(first));
        return _mm_cmpeq_epi8(_mm_min_epu8(shifted, _mm_set1_epi8(char(last - first))), shifted);
    }

    __m128i m_wide = _mm_setzero_si128();
    __m128i m_control = _mm_setzero_si128();
    __m128i m_upper = _mm_setzero_si128();
    quint32 m_spaces = 0;
    quint32 m_doubled = 0;
};

#endif

Findings inspect(std::string_view text) noexcept
{
#if VELMORA_ENGINE_SSE2
    if (text.size() >= 16) {
        VectorInspector inspector;
        size_t at = 0;
        for (; at + 16 < text.size(); at += 16)
            inspector.inspect(text.data() + at, inspector.endsWithSpace());
        // The last vector ends with the text; all but its first byte may be new.
        const size_t last = text.size() - 16;
        inspector.inspect(text.data() + last, last == at ? inspector.endsWithSpace() : 0);
        return inspector.findings();
    }
#endif
    Findings findings;
    inspectUnits(text, findings);
    return findings;
}

/// Whether `text` has white space from U+0080 on.
bool hasWideSpace(std::u16string_view text) noexcept
{
    return std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit >= 0x80 && QChar::isSpace(unit); });
}

bool hasWideSpace(std::string_view text) noexcept
{
    size_t at = 0;
#if VELMORA_ENGINE_SSE2
    for (; at + 16 <= text.size(); at += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text.data() + at));
        const __m128i fromE1 = _mm_sub_epi8(bytes, _mm_set1_epi8(char(0xE1)));
        const __m128i starts = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(char(0xC2))),
                                            _mm_cmpeq_epi8(_mm_min_epu8(fromE1, _mm_set1_epi8(2)), fromE1));
        for (auto mask = quint32(_mm_movemask_epi8(starts)); mask != 0; mask &= mask - 1) {
            if (wideSpaceAtStart(text.substr(at + size_t(std::countr_zero(mask)))) != 0)
                return true;
        }
    }
#endif
    for (; at < text.size(); ++at) {
        if (mayStartWideSpace(toValue(text[at])) && wideSpaceAtStart(text.substr(at)) != 0)
            return true;
    }
    return false;
}

template <typename Unit>
View<Unit> withoutLeadingSpace(View<Unit> text) noexcept
{
    while (!text.empty()) {
        const size_t length = spaceAtStart(text);
        if (length == 0)
            break;
        text.remove_prefix(length);
    }
    return text;
}

template <typename Unit>
View<Unit> withoutTrailingSpace(View<Unit> text) noexcept
{
    while (!text.empty()) {
        const size_t length = spaceAtEnd(text);
        if (length == 0)
            break;
        text.remove_suffix(length);
    }
    return text;
}

void foldWideCase(std::u16string &text)
{
    text = toStdU16(toQString(text).toLower());
}

void foldWideCase(std::string &text)
{
    std::u16string units;
    appendUtf16(text, units);
    text = toQString(units).toLower().toUtf8().toStdString();
}

} // namespace

KeyRules KeyRules::of(const TextSessionOptions &options)
{
    // The last two rules each imply more than their own: collapsing drops white space at the start and keeps one space
    // at the end, "everything else" trims both ends and collapses.
    KeyRules rules;
    rules.collapse = !options.importantEmbeddedWhitespace || !options.importantEverythingElse;
    rules.dropLeading = !options.importantLeadingWhitespace || rules.collapse;
    rules.dropTrailing = !options.importantTrailingWhitespace || !options.importantEverythingElse;
    rules.foldCase = !options.importantCharacterCase;
    return rules;
}

template <typename Unit>
View<Unit> LineNormalizer<Unit>::key(View line)
{
    if (m_rules.dropLeading)
        line = withoutLeadingSpace(line);
    if (m_rules.dropTrailing)
        line = withoutTrailingSpace(line);
    if (!m_rules.collapse && !m_rules.foldCase)
        return line;

    const Findings findings = inspect(line);
    const bool collapsing = m_rules.collapse && (findings.oddSpace || (findings.wide && hasWideSpace(line)));
    const bool folding = m_rules.foldCase && (findings.upper || findings.wide);
    if (!collapsing && !folding)
        return line;
    if (collapsing)
        collapse(line);
    else
        m_text = line;
    if (folding && findings.wide)
        foldWideCase(m_text);
    else if (folding)
        foldAsciiCase();
    return m_text;
}

template <typename Unit>
void LineNormalizer<Unit>::collapse(View line)
{
    // Never longer than the line, since a run of white space has at least one unit.
    m_text.resize(line.size());
    Unit *out = m_text.data();
    while (!line.empty()) {
        if (spaceAtStart(line) == 0) {
            *out++ = line.front();
            line.remove_prefix(1);
        } else {
            *out++ = Unit(' ');
            line = withoutLeadingSpace(line);
        }
    }
    m_text.resize(size_t(out - m_text.data()));
}

template <typename Unit>
void LineNormalizer<Unit>::foldAsciiCase() noexcept
{
    for (Unit &unit : m_text)
        unit = isUpper(unit) ? Unit(unit + ('a' - 'A')) : unit;
}

bool isBlank(std::string_view line) noexcept
{
    return withoutLeadingSpace(line).empty();
}

bool isBlank(std::u16string_view line) noexcept
{
    return withoutLeadingSpace(line).empty();
}

template class LineNormalizer<char>;
template class LineNormalizer<char16_t>;

} // namespace velmora

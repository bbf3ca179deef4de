#include "text/engine/line_normalizer.h"

#include "settings/options/text_session_options.h"
#include "text/engine/utf16_units.h"
#include "text/engine/white_space.h"

#include <algorithm>
#include <type_traits>

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
void inspectUnits(View<Unit> text, bool afterSpace, Findings &findings) noexcept
{
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
    inspectUnits(text, false, findings);
    return findings;
}

Findings inspect(std::string_view text) noexcept
{
    Findings findings;
    size_t at = 0;
    bool afterSpace = false;
#if VELMORA_ENGINE_SSE2
    const __m128i space = _mm_set1_epi8(' ');
    int wide = 0;
    int control = 0;
    int upper = 0;
    quint32 doubled = 0;
    quint32 carried = 0;
    for (; at + 16 <= text.size(); at += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text.data() + at));
        const auto below = [&bytes](char first, char count) {
            const __m128i shifted = _mm_sub_epi8(bytes, _mm_set1_epi8(first));
            return _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_min_epu8(shifted, _mm_set1_epi8(char(count - 1))), shifted));
        };
        wide |= _mm_movemask_epi8(bytes);
        control |= below('\t', 5);
        upper |= below('A', 26);
        const auto spaces = quint32(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, space)));
        doubled |= spaces & (spaces << 1 | carried);
        carried = spaces >> 15;
    }
    findings = {wide != 0, (control | int(doubled)) != 0, upper != 0};
    afterSpace = carried != 0;
#endif
    inspectUnits(text.substr(at), afterSpace, findings);
    return findings;
}

/// Whether `text` has white space other than single spaces.
template <typename Unit>
bool hasOddSpace(View<Unit> text) noexcept
{
    bool afterSpace = false;
    while (!text.empty()) {
        const size_t length = spaceAtStart(text);
        if (length != 0 && (afterSpace || text.front() != Unit(' ')))
            return true;
        afterSpace = length != 0;
        text.remove_prefix(1);
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
    const bool collapsing = m_rules.collapse && (findings.oddSpace || (findings.wide && hasOddSpace(line)));
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
    m_text.clear();
    while (!line.empty()) {
        const size_t length = spaceAtStart(line);
        if (length == 0) {
            m_text.push_back(line.front());
            line.remove_prefix(1);
        } else {
            m_text.push_back(Unit(' '));
            line = withoutLeadingSpace(line);
        }
    }
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

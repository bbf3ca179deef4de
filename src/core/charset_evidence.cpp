#include "core/charset_evidence.h"

#include "core/text_transcode.h"
#include "core/utf8_text.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <vector>

namespace velmora {

namespace {

struct Bytes {
    unsigned first;
    unsigned last;

    [[nodiscard]] constexpr bool has(unsigned byte) const { return byte >= first && byte <= last; }
};

/// How a charset uses its bytes. The tables are sorted by how common the characters are, so that ranges of the first
/// byte tell.
struct DoubleByte {
    const char *charset;
    Bytes leads[2];
    Bytes trails[2];
    Bytes symbols;      ///< leads of punctuation and wide letters, which every charset has
    Bytes common[2];    ///< leads of the everyday characters
    Bytes commonTrails; ///< second bytes of those
    Bytes telling;      ///< leads of characters that no other language has so many of
    int tellingShare;   ///< in percent of all, from which on they tell; 0 for never
};

constexpr Bytes none{1, 0};

// In the order in which they are taken when all else is the same.
constexpr std::array doubleBytes{
    DoubleByte{"GB18030",
               {{0x81, 0xFE}, none},
               {{0x40, 0x7E}, {0x80, 0xFE}},
               {0xA1, 0xA3},
               {{0xB0, 0xD7}, none},
               {0xA1, 0xFE},
               none,
               0},
    DoubleByte{"BIG5",
               {{0xA1, 0xF9}, none},
               {{0x40, 0x7E}, {0xA1, 0xFE}},
               {0xA1, 0xA3},
               {{0xA4, 0xC6}, none},
               {0x40, 0xFE},
               none,
               0},
    DoubleByte{"CP932",
               {{0x81, 0x9F}, {0xE0, 0xFC}},
               {{0x40, 0x7E}, {0x80, 0xFC}},
               {0x81, 0x81},
               {{0x82, 0x83}, {0x88, 0x97}},
               {0x40, 0xFC},
               {0x82, 0x83},
               30},
    DoubleByte{"EUC-JP",
               {{0xA1, 0xF4}, none},
               {{0xA1, 0xFE}, none},
               {0xA1, 0xA3},
               {{0xA4, 0xA5}, {0xB0, 0xCF}},
               {0xA1, 0xFE},
               {0xA4, 0xA5},
               40},
    DoubleByte{"EUC-KR",
               {{0x81, 0xFD}, none},
               {{0x41, 0x7A}, {0x81, 0xFE}},
               {0xA1, 0xA3},
               {{0xB0, 0xC8}, none},
               {0xA1, 0xFE},
               {0xB0, 0xC8},
               95},
};

/// Fewer characters may look like those of another language by chance.
constexpr int aHandful = 8;
constexpr int fewestTelling = 5;

struct Evidence {
    const DoubleByte *kind = nullptr;
    int common = 0;
    int rare = 0;
    int telling = 0;
    int different = 0; ///< telling ones, each counted once: two sides that are alike say no more than one
    int joined = 0;    ///< right behind another one
    int bad = 0;       ///< bytes that are no character

    [[nodiscard]] int total() const { return common + rare; }

    [[nodiscard]] bool isPlausible() const
    {
        // Between letters of Latin a lone accented one takes the next letter for its second byte.
        const bool inRuns = kind->commonTrails.first > 0x7F || joined * 3 >= total();
        return common > 0 && rare * 6 <= common && bad * 100 <= common && inRuns;
    }
    [[nodiscard]] bool tells() const
    {
        return kind->tellingShare > 0 && different >= fewestTelling && telling * 100 >= kind->tellingShare * total();
    }
};

bool hasAny(const Bytes (&ranges)[2], unsigned byte)
{
    return ranges[0].has(byte) || ranges[1].has(byte);
}

Evidence weigh(const DoubleByte &kind, std::string_view bytes)
{
    Evidence evidence{&kind};
    const auto byteAt = [bytes](size_t at) {
        return at < bytes.size() ? unsigned(static_cast<unsigned char>(bytes[at])) : 0U;
    };
    std::bitset<0x10000> seen;
    bool afterWide = false;
    for (size_t at = 0; at < bytes.size();) {
        const unsigned lead = byteAt(at);
        const unsigned trail = byteAt(at + 1);
        if (lead < 0x80) {
            afterWide = false;
            ++at;
            continue;
        }
        if (!hasAny(kind.leads, lead) || !hasAny(kind.trails, trail)) {
            evidence.bad += at + 1 < bytes.size() ? 1 : 0; // the sample may end within a character
            afterWide = false;
            ++at;
            continue;
        }
        if (!kind.symbols.has(lead)) {
            const bool common = hasAny(kind.common, lead) && kind.commonTrails.has(trail);
            ++(common ? evidence.common : evidence.rare);
            if (kind.telling.has(lead)) {
                ++evidence.telling;
                seen.set(lead << 8 | trail);
            }
            evidence.joined += afterWide ? 1 : 0;
        }
        afterWide = true;
        at += 2;
    }
    evidence.different = int(seen.count());
    return evidence;
}

/// What the characters of a text beyond ASCII are.
class WordShape {
public:
    explicit WordShape(const QString &text)
    {
        bool afterLetter = false;
        for (const QChar character : text) {
            const bool letter = character.unicode() >= 0x80 && character.isLetter();
            m_letters += letter ? 1 : 0;
            m_small += letter && !character.isUpper() ? 1 : 0;
            m_latin += letter && character.script() == QChar::Script_Latin ? 1 : 0;
            m_joined += letter && afterLetter ? 1 : 0;
            if (character.unicode() >= 0x80 && !letter)
                ++(isTypographic(character) ? m_typographic : m_others);
            afterLetter = letter;
        }
    }

    /// Statistics are right about those.
    [[nodiscard]] bool isLong() const { return m_letters + m_typographic + m_others > 100; }

    [[nodiscard]] bool isOfWords() const
    {
        // Letters of Latin with an accent stand alone, those of other scripts together.
        const bool placed = m_latin > 0 ? m_joined * 3 <= m_letters : m_joined * 2 >= m_letters;
        return m_letters + m_typographic > 0 && placed && m_small * 2 >= m_letters &&
               m_others * 4 <= m_letters + m_typographic;
    }

private:
    /// Quotation marks, dashes, the ellipsis, the bullet.
    static bool isTypographic(QChar character)
    {
        return character.unicode() >= 0x2010 && character.unicode() <= 0x2026;
    }

    int m_letters = 0;
    int m_small = 0;
    int m_latin = 0;
    int m_joined = 0; ///< behind another letter
    int m_typographic = 0;
    int m_others = 0;
};

} // namespace

std::optional<QByteArray> likelyDoubleByteCharset(std::string_view bytes, const QList<QByteArray> &preferred)
{
    std::vector<Evidence> plausible;
    for (const DoubleByte &kind : doubleBytes) {
        if (const Evidence evidence = weigh(kind, bytes); evidence.isPlausible())
            plausible.push_back(evidence);
    }
    if (plausible.empty())
        return std::nullopt;
    std::stable_sort(plausible.begin(), plausible.end(), [](const Evidence &a, const Evidence &b) {
        if (a.tells() != b.tells())
            return a.tells();
        return qint64(a.rare) * b.total() < qint64(b.rare) * a.total();
    });
    if (plausible.front().total() < aHandful) {
        for (const QByteArray &charset : preferred) {
            for (const Evidence &evidence : plausible) {
                if (charset == evidence.kind->charset)
                    return charset;
            }
        }
    }
    return plausible.front().kind->charset;
}

std::optional<QByteArray> likelySingleByteCharset(std::string_view bytes, const QList<QByteArray> &preferred)
{
    for (const QByteArray &charset : preferred) {
        const Utf8Output output = transcodeToUtf8(bytes, charset, {});
        const WordShape shape(textOfUtf8({output.bytes.constData(), size_t(output.bytes.size())}));
        if (shape.isLong())
            return std::nullopt;
        if (output.undecodable == 0 && shape.isOfWords())
            return charset;
    }
    return std::nullopt;
}

} // namespace velmora

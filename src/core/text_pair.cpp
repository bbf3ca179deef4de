#include "core/text_pair.h"

#include "core/preferred_charsets.h"
#include "core/text_detect.h"
#include "core/text_transcode.h"
#include "core/utf8_text.h"

#include <QSet>

namespace velmora {

namespace {

/// Each of some twenty charsets is tried on this many bytes.
constexpr size_t enoughToCompare = 16 * 1024;

std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), size_t(bytes.size())};
}

bool isOpen(const RawText &side)
{
    return side.text.encodingGuessed && !side.text.binary && !side.bytes.isEmpty();
}

void decodeBy(const TextEncoding &encoding, RawText &side, const CancelFlag &cancel)
{
    if (side.text.encoding == encoding)
        return;
    side.text = decodeText(side.bytes, encoding, cancel);
    side.text.encodingGuessed = true;
}

/// The characters beyond ASCII of the part of a text that tells its encoding.
QSet<char16_t> charactersOf(std::string_view utf8)
{
    QSet<char16_t> characters;
    for (const QChar character : textOfUtf8(tellingText(utf8))) {
        if (character.unicode() >= 0x80)
            characters.insert(character.unicode());
    }
    return characters;
}

/// How many of the characters of `bytes` in `charset` are among `known`, from 0 to 1; 0 where they do not fit.
double shared(std::string_view bytes, const QByteArray &charset, const QSet<char16_t> &known)
{
    const Utf8Output output = transcodeToUtf8(bytes, charset, {});
    if (output.undecodable > 1)
        return 0;
    const QSet<char16_t> characters = charactersOf(viewOf(output.bytes));
    const auto both = std::count_if(characters.begin(), characters.end(),
                                    [&known](char16_t character) { return known.contains(character); });
    return characters.isEmpty() ? 0 : double(both) / double(characters.size());
}

/// The encoding of `side` beside a text in a sure one.
void settleBeside(const DecodedText &sure, RawText &side, const CancelFlag &cancel)
{
    const QSet<char16_t> known = charactersOf(sure.lines.bytes());
    if (known.isEmpty())
        return;
    QList<QByteArray> charsets = preferredCharsets();
    if (sure.encoding.markBytes().isEmpty())
        charsets.prepend(sure.encoding.charset());
    const QStringList names = TextEncoding::offeredNames();
    for (const QString &name : names) {
        const TextEncoding encoding = TextEncoding::fromName(name);
        if (!encoding.isAutomatic() && encoding.markBytes().isEmpty())
            charsets.append(encoding.charset());
    }
    const std::string_view sample = tellingBytes(viewOf(side.bytes)).substr(0, enoughToCompare);
    TextEncoding best = side.text.encoding;
    double most = std::max(0.5, shared(sample, best.charset(), known));
    for (const QByteArray &charset : std::as_const(charsets)) {
        const double common = shared(sample, charset, known);
        if (common > most) {
            most = common;
            best = TextEncoding::ofCharset(charset, false);
        }
    }
    decodeBy(best, side, cancel);
}

/// The encoding of two texts that were both guessed, where one fits both.
void settleTogether(RawText &left, RawText &right, const CancelFlag &cancel)
{
    const std::string_view leftSample = tellingBytes(viewOf(left.bytes));
    const std::string_view rightSample = tellingBytes(viewOf(right.bytes));
    const std::string both = std::string(leftSample) + '\n' + std::string(rightSample);
    const TextEncoding encoding = encodingByStatistics(both, preferredCharsets());
    if (encoding.charset() == "ISO-8859-1") // which every byte fits
        return;
    for (RawText *side : {&left, &right}) {
        if (fitsEncoding(tellingBytes(viewOf(side->bytes)), encoding.charset()))
            decodeBy(encoding, *side, cancel);
    }
}

} // namespace

void settleGuesses(RawText &left, RawText &right, const CancelFlag &cancel)
{
    if (isOpen(left) && isOpen(right))
        settleTogether(left, right, cancel);
    else if (isOpen(left))
        settleBeside(right.text, left, cancel);
    else if (isOpen(right))
        settleBeside(left.text, right, cancel);
}

} // namespace velmora

#include "core/text_encode.h"
#include "core/text_pair.h"
#include "core/text_scan.h"
#include "fuzz/targets.h"

namespace velmora::fuzz {

namespace {

void decodeAndEncode(const QByteArray &raw, const TextEncoding &asked)
{
    const DecodedText text = decodeText(raw, asked);
    const std::string_view utf8 = text.lines.bytes();
    require(!text.encoding.isAutomatic(), "an encoding is settled on");
    require(validUtf8Until(utf8, 0, utf8.size()) == utf8.size(), "what is decoded is valid");
    require((text.undecodable > 0) == (text.firstUndecodableLine >= 0), "a bad place has a line");
    for (qsizetype line = 0; line < text.lines.count(); ++line)
        require(text.lines.text(line).toUtf8() ==
                    QByteArray(text.lines.line(line).data(), qsizetype(text.lines.line(line).size())),
                "a line's text is its bytes");

    const EncodedText encoded = encodeText(utf8, text.encoding);
    require(encoded.ok() == encoded.failedCharacter.isEmpty(), "a failure names its character");
    if (encoded.ok())
        require(decodeText(encoded.bytes, text.encoding).lines.bytes() == utf8, "what is encoded is read again");
}

} // namespace

/// The first byte chooses the encoding, automatic detection among them.
void text(const QByteArray &input)
{
    static const QStringList names =
        TextEncoding::offeredNames() + QStringList{QStringLiteral("ISO-2022-JP"), QStringLiteral("UTF-7")};
    if (input.isEmpty())
        return;
    const QByteArray raw = input.mid(1);
    decodeAndEncode(raw, TextEncoding::fromName(names[static_cast<unsigned char>(input[0]) % names.size()]));

    RawText left{raw.first(raw.size() / 2), {}};
    RawText right{raw.sliced(raw.size() / 2), {}};
    left.text = decodeText(left.bytes, {});
    right.text = decodeText(right.bytes, {});
    settleGuesses(left, right);
    require(!left.text.encoding.isAutomatic() && !right.text.encoding.isAutomatic(), "two encodings are settled on");
}

} // namespace velmora::fuzz

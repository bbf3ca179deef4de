#include "platform/text_codec.h"

#include <QString>

#include <algorithm>
#include <array>

#include <windows.h>

namespace velmora {

namespace {

constexpr UINT gb18030 = 54936;
constexpr UINT gbk = 936;
constexpr UINT gb2312Hz = 52936;

/// Small, since it is the stretch in which a damaged character is looked for one by one.
constexpr size_t stretchSize = 1024;

UINT codePageOf(const QByteArray &charset)
{
    struct Known {
        const char *charset;
        UINT codePage;
    };
    static constexpr Known known[] = {
        {"BIG5", 950},          {"BIG5-HKSCS", 950},     {"GB18030", gb18030},     {"GBK", gbk},
        {"GB2312", 936},        {"EUC-CN", 936},         {"HZ-GB-2312", gb2312Hz}, {"SHIFT_JIS", 932},
        {"EUC-JP", 20932},      {"ISO-2022-JP", 50220},  {"EUC-KR", 949},          {"UHC", 949},
        {"ISO-2022-KR", 50225}, {"EUC-TW", 51950},       {"KOI8-R", 20866},        {"KOI8-U", 21866},
        {"TIS-620", 874},       {"MAC-CYRILLIC", 10007}, {"JOHAB", 1361},
    };
    for (const Known &entry : known) {
        if (charset.compare(entry.charset, Qt::CaseInsensitive) == 0)
            return entry.codePage;
    }
    for (const char *prefix : {"CP", "IBM", "WINDOWS-"}) {
        const qsizetype length = qsizetype(qstrlen(prefix));
        if (charset.size() > length && charset.left(length).compare(prefix, Qt::CaseInsensitive) == 0)
            return charset.mid(length).toUInt();
    }
    constexpr const char *isoPrefix = "ISO-8859-";
    if (charset.left(9).compare(isoPrefix, Qt::CaseInsensitive) == 0)
        return 28590 + charset.mid(9).toUInt();
    return 0;
}

class CodePageCodec final : public TextCodec {
public:
    explicit CodePageCodec(UINT codePage) : m_codePage(codePage)
    {
        for (UINT byte = 0; byte < m_isLead.size(); ++byte)
            m_isLead[byte] = IsDBCSLeadByteEx(codePage, static_cast<BYTE>(byte)) != FALSE;
    }

    Step decode(std::string_view bytes, QByteArray &utf8) override
    {
        size_t done = 0;
        while (done < bytes.size()) {
            const std::string_view stretch = wholeCharacters(wholeLines(bytes.substr(done)));
            if (stretch.empty())
                return {done, Stop::Incomplete};
            QString text;
            if (toUtf16(stretch, text)) {
                utf8.append(text.toUtf8());
                done += stretch.size();
                continue;
            }
            const Step step = decodeOneByOne(stretch, utf8);
            done += step.consumed;
            if (step.stop != Stop::End)
                return {done, step.stop};
        }
        return {done, Stop::End};
    }

    Step encode(std::string_view utf8, QByteArray &bytes) override
    {
        size_t done = 0;
        while (done < utf8.size()) {
            const std::string_view stretch = wholeLines(utf8.substr(done));
            QString text;
            if (!toUtf16(CP_UTF8, MB_ERR_INVALID_CHARS, stretch, text))
                return {done, Stop::Invalid};
            if (!fromUtf16(text, bytes)) {
                const Step step = encodeOneByOne(text, bytes);
                return {done + step.consumed, step.stop};
            }
            done += stretch.size();
        }
        return {done, Stop::End};
    }

    void finishDecoding(QByteArray &) override {}
    void finishEncoding(QByteArray &) override {}

private:
    /// Lines of about `stretchSize` bytes: no character reaches over a line feed, which is never the second byte of
    /// one.
    static std::string_view wholeLines(std::string_view bytes)
    {
        const size_t lineFeed = bytes.find('\n', std::min(stretchSize, bytes.size()));
        return bytes.substr(0, lineFeed == std::string_view::npos ? lineFeed : lineFeed + 1);
    }

    /// `bytes` without the start of a character at its end: not every system reports that as an error.
    [[nodiscard]] std::string_view wholeCharacters(std::string_view bytes) const
    {
        if (isStateful() || bytes.ends_with('\n'))
            return bytes;
        size_t whole = 0;
        while (whole < bytes.size()) {
            const size_t length = characterLength(bytes.substr(whole));
            if (length > bytes.size() - whole)
                break;
            whole += length;
        }
        return bytes.substr(0, whole);
    }

    [[nodiscard]] bool isStateful() const
    {
        return (m_codePage >= 50220 && m_codePage <= 50229) || m_codePage == gb2312Hz;
    }

    [[nodiscard]] bool toUtf16(std::string_view bytes, QString &text) const
    {
        return toUtf16(m_codePage, isStateful() ? 0 : MB_ERR_INVALID_CHARS, bytes, text);
    }

    [[nodiscard]] static bool toUtf16(UINT codePage, DWORD flags, std::string_view bytes, QString &text)
    {
        text.resize(qsizetype(bytes.size()) * 2);
        const int length = MultiByteToWideChar(codePage, flags, bytes.data(), int(bytes.size()),
                                               reinterpret_cast<wchar_t *>(text.data()), int(text.size()));
        text.resize(std::max(length, 0));
        return length > 0 || bytes.empty();
    }

    [[nodiscard]] bool fromUtf16(QStringView text, QByteArray &bytes) const
    {
        const bool reports = !isStateful() && m_codePage != gb18030;
        const DWORD flags = reports ? WC_NO_BEST_FIT_CHARS : m_codePage == gb18030 ? WC_ERR_INVALID_CHARS : 0;
        BOOL substituted = FALSE;
        const qsizetype filled = bytes.size();
        bytes.resize(filled + text.size() * 8 + 16);
        const int length = WideCharToMultiByte(m_codePage, flags, reinterpret_cast<const wchar_t *>(text.data()),
                                               int(text.size()), bytes.data() + filled, int(bytes.size() - filled),
                                               nullptr, reports ? &substituted : nullptr);
        bool ok = (length > 0 || text.isEmpty()) && !substituted;
        if (ok && isStateful()) {
            // These code pages put a substitute in silently; only the way back shows it.
            QString back;
            ok = toUtf16({bytes.constData() + filled, size_t(length)}, back) && back == text;
        }
        bytes.resize(ok ? filled + length : filled);
        return ok;
    }

    /// How many bytes the character at the start of `bytes` claims.
    [[nodiscard]] size_t characterLength(std::string_view bytes) const
    {
        const auto byteAt = [&](size_t index) { return static_cast<BYTE>(bytes[index]); };
        if (m_codePage == gb18030 && byteAt(0) > 0x80 && byteAt(0) < 0xFF)
            return bytes.size() > 1 && byteAt(1) >= 0x30 && byteAt(1) <= 0x39 ? 4 : 2;
        return m_isLead[byteAt(0)] ? 2 : 1;
    }

    Step decodeOneByOne(std::string_view bytes, QByteArray &utf8) const
    {
        size_t done = 0;
        while (done < bytes.size()) {
            // A damaged lead byte may claim a byte behind the last line feed.
            const std::string_view character = bytes.substr(done, characterLength(bytes.substr(done)));
            QString text;
            if (!toUtf16(character, text))
                return {done, Stop::Invalid};
            utf8.append(text.toUtf8());
            done += character.size();
        }
        return {done, Stop::End};
    }

    Step encodeOneByOne(QStringView text, QByteArray &bytes) const
    {
        size_t done = 0;
        while (!text.isEmpty()) {
            const bool pair = text.size() > 1 && text[0].isHighSurrogate() && text[1].isLowSurrogate();
            const QStringView character = text.first(pair ? 2 : 1);
            if (!fromUtf16(character, bytes))
                return {done, Stop::Invalid};
            done += size_t(character.toUtf8().size());
            text = text.sliced(character.size());
        }
        return {done, Stop::End};
    }

    UINT m_codePage;
    std::array<bool, 256> m_isLead{};
};

} // namespace

std::unique_ptr<TextCodec> TextCodec::open(const QByteArray &charset)
{
    UINT codePage = codePageOf(charset);
    // Nearly all of its text is in the part that every system has.
    if (codePage == gb18030 && !IsValidCodePage(codePage))
        codePage = gbk;
    if (codePage == 0 || !IsValidCodePage(codePage))
        return nullptr;
    return std::make_unique<CodePageCodec>(codePage);
}

} // namespace velmora

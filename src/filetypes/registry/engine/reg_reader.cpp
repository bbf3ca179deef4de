#include "filetypes/registry/engine/reg_reader.h"

#include "core/text_transcode.h"

#include <algorithm>
#include <optional>

namespace velmora {

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

bool isLineEnd(QChar c)
{
    return c == u'\n' || c == u'\r';
}

int digitOf(QChar c)
{
    const char16_t unit = c.unicode();
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    const char16_t low = unit | 0x20;
    return low >= u'a' && low <= u'f' ? low - u'a' + 10 : -1;
}

QByteArray utf16Data(QStringView text)
{
    QByteArray data(2 * (text.size() + 1), Qt::Uninitialized);
    char *out = data.data();
    for (const QChar c : text) {
        *out++ = char(c.unicode() & 0xff);
        *out++ = char(c.unicode() >> 8);
    }
    *out++ = 0;
    *out = 0;
    return data;
}

bool endsWithEmptyLine(QStringView text)
{
    if (!text.isEmpty() && text.back() == u'\n')
        text.chop(1);
    if (!text.isEmpty() && text.back() == u'\r')
        text.chop(1);
    return !text.isEmpty() && isLineEnd(text.back());
}

class RegReader {
public:
    RegReader(QStringView text, const QByteArray &charset) : m_text(text), m_charset(charset) {}

    RegReading read(const CancelFlag &cancel);

private:
    [[nodiscard]] bool atEnd() const { return m_at >= m_text.size(); }
    [[nodiscard]] QChar now() const { return atEnd() ? QChar(u'\n') : m_text[m_at]; }
    void skipBlanks()
    {
        while (!atEnd() && isBlank(m_text[m_at]))
            ++m_at;
    }
    /// Takes `c` if it comes next.
    bool take(char16_t c)
    {
        if (atEnd() || m_text[m_at] != c)
            return false;
        ++m_at;
        return true;
    }
    bool take(QLatin1String word)
    {
        if (!m_text.sliced(m_at).startsWith(word, Qt::CaseInsensitive))
            return false;
        m_at += word.size();
        return true;
    }
    void endLine();
    [[nodiscard]] bool restIsBlank();

    bool readHeader();
    bool readEntry();
    bool readKey();
    bool readValue();
    std::optional<QString> readQuoted();
    bool readData(RegistryValue &value);
    bool readDword(RegistryValue &value);
    bool readHex(RegistryValue &value);
    bool readBytes(QByteArray &data);
    bool skipContinuation();

    QStringView m_text;
    QByteArray m_charset;
    qsizetype m_at = 0;
    qsizetype m_line = 1;
    bool m_isOld = false; ///< of the header "REGEDIT4"
    bool m_inKey = false; ///< there is one that values belong to
    RegReading m_reading;
};

/// Goes to the start of the next line.
void RegReader::endLine()
{
    while (!atEnd() && !isLineEnd(m_text[m_at]))
        ++m_at;
    const bool isPair = m_at + 1 < m_text.size() && m_text[m_at] == u'\r' && m_text[m_at + 1] == u'\n';
    m_at += isPair ? 2 : 1;
    ++m_line;
}

bool RegReader::restIsBlank()
{
    skipBlanks();
    return isLineEnd(now()) || now() == u';';
}

bool RegReader::readHeader()
{
    while (!atEnd() && (isBlank(now()) || isLineEnd(now())))
        isLineEnd(now()) ? endLine() : skipBlanks();
    m_isOld = take(QLatin1String("REGEDIT4"));
    const bool isHeader = m_isOld || take(QLatin1String("Windows Registry Editor Version 5.00"));
    endLine();
    return isHeader;
}

bool RegReader::readKey()
{
    const bool isDeletion = take(u'-');
    qsizetype end = m_at;
    while (end < m_text.size() && !isLineEnd(m_text[end]))
        ++end;
    const qsizetype close = m_text.first(end).lastIndexOf(u']'); // a name may hold brackets itself
    QString path = m_text.sliced(m_at, std::max<qsizetype>(0, close - m_at)).toString();
    while (path.endsWith(u'\\'))
        path.chop(1);
    m_inKey = !path.isEmpty() && !isDeletion; // values behind a deletion belong to no key, as for the system's editor
    if (path.isEmpty())
        return false;
    m_at = close + 1;
    m_reading.tree.keys.push_back({path, isDeletion});
    return restIsBlank();
}

/// The text behind a quotation mark, up to the one that ends it; it may go over several lines.
std::optional<QString> RegReader::readQuoted()
{
    const qsizetype start = m_at;
    qsizetype run = m_at; // what is copied whole: all but the backslashes of escapes
    QString text;
    for (; !atEnd(); ++m_at) {
        const QChar c = m_text[m_at];
        if (c != u'"' && c != u'\\')
            continue;
        text += m_text.sliced(run, m_at - run);
        if (c == u'"') {
            m_line += m_text.sliced(start, m_at - start).count(u'\n');
            ++m_at;
            return text;
        }
        run = ++m_at; // the letter behind it stands for itself
    }
    return std::nullopt; // without an end it is one bad line, and not the rest of the file
}

bool RegReader::readDword(RegistryValue &value)
{
    quint32 number = 0;
    int digits = 0;
    for (skipBlanks(); digitOf(now()) >= 0; ++m_at, ++digits)
        number = number << 4 | quint32(digitOf(now()));
    value.type = RegistryType::Dword;
    for (int k = 0; k < 4; ++k)
        value.data.append(char(number >> (8 * k)));
    constexpr int most = 8;
    const bool isCutOff = atEnd() && digits < most; // editors write all of them
    return digits > 0 && digits <= most && !isCutOff;
}

/// A backslash at the end of a line leads on to the next one.
bool RegReader::skipContinuation()
{
    const qsizetype before = m_at;
    if (!take(u'\\'))
        return false;
    skipBlanks();
    if (atEnd() || !isLineEnd(now())) {
        m_at = before;
        return false;
    }
    endLine();
    skipBlanks();
    return true;
}

bool RegReader::readBytes(QByteArray &data)
{
    bool goesOn = false; // a comma promises more, which a file that is cut off does not have
    bool isContinued = false;
    for (;;) {
        skipBlanks();
        while (skipContinuation()) {
            isContinued = true;
            skipBlanks();
        }
        if (isLineEnd(now()) || now() == u';')
            return !(atEnd() && (goesOn || isContinued)); // editors end the last line of a long value, too
        int byte = digitOf(now());
        if (byte < 0)
            return false;
        ++m_at;
        if (const int low = digitOf(now()); low >= 0) {
            byte = byte << 4 | low;
            ++m_at;
        }
        data.append(char(byte));
        skipBlanks();
        goesOn = take(u',');
        if (!goesOn && !isLineEnd(now()) && now() != u';' && now() != u'\\')
            return false;
    }
}

bool RegReader::readHex(RegistryValue &value)
{
    value.type = RegistryType::Binary;
    if (take(u'(')) {
        quint32 type = 0;
        int digits = 0;
        for (; digitOf(now()) >= 0; ++m_at, ++digits)
            type = type << 4 | quint32(digitOf(now()));
        if (digits == 0 || digits > 8 || !take(u')'))
            return false;
        value.type = RegistryType(type);
    }
    if (!take(u':') || !readBytes(value.data))
        return false;
    const bool isText = value.type == RegistryType::String || value.type == RegistryType::ExpandString ||
                        value.type == RegistryType::MultiString;
    if (m_isOld && isText) {
        const Utf8Output utf8 =
            transcodeToUtf8({value.data.constData(), std::size_t(value.data.size())}, m_charset, CancelFlag());
        value.data = utf16Data(QString::fromUtf8(utf8.bytes));
        value.data.chop(2); // the digits have the closing zero
    }
    return true;
}

bool RegReader::readData(RegistryValue &value)
{
    skipBlanks();
    if (take(u'"')) {
        const std::optional<QString> text = readQuoted();
        if (text)
            value.data = utf16Data(*text);
        return text.has_value();
    }
    if (take(u'-')) {
        value.isDeletion = true;
        return true;
    }
    if (take(QLatin1String("dword:")))
        return readDword(value);
    return take(QLatin1String("hex")) && readHex(value);
}

bool RegReader::readValue()
{
    RegistryValue value;
    if (!take(u'@')) {
        std::optional<QString> name = take(u'"') ? readQuoted() : std::nullopt;
        if (!name)
            return false;
        value.name = std::move(*name);
    }
    skipBlanks();
    if (!take(u'=') || !readData(value) || !restIsBlank() || !m_inKey)
        return false;
    m_reading.tree.keys.back().values.push_back(std::move(value));
    return true;
}

bool RegReader::readEntry()
{
    if (restIsBlank())
        return true;
    return take(u'[') ? readKey() : readValue();
}

RegReading RegReader::read(const CancelFlag &cancel)
{
    m_reading.hasHeader = readHeader();
    while (m_reading.hasHeader && !atEnd() && !cancel.isCancelled()) {
        const qsizetype start = m_at;
        const qsizetype line = m_line;
        if (!readEntry()) {
            m_at = start; // the lines that a broken text or number went over may hold entries
            m_line = line;
            if (++m_reading.badLines == 1)
                m_reading.firstBadLine = line;
        }
        endLine();
    }
    m_reading.isVersion4 = m_isOld;
    m_reading.endsEmpty = endsWithEmptyLine(m_text);
    m_reading.tree.settle();
    return std::move(m_reading);
}

} // namespace

RegReading readRegText(QStringView text, const QByteArray &charset, const CancelFlag &cancel)
{
    return RegReader(text, charset).read(cancel);
}

} // namespace velmora

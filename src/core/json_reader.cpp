#include "core/json_reader.h"

#include "core/text_scan.h"
#include "core/utf8_text.h"

#include <QIODevice>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace velmora {

namespace {

constexpr qint64 bufferSize = 256 * 1024;
/// Brackets cost a byte each to write, and a level of memory to read.
constexpr std::size_t deepest = 512;
constexpr qsizetype longestText = 1'000'000;
/// No double needs more digits to be told from all others; a number of a million digits is an attack.
constexpr qsizetype longestNumber = 64;

bool isDigit(int c)
{
    return c >= '0' && c <= '9';
}

/// -1 where `c` is no hexadecimal digit.
int hexValue(int c)
{
    if (isDigit(c))
        return c - '0';
    const int lower = c | 0x20;
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// The grammar of numbers, section 6.
bool isNumber(const QByteArray &bytes)
{
    const char *at = bytes.constData();
    const auto digits = [&at] {
        const char *const begin = at;
        while (isDigit(*at))
            ++at;
        return at != begin;
    };
    at += *at == '-';
    const bool leadsWithZero = *at == '0';
    const char *const first = at;
    if (!digits() || (leadsWithZero && at - first > 1))
        return false;
    if (*at == '.' && (++at, !digits()))
        return false;
    if (*at == 'e' || *at == 'E') {
        ++at;
        at += *at == '+' || *at == '-';
        if (!digits())
            return false;
    }
    return at == bytes.constEnd();
}

} // namespace

JsonReader::JsonReader(QIODevice &device) : m_device(device)
{
    if (peek() == 0xEF && m_buffer.startsWith("\xEF\xBB\xBF"))
        m_at += 3;
}

int JsonReader::peek()
{
    if (m_at == m_buffer.size()) {
        m_before += m_at;
        m_at = 0;
        m_buffer.resize(bufferSize);
        m_buffer.resize(std::max<qint64>(0, m_device.read(m_buffer.data(), bufferSize)));
        if (m_buffer.isEmpty())
            return ended;
    }
    return static_cast<unsigned char>(m_buffer[m_at]);
}

bool JsonReader::take(char wanted)
{
    const bool isThere = peek() == static_cast<unsigned char>(wanted);
    m_at += isThere;
    return isThere;
}

int JsonReader::peekBehindBlanks()
{
    int c = peek();
    for (; c == ' ' || c == '\n' || c == '\r' || c == '\t'; c = peek())
        ++m_at;
    return c;
}

JsonReader::Token JsonReader::fault()
{
    return m_last = Token::Fault;
}

JsonReader::Token JsonReader::next()
{
    if (m_last == Token::End || m_last == Token::Fault)
        return m_last;
    const int c = peekBehindBlanks();
    if (m_levels.empty()) {
        if (!m_isWhole)
            return value();
        return c == ended ? m_last = Token::End : fault();
    }
    if (m_isBehindKey) {
        m_isBehindKey = false;
        return value();
    }
    if (m_levels.back().isObject)
        return inObject();
    if (c == ']')
        return close(Token::ListEnd);
    if (std::exchange(m_levels.back().hasItem, true) && (!take(',') || peekBehindBlanks() == ']'))
        return fault();
    return value();
}

JsonReader::Token JsonReader::inObject()
{
    if (peek() == '}')
        return close(Token::ObjectEnd);
    if (std::exchange(m_levels.back().hasItem, true) && !take(','))
        return fault();
    if (peekBehindBlanks() != '"' || !readText() || peekBehindBlanks() != ':' || !take(':'))
        return fault();
    m_isBehindKey = true;
    return m_last = Token::Key;
}

JsonReader::Token JsonReader::open(Token token)
{
    if (m_levels.size() == deepest)
        return fault();
    ++m_at;
    m_levels.push_back({token == Token::ObjectBegin});
    return m_last = token;
}

JsonReader::Token JsonReader::close(Token token)
{
    ++m_at;
    m_levels.pop_back();
    m_isWhole = m_levels.empty();
    return m_last = token;
}

JsonReader::Token JsonReader::value()
{
    const int c = peekBehindBlanks();
    if (c == '{')
        return open(Token::ObjectBegin);
    if (c == '[')
        return open(Token::ListBegin);
    m_isWhole = m_levels.empty();
    switch (c) {
    case '"':
        return readText() ? m_last = Token::Text : fault();
    case 't':
        return literal("true", Token::True);
    case 'f':
        return literal("false", Token::False);
    case 'n':
        return literal("null", Token::Null);
    default:
        return c == '-' || isDigit(c) ? number() : fault();
    }
}

JsonReader::Token JsonReader::literal(const char *rest, Token token)
{
    for (; *rest; ++rest) {
        if (!take(*rest))
            return fault();
    }
    return m_last = token;
}

JsonReader::Token JsonReader::number()
{
    m_bytes.clear();
    for (int c = peek(); isDigit(c) || (c != ended && std::strchr("+-.eE", c)); c = peek()) {
        m_bytes.append(static_cast<char>(c));
        ++m_at;
        if (m_bytes.size() > longestNumber)
            return fault();
    }
    return isNumber(m_bytes) ? m_last = Token::Number : fault();
}

std::optional<qint64> JsonReader::wholeNumber() const
{
    bool isWhole = false;
    const qint64 whole = m_bytes.toLongLong(&isWhole);
    if (isWhole)
        return whole;
    // Writers that know one kind of number only have 1e3 or 5.0 for a length.
    constexpr double mostExact = 9007199254740992.0;
    const double number = m_bytes.toDouble();
    if (std::abs(number) > mostExact || number != std::floor(number))
        return std::nullopt;
    return qint64(number);
}

bool JsonReader::readText()
{
    ++m_at; // the quote
    m_bytes.clear();
    m_text.clear();
    for (int c = peek(); c >= 0x20; c = peek()) {
        if (c == '"') {
            ++m_at;
            return flushText();
        }
        if (c == '\\') {
            ++m_at;
            if (!flushText() || !readEscape())
                return false;
        }
        const qsizetype begin = m_at;
        while (m_at < m_buffer.size() && m_buffer[m_at] != '"' && m_buffer[m_at] != '\\' &&
               static_cast<unsigned char>(m_buffer[m_at]) >= 0x20)
            ++m_at;
        m_bytes.append(m_buffer.constData() + begin, m_at - begin);
        if (m_bytes.size() + m_text.size() > longestText)
            return false;
    }
    return false;
}

bool JsonReader::flushText()
{
    const std::string_view bytes(m_bytes.constData(), std::size_t(m_bytes.size()));
    if (validUtf8Until(bytes, 0, bytes.size()) != bytes.size())
        return false;
    if (m_text.isEmpty())
        m_text = textOfUtf8(bytes);
    else
        m_text += textOfUtf8(bytes);
    m_bytes.clear();
    return true;
}

bool JsonReader::readEscape()
{
    static constexpr std::string_view names = "\"\\/bfnrt";
    static constexpr std::string_view meant = "\"\\/\b\f\n\r\t";
    const int c = peek();
    if (c == ended)
        return false;
    ++m_at;
    if (const std::size_t at = names.find(static_cast<char>(c)); at != std::string_view::npos) {
        m_text += QLatin1Char(meant[at]);
        return true;
    }
    if (c != 'u')
        return false;
    char16_t unit = 0;
    for (int digit = 0; digit < 4; ++digit) {
        const int value = hexValue(peek());
        if (value < 0)
            return false;
        unit = char16_t(unit * 16 + value);
        ++m_at;
    }
    m_text += QChar(unit);
    return true;
}

bool JsonReader::skip(Token first)
{
    Token token = first;
    for (qint64 open = 0;;) {
        if (token == Token::Fault || token == Token::End)
            return false;
        open += token == Token::ObjectBegin || token == Token::ListBegin;
        open -= token == Token::ObjectEnd || token == Token::ListEnd;
        if (open <= 0 && token != Token::Key)
            return true;
        token = next();
    }
}

} // namespace velmora

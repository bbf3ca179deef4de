#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

class QIODevice;

namespace velmora {

/// Reads a JSON text (RFC 8259) from a device token by token, so that memory does not grow with the text. Nothing about
/// the text is trusted: what is no JSON, is nested deeper than 512 levels or has a string of more than a million bytes
/// ends in a fault.
class JsonReader {
public:
    enum class Token : quint8 {
        ObjectBegin,
        ObjectEnd,
        ListBegin,
        ListEnd,
        Key,
        Text,
        Number,
        True,
        False,
        Null,
        End,
        Fault
    };

    /// `device` is open and outlives the reader. A byte-order mark at its start is passed over.
    explicit JsonReader(QIODevice &device);

    /// The next token. Each key is followed by the tokens of its value; behind the outermost value comes End. After End
    /// and Fault there is nothing but the same again.
    [[nodiscard]] Token next();

    /// Of the latest Key or Text. An escaped surrogate without its partner stays as it is.
    [[nodiscard]] const QString &text() const noexcept { return m_text; }
    /// Of the latest Number, if it is whole and fits.
    [[nodiscard]] std::optional<qint64> wholeNumber() const;

    /// Reads on behind the value whose first token is `first`; false when that is not to be had.
    [[nodiscard]] bool skip(Token first);

    /// The bytes that have been read as tokens: after a fault, about where it is.
    [[nodiscard]] qint64 position() const noexcept { return m_before + m_at; }

private:
    struct Level {
        bool isObject;
        bool hasItem = false;
    };
    static constexpr int ended = -1;

    [[nodiscard]] int peek();
    [[nodiscard]] bool take(char wanted);
    [[nodiscard]] int peekBehindBlanks();
    Token fault();
    Token close(Token token);
    Token open(Token token);
    Token inObject();
    Token value();
    Token number();
    Token literal(const char *rest, Token token);
    [[nodiscard]] bool readText();
    [[nodiscard]] bool readEscape();
    [[nodiscard]] bool flushText();

    QIODevice &m_device;
    QByteArray m_buffer;
    qsizetype m_at = 0;
    qint64 m_before = 0; ///< bytes before the buffer
    std::vector<Level> m_levels;
    bool m_isBehindKey = false;
    Token m_last = Token::Null; ///< End and Fault stay
    bool m_isWhole = false;     ///< the outermost value is over
    QByteArray m_bytes;         ///< of a string or number, as it stands
    QString m_text;
};

} // namespace velmora

#pragma once

#include <QByteArray>

#include <memory>
#include <string_view>

namespace velmora {

/// Converts between UTF-8 and one of the charsets that the system itself knows: the national ones, above all.
///
/// A converter carries state from call to call and is used for one text in one direction. Not for use by two threads.
class TextCodec {
public:
    /// Why a conversion stopped.
    enum class Stop : quint8 {
        End,        ///< everything was converted
        Incomplete, ///< the rest, a few bytes, is the start of a character
        Invalid,    ///< the rest starts with what the source charset or the target charset does not know
    };

    struct Step {
        size_t consumed = 0; ///< bytes of the input that were converted
        Stop stop = Stop::End;
    };

    /// The converter of `charset`, null when the system has none.
    [[nodiscard]] static std::unique_ptr<TextCodec> open(const QByteArray &charset);

    virtual ~TextCodec() = default;
    TextCodec(const TextCodec &) = delete;
    TextCodec &operator=(const TextCodec &) = delete;

    /// Appends what `bytes` mean to `utf8`, as far as they are whole and known.
    virtual Step decode(std::string_view bytes, QByteArray &utf8) = 0;

    /// Appends the last character where the charset lets it wait for an accent that may follow.
    virtual void finishDecoding(QByteArray &utf8) = 0;

    /// Appends `utf8`, whole characters, to `bytes` as far as the charset has them. Never writes a substitute.
    virtual Step encode(std::string_view utf8, QByteArray &bytes) = 0;

    /// Appends what the charset needs behind the last character that was encoded.
    virtual void finishEncoding(QByteArray &bytes) = 0;

protected:
    TextCodec() = default;
};

} // namespace velmora

#include "filetypes/binary/engine/byte_values.h"

#include <QDateTime>
#include <QStringDecoder>
#include <QTimeZone>
#include <QtEndian>

#include <bit>

namespace velmora {

namespace {

class Reader {
public:
    Reader(QByteArrayView bytes, ByteOrder order) : m_bytes(bytes), m_order(order) {}

    template <typename T>
    [[nodiscard]] bool has() const
    {
        return m_bytes.size() >= qsizetype(sizeof(T));
    }
    template <typename T>
    [[nodiscard]] T value() const
    {
        return m_order == ByteOrder::BigEndian ? qFromBigEndian<T>(m_bytes.data())
                                               : qFromLittleEndian<T>(m_bytes.data());
    }
    template <typename T>
    [[nodiscard]] QString number() const
    {
        return has<T>() ? QString::number(value<T>()) : QString();
    }
    [[nodiscard]] QByteArrayView bytes() const { return m_bytes; }

private:
    QByteArrayView m_bytes;
    ByteOrder m_order;
};

template <typename Float, typename Bits>
QString floatText(const Reader &reader)
{
    constexpr int digits = sizeof(Float) == 4 ? 9 : 17;
    return reader.has<Bits>() ? QString::number(double(std::bit_cast<Float>(reader.value<Bits>())), 'g', digits)
                              : QString();
}

QString timeText(const QDateTime &time, QLatin1String zone)
{
    const int year = time.date().year();
    return time.isValid() && year >= 1 && year <= 9999 ? time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + zone
                                                       : QString();
}

QString unixText(qint64 seconds)
{
    constexpr qint64 reach = 400'000'000'000; // beyond the year 9999 either way
    return seconds > -reach && seconds < reach
               ? timeText(QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC), QLatin1String(" UTC"))
               : QString();
}

QString fileTimeText(qint64 ticks)
{
    constexpr qint64 ticksPerSecond = 10'000'000;
    constexpr qint64 from1601To1970 = 11'644'473'600;
    return ticks < 0 ? QString() : unixText(ticks / ticksPerSecond - from1601To1970);
}

QString dosText(quint32 stamp)
{
    const QDate date(int(stamp >> 25) + 1980, int(stamp >> 21) & 15, int(stamp >> 16) & 31);
    const QTime time(int(stamp >> 11) & 31, int(stamp >> 5) & 63, int(stamp & 31) * 2);
    return date.isValid() && time.isValid() ? timeText(QDateTime(date, time, Qt::UTC), {}) : QString();
}

QString characterText(char32_t code)
{
    const QString name = QStringLiteral("U+") + QString::number(uint(code), 16).toUpper().rightJustified(4, u'0');
    return QChar::isPrint(code) ? QString::fromUcs4(&code, 1) + u' ' + name : name;
}

QString utf8Text(QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return {};
    const auto first = uchar(bytes.first());
    const int length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = bytes.size() < length ? QString() : decoder(bytes.first(length));
    const QList<uint> codes = text.toUcs4();
    return codes.size() == 1 && !decoder.hasError() ? characterText(codes.first()) : QString();
}

QString utf16Text(const Reader &reader, ByteOrder order)
{
    if (!reader.has<quint16>())
        return {};
    const char16_t unit = reader.value<quint16>();
    if (!QChar::isSurrogate(unit))
        return characterText(unit);
    const Reader next(reader.bytes().sliced(2), order);
    if (!QChar::isHighSurrogate(unit) || !next.has<quint16>() || !QChar::isLowSurrogate(next.value<quint16>()))
        return {};
    return characterText(QChar::surrogateToUcs4(unit, next.value<quint16>()));
}

} // namespace

std::array<QString, byteValueCount> byteValues(QByteArrayView bytes, ByteOrder order)
{
    const Reader reader(bytes, order);
    std::array<QString, byteValueCount> values;
    const auto set = [&values](ByteValue value, const QString &text) { values[std::size_t(value)] = text; };
    set(ByteValue::Int8, reader.number<qint8>());
    set(ByteValue::UInt8, reader.number<quint8>());
    set(ByteValue::Int16, reader.number<qint16>());
    set(ByteValue::UInt16, reader.number<quint16>());
    set(ByteValue::Int32, reader.number<qint32>());
    set(ByteValue::UInt32, reader.number<quint32>());
    set(ByteValue::Int64, reader.number<qint64>());
    set(ByteValue::UInt64, reader.number<quint64>());
    set(ByteValue::Float32, floatText<float, quint32>(reader));
    set(ByteValue::Float64, floatText<double, quint64>(reader));
    if (reader.has<quint32>()) {
        set(ByteValue::UnixTime32, unixText(reader.value<qint32>()));
        set(ByteValue::DosTime, dosText(reader.value<quint32>()));
    }
    if (reader.has<quint64>()) {
        set(ByteValue::UnixTime64, unixText(reader.value<qint64>()));
        set(ByteValue::FileTime, fileTimeText(reader.value<qint64>()));
    }
    set(ByteValue::Utf8, utf8Text(bytes));
    set(ByteValue::Utf16, utf16Text(reader, order));
    if (!bytes.isEmpty())
        set(ByteValue::Bits, QString::number(uchar(bytes.first()), 2).rightJustified(8, u'0'));
    return values;
}

} // namespace velmora

#include "core/iso_times.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace velmora {

namespace {

constexpr qint64 daySeconds = 86400;
constexpr qint64 quarter = 900;
constexpr qint64 epochDay = 2440588; ///< the Julian day of 1970-01-01

/// Rounds down, where "/" rounds towards 0.
constexpr qint64 floored(qint64 value, qint64 step)
{
    return value / step - (value % step < 0 ? 1 : 0);
}

/// The offset at `seconds`, asked for where its quarter is new.
template <typename Offsets, typename Ask>
qint64 offsetAt(Offsets &offsets, qint64 seconds, Ask ask)
{
    const qint64 number = floored(seconds, quarter);
    auto known = offsets.find(number);
    if (known == offsets.end()) {
        const qint64 begin = ask(number * quarter);
        const bool isOne = begin == ask(number * quarter + quarter - 1);
        known = offsets.emplace(number, isOne ? std::optional(begin) : std::nullopt).first;
    }
    return known->second ? *known->second : ask(seconds);
}

QDateTime inUtc(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}

void appendDigits(QByteArray &text, qint64 value, int digits)
{
    const QByteArray plain = QByteArray::number(value);
    text.append(std::max<qsizetype>(0, digits - plain.size()), '0').append(plain);
}

/// A point in time without a zone as ISO 8601 has it; empty for a day that no calendar has.
QByteArray plainText(qint64 seconds, int milliseconds)
{
    const qint64 days = floored(seconds, daySeconds);
    int year = 0;
    int month = 0;
    int day = 0;
    QDate::fromJulianDay(days + epochDay).getDate(&year, &month, &day);
    if (month == 0)
        return {};
    QByteArray text;
    text.reserve(24);
    if (year < 0 || year > 9999)
        text.append(year < 0 ? '-' : '+');
    appendDigits(text, std::abs(year), 4);
    const qint64 time = seconds - days * daySeconds;
    for (const auto &[separator, value] :
         {std::pair('-', qint64(month)), std::pair('-', qint64(day)), std::pair('T', time / 3600),
          std::pair(':', time / 60 % 60), std::pair(':', time % 60)}) {
        text.append(separator);
        appendDigits(text, value, 2);
    }
    if (milliseconds > 0) {
        text.append('.');
        appendDigits(text, milliseconds, 3);
    }
    return text;
}

/// Reads what `plainText` writes from the front of a text.
class PlainTime {
public:
    explicit PlainTime(QStringView text) : m_rest(text) {}

    [[nodiscard]] bool read()
    {
        const bool isNegative = m_rest.startsWith(u'-');
        const bool isLong = isNegative || m_rest.startsWith(u'+');
        m_rest = m_rest.mid(isLong);
        constexpr int longestYear = 7;
        const qsizetype yearDigits = isLong ? m_rest.indexOf(u'-') : 4;
        if (yearDigits < 4 || yearDigits > longestYear)
            return false;
        const qint64 year = digits(int(yearDigits));
        const qint64 month = behind(u'-');
        const qint64 day = behind(u'-');
        const qint64 hour = behind(u'T');
        const qint64 minute = behind(u':');
        const qint64 second = behind(u':');
        if (m_rest.startsWith(u'.')) {
            m_rest = m_rest.mid(1);
            m_milliseconds = digits(3);
        }
        const QDate date(int(isNegative ? -year : year), int(month), int(day));
        if (!m_ok || !date.isValid() || hour > 23 || minute > 59 || second > 59)
            return false;
        m_seconds = (date.toJulianDay() - epochDay) * daySeconds + hour * 3600 + minute * 60 + second;
        return true;
    }

    [[nodiscard]] QStringView rest() const { return m_rest; }
    [[nodiscard]] qint64 seconds() const { return m_seconds; }
    [[nodiscard]] qint64 milliseconds() const { return m_milliseconds; }

private:
    qint64 behind(QChar separator)
    {
        m_ok = m_ok && m_rest.startsWith(separator);
        m_rest = m_rest.mid(1);
        return digits(2);
    }

    qint64 digits(int count)
    {
        qint64 value = 0;
        m_ok = m_ok && m_rest.size() >= count;
        for (int i = 0; m_ok && i < count; ++i) {
            m_ok = m_rest[i] >= u'0' && m_rest[i] <= u'9';
            value = value * 10 + (m_rest[i].unicode() - u'0');
        }
        m_rest = m_rest.mid(count);
        return value;
    }

    QStringView m_rest;
    bool m_ok = true;
    qint64 m_seconds = 0;
    qint64 m_milliseconds = 0;
};

} // namespace

IsoTimes::Seconds IsoTimes::aheadOfUtc(Seconds utc)
{
    return offsetAt(m_byUtc, utc, [](Seconds at) { return inUtc(at).toLocalTime().offsetFromUtc(); });
}

IsoTimes::Seconds IsoTimes::aheadAtLocal(Seconds local)
{
    return offsetAt(m_byLocal, local, [](Seconds at) {
        const QDateTime fields = inUtc(at);
        return at - QDateTime(fields.date(), fields.time()).toSecsSinceEpoch();
    });
}

QByteArray IsoTimes::text(qint64 time)
{
    const Seconds seconds = floored(time, 1000);
    const int milliseconds = int(time - seconds * 1000);
    const Seconds local = seconds + aheadOfUtc(seconds);
    if (local - aheadAtLocal(local) == seconds)
        return plainText(local, milliseconds);
    const QByteArray inUtc = plainText(seconds, milliseconds);
    return inUtc.isEmpty() ? inUtc : inUtc + 'Z';
}

std::optional<qint64> IsoTimes::time(QStringView text)
{
    PlainTime plain(text);
    if (plain.read() && (plain.rest().isEmpty() || plain.rest() == u"Z")) {
        const Seconds utc = plain.rest().isEmpty() ? plain.seconds() - aheadAtLocal(plain.seconds()) : plain.seconds();
        return utc * 1000 + plain.milliseconds();
    }
    const QDateTime read = QDateTime::fromString(text.toString(), Qt::ISODateWithMs);
    return read.isValid() ? std::optional(read.toMSecsSinceEpoch()) : std::nullopt;
}

qint64 IsoTimes::time(QDate day, QTime clock)
{
    const qint64 milliseconds = clock.msecsSinceStartOfDay();
    const Seconds local = (day.toJulianDay() - epochDay) * daySeconds + milliseconds / 1000;
    return (local - aheadAtLocal(local)) * 1000 + milliseconds % 1000;
}

} // namespace velmora

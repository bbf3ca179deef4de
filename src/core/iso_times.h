#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QStringView>

#include <optional>
#include <unordered_map>

namespace velmora {

/// Times of files as ISO 8601 texts and back, for files that have many of them: what is asked of the system's time zone
/// is asked once for each quarter of an hour. For one thread. Times are milliseconds since 1970-01-01 UTC.
class IsoTimes {
public:
    /// The local time without a zone, with milliseconds where there are some: "2024-05-01T13:45:10.250". A time that
    /// this would not lead back to, as of the hour that comes twice in autumn, is written in UTC with a "Z", a year of
    /// more than four digits with a sign.
    [[nodiscard]] QByteArray text(qint64 time);

    /// The time that a text in any form of ISO 8601 means, to the millisecond; nothing where it has another form. A
    /// text without a zone is local.
    [[nodiscard]] std::optional<qint64> time(QStringView text);

    /// The time when a local calendar and clock show this; both must be valid.
    [[nodiscard]] qint64 time(QDate day, QTime clock);

private:
    using Seconds = qint64;
    /// Of quarters of an hour, the seconds that local time is ahead; nothing where that changes within one.
    using Offsets = std::unordered_map<qint64, std::optional<Seconds>>;

    [[nodiscard]] Seconds aheadOfUtc(Seconds utc);
    [[nodiscard]] Seconds aheadAtLocal(Seconds local);

    Offsets m_byUtc;
    Offsets m_byLocal;
};

} // namespace velmora

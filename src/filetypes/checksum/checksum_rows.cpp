#include "filetypes/checksum/checksum_rows.h"

#include "session/translate.h"

#include <QLocale>

namespace velmora {

namespace {

QString listedStatusText(ListedStatus status)
{
    static constexpr std::array<const char *, listedStatusCount> texts{
        QT_TRANSLATE_NOOP("Velmora", "Matches"),
        QT_TRANSLATE_NOOP("Velmora", "Differs"),
        QT_TRANSLATE_NOOP("Velmora", "Missing"),
        QT_TRANSLATE_NOOP("Velmora", "Unreadable"),
        QT_TRANSLATE_NOOP("Velmora", "Outside the folder"),
        QT_TRANSLATE_NOOP("Velmora", "Not listed"),
    };
    return Velmora::tr(texts[std::size_t(status)]);
}

/// As lists of two sides have it: a listed file that is not there is on the left side only.
PairStatus pairStatus(ListedStatus status)
{
    switch (status) {
    case ListedStatus::Ok:
        return PairStatus::Same;
    case ListedStatus::Differs:
        return PairStatus::Changed;
    case ListedStatus::NotListed:
        return PairStatus::RightOnly;
    case ListedStatus::Missing:
    case ListedStatus::Unreadable:
    case ListedStatus::Outside:
        break;
    }
    return PairStatus::LeftOnly;
}

} // namespace

QString checksumLabel(ChecksumAlgorithm algorithm)
{
    static constexpr std::array<QLatin1String, checksumAlgorithms.size()> labels{
        QLatin1String("MD5"), QLatin1String("SHA-1"), QLatin1String("SHA-256"), QLatin1String("CRC-32")};
    return labels[std::size_t(algorithm)];
}

ChecksumRows::ChecksumRows(QList<CheckedFile> files) : RowSource(Velmora::tr("File")), m_files(std::move(files)) {}

KeyedRow ChecksumRows::row(qsizetype number) const
{
    const CheckedFile &file = m_files[number];
    return {file.entry.name, pairStatus(file.status), digestText(file.entry.digest), digestText(file.found)};
}

QStringList ChecksumRows::headings() const
{
    return {Velmora::tr("Status"), Velmora::tr("File"), Velmora::tr("Listed"), Velmora::tr("Found")};
}

QString ChecksumRows::text(qsizetype number, int column) const
{
    return column == Status ? listedStatusText(m_files[number].status) : RowSource::text(number, column);
}

bool ChecksumRows::isBefore(qsizetype one, qsizetype other, int column) const
{
    return column == Status ? m_files[one].status < m_files[other].status : RowSource::isBefore(one, other, column);
}

QString checksumCheckText(const ChecksumCheck &check)
{
    QStringList parts;
    for (std::size_t i = 0; i < listedStatusCount; ++i) {
        const auto status = ListedStatus(i);
        if (check.count(status) > 0 || status == ListedStatus::Ok)
            parts.append(QStringLiteral("%1: %2").arg(listedStatusText(status),
                                                      QLocale().toString(qint64(check.count(status)))));
    }
    return parts.join(QStringLiteral("   "));
}

} // namespace velmora

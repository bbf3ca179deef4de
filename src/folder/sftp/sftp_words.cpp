#include "folder/sftp/sftp_words.h"

#include "session/translate.h"

#include <QDir>
#include <QLocale>

#include <cmath>

namespace velmora {

namespace {

QString number(qint64 value)
{
    return QLocale().toString(value);
}

} // namespace

RemoteWords resultWords(const RemoteComparing &comparing)
{
    const RemoteComparison &found = comparing.comparison;
    QStringList details;
    if (found.unlisted > 0)
        details.append(
            Velmora::tr("Not listed, for line feeds or tabs in their names: %1").arg(number(found.unlisted)));
    if (comparing.problems > 0)
        details.append(Velmora::tr("Could not be read: %1").arg(number(comparing.problems)));
    if (found.files.right == 0 && found.unlisted == 0)
        details.append(Velmora::tr("If the remote folder is a link, put a / behind it."));
    return {
        Velmora::tr("Compare finished — %1 local file(s), %2 remote file(s). Double-click a \"Different size\" row to "
                    "fetch remote file and compare content.")
            .arg(found.files.left)
            .arg(found.files.right),
        details.join(QStringLiteral("   "))};
}

QString clockText(const std::optional<ClockSkew> &skew)
{
    if (!skew)
        return {};
    const auto seconds = qint64(std::llround(std::abs(skew->seconds)));
    if (std::abs(skew->seconds) <= skew->uncertainty)
        return Velmora::tr("Host clock: as here");
    const QString around = QLocale().toString(skew->uncertainty, 'f', 1);
    return (skew->seconds > 0 ? Velmora::tr("Host clock: %1 s ahead (± %2)")
                              : Velmora::tr("Host clock: %1 s behind (± %2)"))
        .arg(number(seconds), around);
}

QString hashingText(const QString &path)
{
    return Velmora::tr("Computing SHA-256: %1").arg(QDir::toNativeSeparators(path));
}

QString countsText(const PairCounts &counts, qsizetype hidden, qsizetype unlisted)
{
    QStringList parts{Velmora::tr("Same: %1").arg(number(counts.same)),
                      Velmora::tr("Different: %1").arg(number(counts.changed)),
                      Velmora::tr("Local only: %1").arg(number(counts.leftOnly)),
                      Velmora::tr("Remote only: %1").arg(number(counts.rightOnly))};
    if (hidden > 0)
        parts.append(Velmora::tr("Hidden: %1").arg(number(hidden)));
    if (unlisted > 0)
        parts.append(Velmora::tr("Not listed: %1").arg(number(unlisted)));
    return parts.join(QStringLiteral("   "));
}

} // namespace velmora

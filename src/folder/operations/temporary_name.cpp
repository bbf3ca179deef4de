#include "folder/operations/temporary_name.h"

#include <QRandomGenerator>

namespace velmora {

namespace {

constexpr int digits = 16;
const QLatin1String prefix(".velmora-");
const QLatin1String suffix(".tmp");

} // namespace

QString temporaryName()
{
    return prefix + QStringLiteral("%1").arg(QRandomGenerator::global()->generate64(), digits, 16, QLatin1Char('0')) +
           suffix;
}

bool isTemporaryName(QStringView name)
{
    const auto isDigit = [](QChar c) { return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f'); };
    const QStringView number = name.mid(prefix.size(), digits);
    return name.size() == prefix.size() + digits + suffix.size() && name.startsWith(prefix) && name.endsWith(suffix) &&
           std::all_of(number.begin(), number.end(), isDigit);
}

} // namespace velmora

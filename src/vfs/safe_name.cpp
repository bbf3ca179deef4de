#include "vfs/safe_name.h"

#include <QList>
#include <QString>

#include <algorithm>

namespace velmora {

namespace {

bool isDevice(QStringView name)
{
    const qsizetype dot = name.indexOf(u'.');
    const QString stem = (dot < 0 ? name : name.first(dot)).trimmed().toString().toUpper();
    if (stem.size() == 4 && (stem.startsWith(u"COM") || stem.startsWith(u"LPT")))
        return stem.back() >= u'1' && stem.back() <= u'9';
    return stem == u"CON" || stem == u"PRN" || stem == u"AUX" || stem == u"NUL";
}

} // namespace

bool canStandInFolder(QStringView name)
{
    constexpr qsizetype mostBytes = 255;
    const bool endsPlainly = !name.isEmpty() && name.back() != u'.' && name.back() != u' ';
    return endsPlainly && name.toUtf8().size() <= mostBytes && !isDevice(name) &&
           std::none_of(name.begin(), name.end(),
                        [](QChar unit) { return unit < u' ' || QStringView(u"/\\:*?\"<>|").contains(unit); });
}

bool staysInFolder(QStringView relativePath)
{
    const auto parts = relativePath.split(u'/');
    return !relativePath.contains(QChar::Null) && std::all_of(parts.begin(), parts.end(), [](QStringView part) {
        return !part.isEmpty() && part != u"." && part != u"..";
    });
}

} // namespace velmora

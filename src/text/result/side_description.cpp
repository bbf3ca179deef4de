#include "text/result/side_description.h"

#include "session/document/text_description.h"
#include "session/translate.h"

#include <QStringList>

namespace velmora {

QString describeFormats(const LoadedText &left, const LoadedText &right)
{
    return Velmora::tr("Left: %1 [%2] | Right: %3 [%4]")
        .arg(describeEncoding(left), describeContent(left), describeEncoding(right), describeContent(right));
}

QString leftOutRemark(const QStringList &expressions)
{
    return Velmora::tr("Too slow and left out of this comparison, unimportant text: %1")
        .arg(expressions.join(QStringLiteral(" · ")));
}

QString slownessRemark(const CompareRemarks &remarks)
{
    if (!remarks.expressionsLeftOut.isEmpty())
        return leftOutRemark(remarks.expressionsLeftOut);
    return Velmora::tr("An expression of the unimportant text is too slow for %1 lines, which count as important")
        .arg(remarks.expressionsGivenUp);
}

} // namespace velmora

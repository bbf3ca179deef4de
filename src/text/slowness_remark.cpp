#include "text/slowness_remark.h"

#include "session/translate.h"
#include "text/engine/line_diff_engine.h"

namespace velmora {

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

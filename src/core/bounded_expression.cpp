#include "core/bounded_expression.h"

namespace velmora {

QRegularExpression boundedExpression(const QString &pattern, QRegularExpression::PatternOptions options)
{
    // An expression with nested repeats, as (a+)+$, tries a number of ways that doubles with each character. The engine
    // counts them; its own limit of ten million costs a twentieth of a second on every line. A lower limit that
    // the pattern sets for itself holds.
    return QRegularExpression(QStringLiteral("(*LIMIT_MATCH=1000000)") + pattern, options);
}

} // namespace velmora

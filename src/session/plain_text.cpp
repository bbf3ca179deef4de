#include "session/plain_text.h"

#include <QTextDocument>

namespace velmora {

QString plainToolTip(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    // As tool tips that are no markup, it is not wrapped.
    return QLatin1String("<p style='white-space:pre'>") + text.toHtmlEscaped() + QLatin1String("</p>");
}

} // namespace velmora

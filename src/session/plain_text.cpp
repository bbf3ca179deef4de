#include "session/plain_text.h"

#include <QTextDocument>

namespace velmora {

QString plainToolTip(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    return QLatin1String("<p>") + text.toHtmlEscaped().replace(u'\n', QLatin1String("<br>")) + QLatin1String("</p>");
}

} // namespace velmora

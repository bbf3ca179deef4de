#include "session/pane/text_font.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

namespace velmora {

QFont textFont(const QString &family, qreal pointSize)
{
    QFont font = family.isEmpty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QFont(family);
    if (family.isEmpty() && !QFontInfo(font).fixedPitch()) {
        font.setFamilies(
            {QStringLiteral("Consolas"), QStringLiteral("DejaVu Sans Mono"), QStringLiteral("Courier New")});
    }
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPointSizeF(pointSize);
    return font;
}

} // namespace velmora

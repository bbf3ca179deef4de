#pragma once

#include <QString>
#include <QTextDocument>

namespace velmora {

/// `text` as a tool tip that shows it as it stands: the toolkit takes what looks like markup for markup, and a file may
/// be called "<b>".
[[nodiscard]] inline QString plainToolTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace velmora

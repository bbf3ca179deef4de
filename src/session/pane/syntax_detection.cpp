#include "session/pane/syntax_detection.h"

#include "session/pane/line_source.h"
#include "session/pane/syntax_colouring.h"
#include "text/syntax/syntax_library.h"

#include <QFileInfo>

namespace velmora {

std::shared_ptr<const SyntaxDefinition> detectSyntax(const QString &path, const LineSource &text)
{
    const QString firstLine = text.count() > 0 ? colouredPart(text.bytes(0)) : QString();
    return SyntaxLibrary::bundled().detect(QFileInfo(path).fileName(), firstLine);
}

} // namespace velmora

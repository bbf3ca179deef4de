#include "text/syntax_choice.h"

#include "session/pane/pane_scene.h"
#include "session/pane/syntax_detection.h"
#include "session/session_record.h"
#include "settings/options/text_session_options.h"
#include "text/syntax/syntax_library.h"
#include "text/view/diff_document.h"

namespace velmora {

namespace {

using Definition = std::shared_ptr<const SyntaxDefinition>;

} // namespace

void chooseSyntax(PaneScene &scene, const DiffDocument &document, const TextSessionOptions &options,
                  const SessionPaths &paths)
{
    const QString rightType = options.sameAsLeftFileFormat ? options.leftFileType : options.rightFileType;
    const bool leftIsOpen = leavesFileTypeOpen(options.leftFileType);
    const bool rightIsOpen = leavesFileTypeOpen(rightType);
    const SyntaxLibrary &library = SyntaxLibrary::bundled();
    Definition left =
        leftIsOpen ? detectSyntax(paths.left, document.source(Side::Left)) : library.named(options.leftFileType);
    Definition right = rightIsOpen ? detectSyntax(paths.right, document.source(Side::Right)) : library.named(rightType);
    if (!left && leftIsOpen)
        left = right;
    else if (!right && rightIsOpen)
        right = left;
    scene.colouring(Side::Left).setDefinition(std::move(left));
    scene.colouring(Side::Right).setDefinition(std::move(right));
}

} // namespace velmora

#include "text/edit/text_edit_job.h"

#include "session/pane/edit_buffer.h"

namespace velmora {

TextEditResult readText(const TextOrigin &origin, int tabWidth, const CancelFlag &cancel, Progress &progress)
{
    progress.report(0, 0, 0);
    TextEditResult result;
    QByteArray raw;
    result.loaded = loadText(origin, raw, cancel);
    if (!result.loaded || cancel.isCancelled())
        return result;
    result.loaded->shown = keptText(origin, *result.loaded);
    result.document = plainDocumentOf(*result.loaded, tabWidth);
    return result;
}

std::shared_ptr<const PlainDocument> plainDocumentOf(const LoadedText &loaded, int tabWidth)
{
    std::shared_ptr<const EditSnapshot> text = loaded.shown;
    if (!text)
        text = EditBuffer(loaded.text.lines).snapshot();
    return std::make_shared<PlainDocument>(text, tabWidth);
}

} // namespace velmora

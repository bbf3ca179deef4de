#include "session/document/loaded_text.h"

#include "merge/engine/conflict_markers.h"
#include "session/pane/edit_buffer.h"

namespace velmora {

std::optional<LoadedText> loadText(const TextOrigin &origin, QByteArray &raw, const CancelFlag &cancel)
{
    LoadedText loaded;
    if (origin.loaded) {
        loaded = *origin.loaded;
        if (origin.edited)
            loaded.text.lines = origin.edited->toLines();
        loaded.hasConflictMarkers = hasConflictMarkers(loaded.text.lines);
        return loaded;
    }
    if (origin.path.isEmpty())
        return loaded;
    loaded.stamp = FileStamp::of(origin.path);
    const FileContents contents = readFile(origin.path, cancel);
    if (!contents.ok())
        return std::nullopt;
    loaded.missing = false;
    loaded.text = decodeText(contents.bytes, origin.encoding, cancel);
    loaded.hasConflictMarkers = hasConflictMarkers(loaded.text.lines);
    raw = contents.bytes;
    return loaded;
}

std::shared_ptr<const EditSnapshot> keptText(const TextOrigin &origin, const LoadedText &loaded)
{
    if (origin.edited)
        return origin.edited;
    return origin.shown && origin.shown->holdsSameAs(loaded.text.lines) ? origin.shown : nullptr;
}

TextLoss lossOfSaving(const LoadedText &loaded)
{
    if (loaded.text.binary || loaded.text.tooLarge)
        return TextLoss::NoText;
    return loaded.text.undecodable > 0 ? TextLoss::Undecodable : TextLoss::None;
}

} // namespace velmora

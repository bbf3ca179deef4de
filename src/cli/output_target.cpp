#include "cli/output_target.h"

#include "cli/command.h"
#include "core/safe_file.h"

#include <QIODevice>

namespace velmora::cli {

int writeTo(const std::optional<QString> &path, const Streams &streams,
            const std::function<Written(QIODevice &device)> &write)
{
    Written written;
    if (path) {
        const SaveResult saved = saveFile(*path, [&](QIODevice &device) { return (written = write(device)).ok; });
        if (!saved.ok())
            return fail(streams, QStringLiteral("%1: %2").arg(*path, saved.error));
    } else if (written = write(streams.output); !written.ok) {
        return fail(streams, QStringLiteral("standard output: %1").arg(streams.output.errorString()));
    }
    return written.differences ? DifferencesFound : NoDifferences;
}

} // namespace velmora::cli

#include "session/shown_path.h"

#include "core/path_names.h"
#include "core/visible_name.h"
#include "session/passing_copies.h"

namespace velmora {

QString shownPath(const QString &path)
{
    const QString origin = originOfCopy(path);
    return visibleName(origin.isEmpty() ? nativePath(path) : origin);
}

} // namespace velmora

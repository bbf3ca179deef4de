#include "text/view/line_source.h"

namespace velmora {

QString LineSource::text(qsizetype line) const
{
    const std::string_view utf8 = bytes(line);
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

} // namespace velmora

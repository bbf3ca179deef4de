#include "text/view/line_source.h"

#include "core/utf8_text.h"

namespace velmora {

QString LineSource::text(qsizetype line) const
{
    return textOfUtf8(bytes(line));
}

} // namespace velmora

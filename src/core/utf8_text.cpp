#include "core/utf8_text.h"

namespace velmora {

QString textOfUtf8(std::string_view utf8)
{
    QString marks;
    for (; utf8.starts_with("\xEF\xBB\xBF"); utf8.remove_prefix(3))
        marks += QChar(QChar::ByteOrderMark);
    const QString rest = QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
    return marks.isEmpty() ? rest : marks + rest;
}

} // namespace velmora

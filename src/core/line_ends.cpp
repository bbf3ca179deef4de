#include "core/line_ends.h"

namespace velmora {

namespace {

TextLines joinedByReturns(const TextLines &text)
{
    QByteArray whole;
    whole.reserve(qsizetype(text.bytes().size()));
    for (qsizetype index = 0; index < text.count(); ++index) {
        const std::string_view line = text.line(index);
        if (index > 0)
            whole.append('\r');
        whole.append(line.data(), qsizetype(line.size()));
    }
    const bool ends = text.lineEnd(text.count() - 1) != LineEnd::None;
    TextLinesBuilder builder;
    builder.appendFirst(std::move(whole), ends ? LineEnd::Cr : LineEnd::None);
    return builder.take();
}

} // namespace

std::optional<LineEndStyle> lineEndStyleFromName(const QString &name)
{
    if (name == QLatin1String("CRLF"))
        return LineEndStyle::CrLf;
    if (name == QLatin1String("LF") || name == QLatin1String("Unix"))
        return LineEndStyle::Lf;
    if (name == QLatin1String("CR") || name == QLatin1String("Mac"))
        return LineEndStyle::Cr;
    return std::nullopt;
}

QString lineEndName(LineEnd end)
{
    switch (end) {
    case LineEnd::None:
        break;
    case LineEnd::Lf:
        return QStringLiteral("LF");
    case LineEnd::CrLf:
        return QStringLiteral("CRLF");
    case LineEnd::Cr:
        return QStringLiteral("CR");
    }
    return {};
}

TextLines withLineEnds(const TextLines &text, LineEndStyle style)
{
    if (style == LineEndStyle::Mixed || text.isEmpty())
        return text;
    if (style == LineEndStyle::Cr)
        return joinedByReturns(text);
    const LineEnd end = style == LineEndStyle::CrLf ? LineEnd::CrLf : LineEnd::Lf;
    TextLinesBuilder builder;
    builder.reserve(qsizetype(text.bytes().size()) + (end == LineEnd::CrLf ? text.count() : 0), text.count());
    for (qsizetype index = 0; index < text.count(); ++index) {
        std::string_view rest = text.line(index);
        for (auto at = rest.find('\r'); at != std::string_view::npos; at = rest.find('\r')) {
            builder.append(rest.substr(0, at), end);
            rest.remove_prefix(at + 1);
        }
        builder.append(rest, text.lineEnd(index) == LineEnd::None ? LineEnd::None : end);
    }
    return builder.take();
}

} // namespace velmora

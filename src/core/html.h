#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>

namespace velmora {

class OutputBuffer;

/// Appends `utf8` to `html` with the characters that mean something in HTML text and attribute values ("&", "<", ">",
/// both quotation marks) written as references. A control character that no HTML document may hold becomes U+FFFD.
void appendHtmlEscaped(QByteArray &html, std::string_view utf8);

/// Writes `text`, escaped, between the markup that opens an element and the markup that closes it; both may be empty.
void writeHtmlElement(OutputBuffer &page, std::string_view open, const QString &text, std::string_view close);

} // namespace velmora

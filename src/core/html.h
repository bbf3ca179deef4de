#pragma once

#include <QByteArray>

#include <string_view>

namespace velmora {

/// Appends `utf8` to `html` with the characters that mean something in HTML text and attribute values ("&", "<", ">",
/// both quotation marks) written as references. A control character that no HTML document may hold becomes U+FFFD.
void appendHtmlEscaped(QByteArray &html, std::string_view utf8);

} // namespace velmora

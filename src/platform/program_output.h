#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {

/// What a console program has written to a pipe, in the system's charset for that: on Windows the code page that
/// consoles have by default, which is another one than that of windows; elsewhere the locale's. Bytes without a meaning
/// become substitutes.
[[nodiscard]] QString decodeProgramOutput(const QByteArray &output);

} // namespace velmora

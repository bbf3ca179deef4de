#pragma once

#include <QString>
#include <QStringView>

namespace velmora {

/// `name`, a file name or a path, as it can be shown on one line, in the order of its characters, without looking like
/// another name: each hidden character (`core/hidden_characters.h`), tabulator and unpaired surrogate stands as its
/// code in square brackets ("a[RLO]b", "a[LF]b"), and each byte that is no text in hexadecimal ("a[xE9]b"). The joiners
/// within emoji and within scripts that write with them stay. For lists, logs and sentences only: what is shown is not
/// a name that leads back to the file.
[[nodiscard]] QString visibleName(QStringView name);

} // namespace velmora

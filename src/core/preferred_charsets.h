#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace velmora {

/// Says which language the interface speaks ("zh_CN"). May be called from any thread.
void setInterfaceLanguage(const QString &locale);

/// The charsets, beside Unicode, that texts in the languages of the interface and of the system are stored in: those of
/// the interface first, each once, by the names that decoders know; WINDOWS-1252 is always the last. May be called from
/// any thread.
[[nodiscard]] QList<QByteArray> preferredCharsets();

} // namespace velmora

#pragma once

#include <QDir>
#include <QString>

namespace velmora {

// Texts that name a tree which is no path of this system: a state of a repository (`git_place.h`) and a folder of a
// host (`remote_place.h`). They stand where a folder can, as does the path of a snapshot file, which is one
// (`snapshot_source.h`).

[[nodiscard]] bool isOtherTree(const QString &text);
/// Such a text in the one form that it has for each tree; what it leaves out is that of `folder`.
[[nodiscard]] QString otherTreeText(const QString &text, const QDir &folder = {});
/// The folder around it; empty where there is none.
[[nodiscard]] QString otherTreeAround(const QString &text);
/// The last name in it, alone and with what tells it from one on the disk.
[[nodiscard]] QString otherTreeName(const QString &text);
[[nodiscard]] QString otherTreeTitle(const QString &text);

} // namespace velmora

#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace velmora {

/// One file of a listing.
struct ListedSize {
    QString path; ///< relative, with "/"; as `nameFromNative` makes it
    qint64 size = 0;

    friend bool operator==(const ListedSize &, const ListedSize &) = default;
};

/// The files of a folder and below.
struct RemoteListing {
    std::vector<ListedSize> files; ///< by path, in the order of the code units; no path twice
    qsizetype unlisted = 0;        ///< files with a line feed or a tab in their names, and lines that make no sense
};

/// Reads what `listCommand` writes for `folder`, as it was given to the command: lines of a path, a tab and a size. Of
/// the second form of the command paths begin with the folder, and where the host's stat knows no escapes the
/// characters "\t" stand for the tab. A name with a line feed looks like lines without a size and one with: all of them
/// are one file that is not listed. What would lead out of the folder is none either.
[[nodiscard]] RemoteListing parseRemoteListing(const QByteArray &output, const QString &folder);

} // namespace velmora

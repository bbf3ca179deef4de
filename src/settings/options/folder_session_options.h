#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

class QJsonObject;

namespace velmora {

/// How two files that are both present are compared (the numbers are stored). Any other number means `Rules`.
enum class CompareMethod : qint32 {
    Rules = 0,  ///< equal size and modification time are enough, else the content decides
    Crc = 1,    ///< the CRC-32 of each file
    Binary = 2, ///< the size, then the content block by block
};

/// Pairs entries of different names: those whose names match `left` with those that match `right`. "*" stands for any
/// run of characters, "?" for any one; the whole name counts, without regard to case.
struct ManualAlignRule {
    QString left;
    QString right;

    friend bool operator==(const ManualAlignRule &, const ManualAlignRule &) = default;
};

/// A named group of masks that can be switched on as a filter.
struct FileFormatGroup {
    QString name;
    QString mask; ///< masks separated by ";"
    bool on = false;

    friend bool operator==(const FileFormatGroup &, const FileFormatGroup &) = default;
};

/// The groups that a record starts with, all switched off.
[[nodiscard]] QList<FileFormatGroup> defaultFileFormats();

/// The options of a folder comparison: how files are compared, which entries are shown, what may be written. A value
/// type.
struct FolderSessionOptions {
    bool leftReadOnly = false;
    bool rightReadOnly = false;
    // Wildcard masks of bare names; an empty list of inclusions includes everything.
    QStringList includeFiles;
    QStringList excludeFiles;
    QStringList includeFolders;
    QStringList excludeFolders;
    QStringList otherExclude;   ///< further masks of files that are not shown
    bool excludeOsFiles = true; ///< leaves out files that carry the operating system's "system" attribute
    bool showHidden = false;    ///< lists hidden files and folders as well
    QList<ManualAlignRule> alignOverrides;
    qint32 compareBasis = 0;     ///< a `CompareMethod`; files may hold any number
    qint32 timeToleranceSec = 0; ///< modification times this far apart are still equal; 0 asks for exact equality
    bool showLogPanel = true;
    bool showFilterBar = true;
    QList<FileFormatGroup> fileFormats = defaultFileFormats();

    friend bool operator==(const FolderSessionOptions &, const FolderSessionOptions &) = default;
};

/// The method that a stored number stands for.
[[nodiscard]] CompareMethod compareMethod(qint32 compareBasis);

/// The record as session files hold it, with the two sets of bare file names that travel with it. `otherExclude`, the
/// view switches and the file formats are not part of it; "showHidden" is only while it is on.
[[nodiscard]] QJsonObject toJson(const FolderSessionOptions &options, const QSet<QString> &excludedNames,
                                 const QSet<QString> &ignoredNames);

/// Reads `object` over the three others. A missing or mistyped key leaves what belongs to it alone; a list that is
/// there replaces the one before.
void fromJson(const QJsonObject &object, FolderSessionOptions &options, QSet<QString> &excludedNames,
              QSet<QString> &ignoredNames);

} // namespace velmora

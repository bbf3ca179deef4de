#pragma once

#include "core/wildcard.h"
#include "folder/engine/folder_diff_item.h"
#include "settings/options/folder_session_options.h"

#include <QDateTime>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

namespace velmora {

/// What a person looks for in a comparison for the moment. The values here look for everything.
struct FolderViewLimits {
    QString masks;          ///< of the filter bar, separated by ";"; empty, "*" and "*.*" are none
    qint64 minimumSize = 0; ///< bytes of the larger side; 0 is none
    qint64 maximumSize = 0; ///< the same
    QDateTime from;         ///< the earliest modification time, invalid for none
    QDateTime to;           ///< the latest one
};

/// What a person sees of a comparison beside what its options say. A value.
struct ViewFilters {
    QSet<QString> excludedNames; ///< bare names of entries that are not shown
    QSet<QString> ignoredNames;  ///< bare names of entries that are shown and count as no difference
    FolderViewLimits limits;

    void exclude(const QStringList &names);
    /// Ignores those that are not ignored, and no longer those that are.
    void toggleIgnored(const QStringList &names);
    /// All but the masks, which are those of the filter bar.
    void takeRanges(const FolderViewLimits &ranges);
    [[nodiscard]] bool hasRanges() const;
};

/// Tells whether a path of one side is a file with the operating system's "system" attribute.
using SystemFileTest = std::function<bool(Side side, const QString &path)>;

/// Decides which entries of a comparison are shown: one answer for the session, its report and the command line.
///
/// Immutable; without a test no file is the system's. The masks are matched without regard to case against bare names.
/// Switched-on file formats are further masks of files to include. Folders are only ever hidden by the excluded names
/// and by the two lists of folder masks.
class FolderFilter {
public:
    explicit FolderFilter(const FolderSessionOptions &options, const ViewFilters &filters = {},
                          SystemFileTest isSystemFile = {});

    [[nodiscard]] bool shows(const FolderDiffItem &item) const;

private:
    [[nodiscard]] bool showsFile(QStringView name, const FolderDiffItem &item) const;
    [[nodiscard]] bool carriesSystemAttribute(const FolderDiffItem &item) const;
    [[nodiscard]] bool isInSizeRange(const FolderDiffItem &item) const;
    [[nodiscard]] bool isInDateRange(const FolderDiffItem &item) const;

    QSet<QString> m_excludedNames;
    WildcardList m_includeFiles;
    WildcardList m_excludeFiles;
    WildcardList m_includeFolders;
    WildcardList m_excludeFolders;
    WildcardList m_otherExclude;
    WildcardList m_viewMasks;
    bool m_excludeOsFiles;
    FolderViewLimits m_limits;
    SystemFileTest m_isSystemFile;
};

} // namespace velmora

#pragma once

#include "core/cancel_flag.h"
#include "core/wildcard.h"
#include "platform/file_access.h"
#include "settings/options/folder_session_options.h"

#include <vector>

namespace velmora {

/// What stands under one name in two folders; at least one side is there.
struct PairedEntry {
    QString name;
    const FolderEntry *left = nullptr;
    const FolderEntry *right = nullptr;
    const FolderEntry *displacedRight = nullptr; ///< has this name on the right, where an alignment put `right`
};

/// Brings the entries of two folders together by name and by manual alignment. Immutable, usable from any thread.
class NamePairing {
public:
    explicit NamePairing(const QList<ManualAlignRule> &rules);

    /// Sorts both lists by the UTF-16 code units of the names and returns the pairs in that order, pointing into them.
    /// Names of one list are unique. An aligned pair has the name of its left entry; the rules apply one after the
    /// other, each to what those before left. An entry whose name an alignment takes away is in no pair, even if the
    /// other side has one of that name; one whose name an alignment gives to another is only `displacedRight`. Empty
    /// when cancelled.
    [[nodiscard]] std::vector<PairedEntry> pair(std::vector<FolderEntry> &left, std::vector<FolderEntry> &right,
                                                const CancelFlag &cancel) const;

private:
    struct Rule {
        Wildcard left;
        Wildcard right;
    };

    [[nodiscard]] std::vector<PairedEntry> pairAligned(const std::vector<FolderEntry> &left,
                                                       const std::vector<FolderEntry> &right) const;

    std::vector<Rule> m_rules;
};

} // namespace velmora

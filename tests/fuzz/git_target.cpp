#include "fuzz/targets.h"
#include "vfs/git/git_change.h"
#include "vfs/git/git_index.h"

namespace velmora::fuzz {

void gitListing(const QByteArray &input)
{
    if (std::optional<std::vector<GitChange>> changes = parseRawChanges(input)) {
        for (const GitChange &change : *changes)
            require(change.status != GitStatus::Same, "a listing of changes tells of changes");
        const std::size_t count = changes->size();
        static_cast<void>(takeLineCounts(input, *changes));
        require(changes->size() == count, "counts of lines add no files");
    }
    std::vector<GitChange> none;
    static_cast<void>(takeLineCounts(input, none));
    if (const std::optional<std::vector<GitFile>> files = parseTreeListing(input))
        require(qsizetype(files->size()) <= input.size(), "every file takes room in the listing");
    if (const std::optional<std::vector<GitIndexEntry>> entries = parseIndexListing(input))
        require(qsizetype(entries->size()) <= input.size(), "every entry takes room in the listing");
}

} // namespace velmora::fuzz

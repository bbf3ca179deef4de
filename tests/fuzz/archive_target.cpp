#include "fuzz/targets.h"
#include "vfs/archive/archive_listing.h"
#include "vfs/archive/archive_opening.h"
#include "vfs/archive/archive_test.h"
#include "vfs/archive/spool.h"

namespace velmora::fuzz {

/// Any bytes open as an archive or are refused, within the limits; names in the tree lead nowhere else.
void archive(const QByteArray &input)
{
    const auto spool = std::make_shared<Spool>();
    require(spool->add(input), "bytes are put down");
    ArchiveRequest request{QStringLiteral("/x.gz"), "secret", NestedArchives::BecomeFolders};
    request.limits = {.entries = 1000, .depth = 20, .nesting = 2, .archives = 5, .unpacked = 1 << 22, .expansion = 1};
    Progress progress;
    const ArchiveOpening opening = openArchiveFile(spool->open(), request, {}, progress);
    require((opening.source != nullptr) == (opening.fault == ArchiveFault::None), "a fault or a tree");
    if (!opening.source)
        return;
    const ArchiveTree &tree = opening.source->tree();
    for (qint32 node = 1; node < tree.count(); ++node) {
        const QString &name = tree.node(node).name;
        require(!name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/'), "names are one step down");
        require(tree.behind(node) < tree.count(), "links lead to nodes");
    }
    const ArchiveListing listing(opening.source);
    for (qint32 row = 0; row < listing.count(); ++row)
        require(listing.find(listing.path(row)) == row, "rows are found by their paths");
    require(testArchive(*opening.source, {}, progress).bytes <= 64 * (1 << 22), "what is unpacked has a limit");
}

} // namespace velmora::fuzz

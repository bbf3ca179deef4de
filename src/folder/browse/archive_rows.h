#pragma once

#include "session/list/row_tree.h"
#include "vfs/archive/archive_listing.h"
#include "vfs/archive/archive_test.h"

#include <QString>

#include <memory>
#include <vector>

namespace velmora {

using SharedListing = std::shared_ptr<const ArchiveListing>;

/// What an archive holds, as rows; the numbers of nodes are those of the listing.
class ArchiveRows final : public RowTree {
public:
    enum Column { Name, Size, Packed, Ratio, Modified, Method, Checksum, Mode };

    /// Without a listing there are no rows.
    explicit ArchiveRows(SharedListing listing);

    /// Marks what `test` has found, and shows the checksums that it has computed.
    void takeTest(const ArchiveTest &test);
    [[nodiscard]] bool hasFailed(qint32 node) const { return m_failed[std::size_t(node)]; }

    [[nodiscard]] qint32 count() const override { return m_listing ? m_listing->count() : 0; }
    [[nodiscard]] qint32 parent(qint32 node) const override { return m_listing->row(node).parent; }
    [[nodiscard]] qint32 end(qint32 node) const override { return m_ends[std::size_t(node)]; }
    [[nodiscard]] int depth(qint32 node) const override { return m_listing->row(node).depth; }
    [[nodiscard]] bool isExpanded(qint32 node) const override { return m_expanded[std::size_t(node)]; }
    void setExpanded(qint32 node, bool expanded) override { m_expanded[std::size_t(node)] = expanded; }

    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] QString text(qint32 node, int column) const override;
    [[nodiscard]] Qt::Alignment alignment(int column) const override;
    [[nodiscard]] QString hint(qint32 node, int column) const override;
    [[nodiscard]] RowPicture picture(qint32 node) const override;
    [[nodiscard]] QVariant data(qint32 node, int column, int role) const override;
    [[nodiscard]] bool isBefore(qint32 one, qint32 other, int column) const override;

private:
    [[nodiscard]] QString nameText(qint32 node) const;
    [[nodiscard]] QString checksumText(qint32 node) const;
    [[nodiscard]] qint64 number(qint32 node, int column) const;

    SharedListing m_listing;
    std::vector<qint32> m_ends;
    std::vector<bool> m_expanded;
    std::vector<bool> m_failed;
    ArchiveTest m_test;
};

} // namespace velmora

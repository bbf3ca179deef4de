#pragma once

#include "folder/engine/disk_usage_scan.h"
#include "session/list/row_tree.h"

#include <memory>
#include <vector>

namespace velmora {

/// What a scan found, and where it is known how much each node has grown since an earlier one. Shared by what shows it.
struct UsageResult {
    DiskUsage usage;
    std::vector<qint64> growth; ///< one for each node, or none
};
using SharedUsage = std::shared_ptr<const UsageResult>;

/// A number of bytes as it is shown, without separators between thousands: exports take it as it stands.
[[nodiscard]] QString usageSizeText(qint64 bytes);

/// What a folder holds, as rows.
class UsageRows final : public RowTree {
public:
    enum Column { Name, Size, Share, Files, Subfolders, OnDisk, Growth };
    /// The share in percent, a number.
    static constexpr int shareRole = Qt::UserRole;

    /// Without a scan there are no rows.
    explicit UsageRows(SharedUsage result);

    [[nodiscard]] qint32 count() const override { return m_result ? tree().size() : 0; }
    [[nodiscard]] qint32 parent(qint32 node) const override { return tree().node(node).parent; }
    [[nodiscard]] qint32 end(qint32 node) const override { return tree().node(node).end; }
    [[nodiscard]] int depth(qint32 node) const override { return tree().node(node).depth; }
    [[nodiscard]] bool isExpanded(qint32 node) const override { return m_expanded[std::size_t(node)]; }
    void setExpanded(qint32 node, bool expanded) override { m_expanded[std::size_t(node)] = expanded; }
    [[nodiscard]] NodePlace place(qint32 node) const override
    {
        const auto &here = tree().node(node);
        return {here.end, quint16(here.depth), m_expanded[std::size_t(node)], true};
    }

    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] QString text(qint32 node, int column) const override;
    [[nodiscard]] Qt::Alignment alignment(int column) const override;
    [[nodiscard]] QString hint(qint32 node, int column) const override;
    [[nodiscard]] RowPicture picture(qint32 node) const override;
    [[nodiscard]] QVariant data(qint32 node, int column, int role) const override;
    [[nodiscard]] bool isBefore(qint32 one, qint32 other, int column) const override;

private:
    [[nodiscard]] const UsageTree &tree() const { return m_result->usage.tree; }
    [[nodiscard]] qint64 number(qint32 node, int column) const;

    SharedUsage m_result;
    std::vector<bool> m_expanded;
};

} // namespace velmora

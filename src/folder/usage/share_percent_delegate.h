#pragma once

#include "session/list/tree_delegate.h"

namespace velmora {

/// Draws a share as a bar with its percentage. The number comes from `UsageRows::shareRole`.
class SharePercentDelegate final : public TreeDelegate {
    Q_OBJECT
public:
    using TreeDelegate::TreeDelegate;

protected:
    [[nodiscard]] bool hasTree(int /*column*/) const override { return false; }
    void paintCell(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace velmora

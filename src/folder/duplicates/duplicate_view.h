#pragma once

#include "session/list/tree_view.h"

#include <utility>

namespace velmora {

class NoticeCard;

/// The groups of a duplicate finder, or a card where there are none.
class DuplicateView final : public TreeView {
    Q_OBJECT
public:
    explicit DuplicateView(TreeModel &model, QWidget *parent = nullptr);

    [[nodiscard]] NoticeCard &notice() { return *m_notice; }
    /// The first and the last row in sight; -1 without rows.
    [[nodiscard]] std::pair<int, int> rowsInSight() const;
    /// Takes up a changed theme.
    void refreshTheme();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void layOutColumns();

    NoticeCard *m_notice;
};

} // namespace velmora

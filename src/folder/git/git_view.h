#pragma once

#include "folder/git/git_rows.h"
#include "session/list/tree_view.h"

namespace velmora {

class NoticeCard;

/// The rows of a Git comparison, or a card where there are none.
class GitView final : public TreeView {
    Q_OBJECT
public:
    explicit GitView(TreeModel &model, QWidget *parent = nullptr);

    [[nodiscard]] NoticeCard &notice() { return *m_notice; }
    void refreshTheme();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    /// Gives both names the same room, and hides columns where that would be too little.
    void layOutColumns();
    /// Gives a column room for its longest text, and says how much.
    int takeWidth(int column, const QString &widest);

    NoticeCard *m_notice;
};

} // namespace velmora

#pragma once

#include <QTreeView>

namespace velmora {

class NoticeCard;

/// The rows of what is to be done with files: the first column has the room that the others leave, a card stands where
/// there are no rows.
class PlanView final : public QTreeView {
    Q_OBJECT
public:
    /// `name` is the object's name, `model` outlives the view.
    PlanView(const QString &name, QAbstractItemModel &model);

    [[nodiscard]] NoticeCard &notice() { return *m_notice; }

    /// Gives the first column its room; to be called when another one has changed.
    void fitFirstColumn();
    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void menuWanted(QPoint globalPosition);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    NoticeCard *m_notice;
};

} // namespace velmora

#pragma once

#include "core/wildcard.h"
#include "folder/engine/sync_planner.h"

#include <QAbstractItemModel>
#include <QIcon>

#include <vector>

namespace velmora {

/// A sync plan as a tree: every entry below its folder, with what is to happen with it.
class SyncPlanModel final : public QAbstractItemModel {
    Q_OBJECT
public:
    enum Column { Name, Action, LeftSize, LeftTime, RightSize, RightTime, ColumnCount };

    explicit SyncPlanModel(QObject *parent);

    /// Takes up a plan, in the order of `planSync`: each folder before what is in it.
    void setPlan(QList<SyncPlanItem> plan);
    /// The same for the rest of a plan after a run: what was chosen by hand holds on.
    void setRest(QList<SyncPlanItem> plan);
    /// With the actions that were chosen by hand.
    [[nodiscard]] const QList<SyncPlanItem> &plan() const { return m_plan; }

    /// Shows the files whose names match one of the masks, and the folders that they are in; all without masks.
    void setFilter(const QStringList &masks);
    [[nodiscard]] bool isFiltered() const { return !m_masks.isEmpty(); }
    [[nodiscard]] const WildcardList &masks() const { return m_masks; }
    /// The items that are shown.
    [[nodiscard]] QList<SyncPlanItem> shownPlan() const;
    /// What is shown, counted; one look at each item.
    [[nodiscard]] SyncCounts shownCounts() const;

    [[nodiscard]] const SyncPlanItem &itemAt(const QModelIndex &index) const { return m_plan.at(nodeOf(index)); }

    /// Gives these rows, and what is shown below them, an action where they can have it.
    void setAction(const QModelIndexList &rows, SyncAction action);
    /// Deletes on the side that has the entry.
    void setDeleted(const QModelIndexList &rows);
    /// The actions that the plan came with.
    void restoreActions(const QModelIndexList &rows);

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex &index) const override;
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void actionsChanged();

private:
    /// Where an item of the plan is in the tree of what is shown.
    struct Node {
        qint32 parent = -1;           ///< an item, -1 at the top
        qint32 row = -1;              ///< among the children of its parent; -1 when it is hidden
        std::vector<qint32> children; ///< items
    };

    template <typename Choose>
    void change(const QModelIndexList &rows, Choose choose);
    [[nodiscard]] static qint32 nodeOf(const QModelIndex &index) { return qint32(index.internalId()); }
    [[nodiscard]] const std::vector<qint32> &childrenOf(qint32 node) const;
    [[nodiscard]] QVariant textAt(const SyncPlanItem &item, int column) const;
    [[nodiscard]] static QString hintAt(const SyncPlanItem &item, int column);
    [[nodiscard]] std::vector<char> shownItems() const;
    [[nodiscard]] bool showsFile(const SyncPlanItem &file) const;
    void findParents();
    void buildTree();

    QList<SyncPlanItem> m_plan;
    std::vector<qint32> m_planned; ///< the actions that the plan came with
    WildcardList m_masks;
    std::vector<Node> m_nodes;
    std::vector<qint32> m_top;
    QIcon m_folder;
    QIcon m_file;
};

} // namespace velmora

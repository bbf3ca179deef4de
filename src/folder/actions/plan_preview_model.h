#pragma once

#include "folder/operations/operation_plan.h"

#include <QAbstractItemModel>

#include <vector>

namespace velmora {

/// A plan as a person reads it: groups of what is written, replaced, moved, deleted and left alone, each with its
/// entries. Holds the plan and one number for each entry; texts are made for what is in sight.
class PlanPreviewModel final : public QAbstractItemModel {
    Q_OBJECT
public:
    enum Column { Name, Size, Details, ColumnCount };

    explicit PlanPreviewModel(OperationPlan plan, QObject *parent = nullptr);

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex &index) const override;
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// What all groups of steps amount to, as their titles have it.
    [[nodiscard]] QString summary() const;

    /// Within the groups; any other column is the order of the plan.
    void sort(int column, Qt::SortOrder order) override;

private:
    enum class Kind : quint8 { Delete, Replace, Move, Write, MakeFolder, LeftAlone };

    struct Group {
        Kind kind;
        OperationTotals totals;
        std::vector<qint32> entries; ///< indexes of steps, or of what is left out
    };

    [[nodiscard]] Kind kindOf(const OperationStep &step) const;
    [[nodiscard]] bool isFromKept(const OperationStep &step) const;
    [[nodiscard]] QString title(const Group &group) const;
    [[nodiscard]] QString name(Kind kind, qint32 entry) const; ///< below its root
    [[nodiscard]] QString path(Kind kind, qint32 entry) const;
    [[nodiscard]] qint64 size(Kind kind, qint32 entry) const;
    [[nodiscard]] QString sizeWords(Kind kind, qint32 entry) const;
    [[nodiscard]] QString details(Kind kind, qint32 entry) const;

    OperationPlan m_plan;
    std::vector<Group> m_groups; ///< those that have entries
};

} // namespace velmora

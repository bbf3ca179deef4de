#pragma once

#include <QAbstractListModel>
#include <QStringList>

namespace velmora {

/// The replacement rules of one side, in the order in which they apply.
class ReplacementRulesModel final : public QAbstractListModel {
    Q_OBJECT
public:
    struct Rule {
        QString find;
        QString with;
    };

    using QAbstractListModel::QAbstractListModel;

    /// A replacement that `with` lacks is empty; one too many is dropped.
    void setRules(const QStringList &find, const QStringList &with);
    [[nodiscard]] QStringList findTexts() const;
    [[nodiscard]] QStringList replacements() const;

    /// Precondition for both: there is such a row.
    [[nodiscard]] const Rule &rule(int row) const { return m_rules[row]; }
    void setRule(int row, const Rule &rule);
    void append(const Rule &rule);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;
    /// One row at a time.
    bool moveRows(const QModelIndex &fromParent, int row, int count, const QModelIndex &toParent, int before) override;

private:
    QList<Rule> m_rules;
};

} // namespace velmora

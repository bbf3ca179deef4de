#pragma once

#include <QAbstractListModel>
#include <QList>

namespace velmora {

/// Rules in an order that counts, each a row of text: a model that can be edited, for a `RuleListEditor`.
template <typename Rule>
class RuleListModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const QList<Rule> &rules() const { return m_rules; }
    void setRules(const QList<Rule> &rules)
    {
        beginResetModel();
        m_rules = rules;
        endResetModel();
    }

    /// Precondition for both: there is such a row.
    [[nodiscard]] const Rule &rule(int row) const { return m_rules[row]; }
    void setRule(int row, const Rule &rule)
    {
        m_rules[row] = rule;
        Q_EMIT dataChanged(index(row), index(row));
    }

    void append(const Rule &rule)
    {
        const int row = rowCount();
        beginInsertRows({}, row, row);
        m_rules.append(rule);
        endInsertRows();
    }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_rules.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        return index.isValid() && role == Qt::DisplayRole ? QVariant(text(m_rules[index.row()])) : QVariant();
    }

    bool removeRows(int row, int count, const QModelIndex &parent = {}) override
    {
        if (parent.isValid() || row < 0 || count < 1 || row + count > rowCount())
            return false;
        beginRemoveRows({}, row, row + count - 1);
        m_rules.remove(row, count);
        endRemoveRows();
        return true;
    }

    /// One row at a time.
    bool moveRows(const QModelIndex &fromParent, int row, int count, const QModelIndex &toParent, int before) override
    {
        const bool known = !fromParent.isValid() && !toParent.isValid() && row >= 0 && row < rowCount() &&
                           before >= 0 && before <= rowCount();
        if (!known || count != 1 || !beginMoveRows({}, row, row, {}, before))
            return false;
        m_rules.move(row, before > row ? before - 1 : before);
        endMoveRows();
        return true;
    }

protected:
    /// The rule as a person reads it.
    [[nodiscard]] virtual QString text(const Rule &rule) const = 0;

private:
    QList<Rule> m_rules;
};

} // namespace velmora

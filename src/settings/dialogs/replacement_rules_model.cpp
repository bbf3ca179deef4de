#include "settings/dialogs/replacement_rules_model.h"

#include "session/translate.h"

namespace velmora {

void ReplacementRulesModel::setRules(const QStringList &find, const QStringList &with)
{
    beginResetModel();
    m_rules.clear();
    for (qsizetype row = 0; row < find.size(); ++row)
        m_rules.append({find[row], with.value(row)});
    endResetModel();
}

QStringList ReplacementRulesModel::findTexts() const
{
    QStringList texts;
    for (const Rule &rule : m_rules)
        texts.append(rule.find);
    return texts;
}

QStringList ReplacementRulesModel::replacements() const
{
    QStringList texts;
    for (const Rule &rule : m_rules)
        texts.append(rule.with);
    return texts;
}

void ReplacementRulesModel::setRule(int row, const Rule &rule)
{
    m_rules[row] = rule;
    Q_EMIT dataChanged(index(row), index(row));
}

void ReplacementRulesModel::append(const Rule &rule)
{
    const int row = rowCount();
    beginInsertRows({}, row, row);
    m_rules.append(rule);
    endInsertRows();
}

int ReplacementRulesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rules.size());
}

QVariant ReplacementRulesModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    const Rule &rule = m_rules[index.row()];
    return Velmora::tr("%1  ->  %2").arg(rule.find, rule.with);
}

bool ReplacementRulesModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count < 1 || row + count > rowCount())
        return false;
    beginRemoveRows({}, row, row + count - 1);
    m_rules.remove(row, count);
    endRemoveRows();
    return true;
}

bool ReplacementRulesModel::moveRows(const QModelIndex &fromParent, int row, int count, const QModelIndex &toParent,
                                     int before)
{
    const bool known = !fromParent.isValid() && !toParent.isValid() && row >= 0 && row < rowCount() && before >= 0 &&
                       before <= rowCount();
    if (!known || count != 1 || !beginMoveRows({}, row, row, {}, before))
        return false;
    m_rules.move(row, before > row ? before - 1 : before);
    endMoveRows();
    return true;
}

} // namespace velmora

#include "settings/dialogs/replacement_rules_model.h"

#include "session/translate.h"

namespace velmora {

void ReplacementRulesModel::setTexts(const QStringList &find, const QStringList &with)
{
    QList<Rule> rules;
    for (qsizetype row = 0; row < find.size(); ++row)
        rules.append({find[row], with.value(row)});
    setRules(rules);
}

QStringList ReplacementRulesModel::findTexts() const
{
    QStringList texts;
    for (const Rule &rule : rules())
        texts.append(rule.find);
    return texts;
}

QStringList ReplacementRulesModel::replacements() const
{
    QStringList texts;
    for (const Rule &rule : rules())
        texts.append(rule.with);
    return texts;
}

QString ReplacementRulesModel::text(const Rule &rule) const
{
    return Velmora::tr("%1  ->  %2").arg(rule.find, rule.with);
}

} // namespace velmora

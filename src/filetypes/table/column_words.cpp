#include "filetypes/table/column_words.h"

#include "session/translate.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace velmora {

namespace {

QString meaningWords(const ColumnRule &rule)
{
    switch (rule.meaning) {
    case ColumnRule::Meaning::Number:
        if (!rule.hasTolerance())
            return Velmora::tr("numbers");
        return rule.bound == ColumnRule::Bound::Relative
                   ? Velmora::tr("numbers, within %1 %").arg(QLocale().toString(rule.tolerance * 100, 'g', 6))
                   : Velmora::tr("numbers, within %1").arg(QLocale().toString(rule.tolerance, 'g', 6));
    case ColumnRule::Meaning::DayFirstDate:
        return Velmora::tr("dates, day first");
    case ColumnRule::Meaning::MonthFirstDate:
        return Velmora::tr("dates, month first");
    case ColumnRule::Meaning::Text:
        break;
    }
    return {};
}

} // namespace

QString ruleWords(const ColumnRule &rule)
{
    QStringList words;
    if (rule.isLeftOut)
        words.append(Velmora::tr("not compared"));
    if (const QString meaning = meaningWords(rule); !meaning.isEmpty())
        words.append(meaning);
    if (rule.ignoresCase)
        words.append(Velmora::tr("any letter case"));
    if (rule.ignoresSpace)
        words.append(Velmora::tr("any white space"));
    return words.join(QStringLiteral("; "));
}

QString allRules(const TableDocument &document)
{
    QStringList rules;
    for (qint32 column = 0; column < document.alignment.rules.size(); ++column) {
        if (const ColumnRule *rule = document.alignment.ruleOf(column))
            rules.append(Velmora::tr("\"%1\": %2").arg(document.alignment.columns.name(column), ruleWords(*rule)));
    }
    return rules.isEmpty() ? QString() : Velmora::tr("Rules of columns: %1").arg(rules.join(QStringLiteral(", ")));
}

QString columnHint(const TableDocument &document, qint32 column)
{
    constexpr qsizetype longestName = 2000;
    QStringList lines{document.alignment.columns.name(column).left(longestName)};
    if (std::any_of(document.keys.begin(), document.keys.end(),
                    [column](const ColumnRef &key) { return key.column == column; }))
        lines.append(Velmora::tr("Key: rows with the same value are compared"));
    if (const ColumnRule *rule = document.alignment.ruleOf(column))
        lines.append(Velmora::tr("Rule: %1").arg(ruleWords(*rule)));
    lines.append(Velmora::tr("Changed cells: %1").arg(document.changedCells[std::size_t(column)]));
    return lines.join(u'\n');
}

} // namespace velmora

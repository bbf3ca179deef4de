#include "cli/table_rules.h"

#include <cmath>

namespace velmora::cli {

namespace {

QString unknownColumn(const QString &name)
{
    return QStringLiteral("no column \"%1\"").arg(name);
}

/// The rule of a column, for changing it; null where there is no such column.
ColumnRule *ruleFor(const TableColumns &columns, const QString &name, QList<ColumnRule> &rules)
{
    const qint32 column = columnCalled(columns, name);
    if (column < 0)
        return nullptr;
    if (column >= rules.size())
        rules.resize(column + 1);
    return &rules[column];
}

/// Takes "COLUMN=NUMBER" or "COLUMN=NUMBER%".
QString takeTolerance(const QString &given, const TableColumns &columns, QList<ColumnRule> &rules)
{
    const qsizetype at = given.lastIndexOf(u'=');
    QString bound = given.mid(at + 1);
    const bool isShare = bound.endsWith(u'%');
    if (isShare)
        bound.chop(1);
    bool isNumber = false;
    const double tolerance = bound.toDouble(&isNumber);
    if (at < 0 || !isNumber || !std::isfinite(tolerance) || tolerance < 0)
        return QStringLiteral("--tolerance: \"%1\" is not COLUMN=NUMBER or COLUMN=NUMBER%").arg(given);
    ColumnRule *rule = ruleFor(columns, given.left(at), rules);
    if (!rule)
        return unknownColumn(given.left(at));
    rule->meaning = ColumnRule::Meaning::Number;
    rule->bound = isShare ? ColumnRule::Bound::Relative : ColumnRule::Bound::Absolute;
    rule->tolerance = isShare ? tolerance / 100 : tolerance;
    return {};
}

} // namespace

qint32 columnCalled(const TableColumns &columns, const QString &name)
{
    if (const qint32 column = columns.find(name); column >= 0)
        return column;
    bool isNumber = false;
    const qint32 number = name.toInt(&isNumber);
    return isNumber && number >= 1 && number <= columns.count() ? number - 1 : -1;
}

QString givenRules(const Arguments &arguments)
{
    QStringList rules;
    for (const char *option : {"leave-out", "ignore-case", "ignore-space", "tolerance", "dates-dmy", "dates-mdy"}) {
        for (const QString &value : arguments.values(option))
            rules.append(QStringLiteral("--%1 %2").arg(QLatin1String(option), value));
    }
    return rules.join(QStringLiteral(", "));
}

QString takeColumnRules(const Arguments &arguments, const TableColumns &columns, QList<ColumnRule> &rules)
{
    const auto change = [&](const char *option, auto apply) {
        for (const QString &name : arguments.values(option)) {
            ColumnRule *rule = ruleFor(columns, name, rules);
            if (!rule)
                return unknownColumn(name);
            apply(*rule);
        }
        return QString();
    };
    for (const QString &error :
         {change("leave-out", [](ColumnRule &rule) { rule.isLeftOut = true; }),
          change("ignore-case", [](ColumnRule &rule) { rule.ignoresCase = true; }),
          change("ignore-space", [](ColumnRule &rule) { rule.ignoresSpace = true; }),
          change("dates-dmy", [](ColumnRule &rule) { rule.meaning = ColumnRule::Meaning::DayFirstDate; }),
          change("dates-mdy", [](ColumnRule &rule) { rule.meaning = ColumnRule::Meaning::MonthFirstDate; })}) {
        if (!error.isEmpty())
            return error;
    }
    for (const QString &given : arguments.values("tolerance")) {
        if (const QString error = takeTolerance(given, columns, rules); !error.isEmpty())
            return error;
    }
    return {};
}

} // namespace velmora::cli

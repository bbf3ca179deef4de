#include "filetypes/table/column_choices.h"

#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace velmora {

namespace {

constexpr QLatin1String nameKey("name");
constexpr QLatin1String columnKey("column");
constexpr QLatin1String hiddenKey("hidden");
constexpr QLatin1String frozenKey("frozen");
constexpr QLatin1String leftOutKey("leftOut");
constexpr QLatin1String ignoreCaseKey("ignoreCase");
constexpr QLatin1String ignoreSpaceKey("ignoreSpace");
constexpr QLatin1String meaningKey("meaning");
constexpr QLatin1String toleranceKey("tolerance");
constexpr QLatin1String relativeKey("relative");

/// By `ColumnRule::Meaning`.
constexpr std::array meanings{QLatin1String("text"), QLatin1String("number"), QLatin1String("dateDayFirst"),
                              QLatin1String("dateMonthFirst")};

QJsonObject ruleToJson(const ColumnRule &rule)
{
    QJsonObject json;
    for (const auto &[key, isOn] : {std::pair(leftOutKey, rule.isLeftOut), std::pair(ignoreCaseKey, rule.ignoresCase),
                                    std::pair(ignoreSpaceKey, rule.ignoresSpace)}) {
        if (isOn)
            json.insert(key, true);
    }
    if (rule.meaning != ColumnRule::Meaning::Text)
        json.insert(meaningKey, meanings[std::size_t(rule.meaning)]);
    if (rule.tolerance > 0) {
        json.insert(toleranceKey, rule.tolerance);
        json.insert(relativeKey, rule.bound == ColumnRule::Bound::Relative);
    }
    return json;
}

ColumnRule ruleFromJson(const QJsonObject &json)
{
    ColumnRule rule;
    rule.isLeftOut = json.value(leftOutKey).toBool();
    rule.ignoresCase = json.value(ignoreCaseKey).toBool();
    rule.ignoresSpace = json.value(ignoreSpaceKey).toBool();
    const auto *meaning = std::find(meanings.begin(), meanings.end(), json.value(meaningKey).toString());
    if (meaning != meanings.end())
        rule.meaning = ColumnRule::Meaning(meaning - meanings.begin());
    const double tolerance = json.value(toleranceKey).toDouble();
    rule.tolerance = std::isfinite(tolerance) ? std::max(0.0, tolerance) : 0;
    rule.bound = json.value(relativeKey).toBool() ? ColumnRule::Bound::Relative : ColumnRule::Bound::Absolute;
    return rule;
}

} // namespace

qint32 columnOf(const ColumnRef &ref, const TableColumns &columns)
{
    const bool isThere = ref.column >= 0 && ref.column < columns.count();
    if (isThere && (ref.name.isEmpty() || columns.name(ref.column) == ref.name))
        return ref.column;
    return ref.name.isEmpty() ? -1 : columns.find(ref.name);
}

std::unordered_map<qint32, ColumnChoice> choicesByColumn(const QList<ColumnChoice> &choices,
                                                         const TableColumns &columns)
{
    std::unordered_map<qint32, ColumnChoice> result;
    for (const ColumnChoice &choice : choices) {
        if (const qint32 column = columnOf(choice.ref, columns); column >= 0)
            result.insert_or_assign(column, choice);
    }
    return result;
}

ColumnChoice choiceOf(const QList<ColumnChoice> &choices, const TableColumns &columns, qint32 column)
{
    const auto known = choicesByColumn(choices, columns);
    const auto choice = known.find(column);
    return choice == known.end() ? ColumnChoice{{column, columns.name(column)}} : choice->second;
}

void setChoice(QList<ColumnChoice> &choices, const TableColumns &columns, qint32 column, ColumnChoice choice)
{
    choices.removeIf([&](const ColumnChoice &old) { return columnOf(old.ref, columns) == column; });
    choice.ref = {column, columns.name(column)};
    if (!choice.isUsual())
        choices.append(choice);
}

QList<ColumnRule> rulesOf(const QList<ColumnChoice> &choices, const TableColumns &columns)
{
    QList<ColumnRule> rules;
    for (const auto &[column, choice] : choicesByColumn(choices, columns)) {
        if (choice.rule.isExact())
            continue;
        if (column >= rules.size())
            rules.resize(column + 1);
        rules[column] = choice.rule;
    }
    return rules;
}

ColumnArrangement arrangementOf(const QList<ColumnChoice> &choices, const TableColumns &columns, qint32 limit)
{
    const auto known = choicesByColumn(choices, columns);
    static const ColumnChoice usual;
    const auto choiceAt = [&known](qint32 column) -> const ColumnChoice & {
        const auto choice = known.find(column);
        return choice == known.end() ? usual : choice->second;
    };
    const qint32 count = std::min(columns.count(), limit);
    ColumnArrangement arrangement;
    for (const bool isFrozen : {true, false}) {
        for (qint32 column = 0; column < count; ++column) {
            const ColumnChoice &choice = choiceAt(column);
            if (!choice.isHidden && choice.isFrozen == isFrozen)
                arrangement.shown.push_back(column);
        }
        if (isFrozen)
            arrangement.frozen = qint32(arrangement.shown.size());
    }
    if (arrangement.shown.empty()) {
        arrangement.shown.resize(std::size_t(count));
        std::iota(arrangement.shown.begin(), arrangement.shown.end(), 0);
    }
    return arrangement;
}

QJsonArray columnsToJson(const QList<ColumnChoice> &choices)
{
    QJsonArray json;
    for (const ColumnChoice &choice : choices) {
        QJsonObject column = ruleToJson(choice.rule);
        column.insert(nameKey, choice.ref.name);
        column.insert(columnKey, choice.ref.column);
        if (choice.isHidden)
            column.insert(hiddenKey, true);
        if (choice.isFrozen)
            column.insert(frozenKey, true);
        json.append(column);
    }
    return json;
}

QList<ColumnChoice> columnsFromJson(const QJsonArray &json)
{
    QList<ColumnChoice> choices;
    for (const QJsonValue &value : json) {
        const QJsonObject column = value.toObject();
        ColumnChoice choice{{column.value(columnKey).toInt(-1), column.value(nameKey).toString()},
                            ruleFromJson(column)};
        choice.isHidden = column.value(hiddenKey).toBool();
        choice.isFrozen = column.value(frozenKey).toBool();
        if (!choice.isUsual())
            choices.append(choice);
    }
    return choices;
}

} // namespace velmora

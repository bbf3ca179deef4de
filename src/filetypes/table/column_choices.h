#pragma once

#include "filetypes/table/engine/column_rule.h"
#include "filetypes/table/engine/table_columns.h"

#include <QJsonArray>
#include <QList>
#include <QString>

#include <unordered_map>
#include <vector>

namespace velmora {

/// A column that a person means, also in other tables than those in which it was chosen.
struct ColumnRef {
    qint32 column = -1; ///< where it stood, from 0
    QString name = {};  ///< empty for whatever column stands there

    friend bool operator==(const ColumnRef &, const ColumnRef &) = default;
};

/// The column that is meant: the one at its place if that has its name, else the first of that name; -1 for none.
[[nodiscard]] qint32 columnOf(const ColumnRef &ref, const TableColumns &columns);

/// What was chosen for a column.
struct ColumnChoice {
    ColumnRef ref;
    ColumnRule rule = {};
    bool isHidden = false;
    bool isFrozen = false; ///< stands before the others, and stays when they scroll

    /// True when nothing was chosen.
    [[nodiscard]] bool isUsual() const { return rule == ColumnRule() && !isHidden && !isFrozen; }

    friend bool operator==(const ColumnChoice &, const ColumnChoice &) = default;
};

/// The choices for the columns that there are, by column.
[[nodiscard]] std::unordered_map<qint32, ColumnChoice> choicesByColumn(const QList<ColumnChoice> &choices,
                                                                       const TableColumns &columns);
/// The choice for one column, a usual one where there is none.
[[nodiscard]] ColumnChoice choiceOf(const QList<ColumnChoice> &choices, const TableColumns &columns, qint32 column);
/// Puts `choice` in the place of what was chosen for `column`; those for columns of other tables stay.
void setChoice(QList<ColumnChoice> &choices, const TableColumns &columns, qint32 column, ColumnChoice choice);
/// The rules of the columns, by column, as far as there are any.
[[nodiscard]] QList<ColumnRule> rulesOf(const QList<ColumnChoice> &choices, const TableColumns &columns);

/// Which columns are shown, in which order.
struct ColumnArrangement {
    std::vector<qint32> shown; ///< the frozen ones first
    qint32 frozen = 0;         ///< how many

    friend bool operator==(const ColumnArrangement &, const ColumnArrangement &) = default;
};

/// The first `limit` columns as the choices have them; all of them where that would leave none.
[[nodiscard]] ColumnArrangement arrangementOf(const QList<ColumnChoice> &choices, const TableColumns &columns,
                                              qint32 limit);

/// Choices as they are kept with a session: objects with "name", "column" (from 0) and what is not usual of "hidden",
/// "frozen", "leftOut", "ignoreCase", "ignoreSpace", "meaning" ("number", "dateDayFirst", "dateMonthFirst"),
/// "tolerance" and "relative".
[[nodiscard]] QJsonArray columnsToJson(const QList<ColumnChoice> &choices);
/// Passes over what makes no sense.
[[nodiscard]] QList<ColumnChoice> columnsFromJson(const QJsonArray &json);

} // namespace velmora

#pragma once

#include "filetypes/table/table_document.h"

#include <QDialog>

#include <memory>

class QCheckBox;
class QLabel;
class QTableView;
class QSortFilterProxyModel;

namespace velmora {

class ColumnsModel;
class RuleEditor;

/// What a person has chosen about the columns of a table comparison.
struct TableColumnSettings {
    bool byName = false; ///< columns of the same name are compared
    QList<ColumnRef> keys;
    QList<ColumnChoice> choices;
};

/// The columns of a result as a list in which they are chosen as keys, left out, hidden and frozen, and get rules.
class ColumnsDialog final : public QDialog {
    Q_OBJECT
public:
    /// `hasHeader`: there are names by which columns can be paired.
    ColumnsDialog(const std::shared_ptr<const TableDocument> &document, const TableColumnSettings &settings,
                  bool hasHeader, QWidget *parent);

    [[nodiscard]] TableColumnSettings settings() const;

private:
    void addParts(bool hasHeader);
    void fitList();
    /// The chosen columns, as lines of the model.
    [[nodiscard]] QList<int> chosenLines() const;
    void showRuleOfChosen();
    void setRuleOfChosen();

    ColumnsModel *m_columns;
    QSortFilterProxyModel *m_found; ///< those whose name is looked for
    QTableView *m_list;
    QLabel *m_ruleTitle;
    RuleEditor *m_rule;
    QCheckBox *m_byName;
};

} // namespace velmora

#include "filetypes/table/columns_dialog.h"

#include "filetypes/table/check_delegate.h"
#include "filetypes/table/columns_model.h"
#include "filetypes/table/field_text.h"
#include "filetypes/table/rule_editor.h"
#include "session/diff_colours.h"
#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>

namespace velmora {

namespace {

constexpr QSize usualSize(720, 480);

} // namespace

ColumnsDialog::ColumnsDialog(const std::shared_ptr<const TableDocument> &document, const TableColumnSettings &settings,
                             bool hasHeader, QWidget *parent)
    : QDialog(parent),
      m_columns(new ColumnsModel(document, settings.choices, settings.keys, this)),
      m_found(new QSortFilterProxyModel(this)),
      m_list(new QTableView(this)),
      m_ruleTitle(new QLabel(this)),
      m_rule(new RuleEditor(this)),
      m_byName(new QCheckBox(Velmora::tr("Match columns by name"), this))
{
    setObjectName(QStringLiteral("columnsDialog"));
    setWindowTitle(Velmora::tr("Columns"));
    m_byName->setObjectName(QStringLiteral("byNameBox"));
    m_byName->setChecked(settings.byName);
    addParts(hasHeader);
    connect(m_rule, &RuleEditor::changed, this, &ColumnsDialog::setRuleOfChosen);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ColumnsDialog::showRuleOfChosen);
    m_list->setCurrentIndex(m_found->index(0, 0));
    showRuleOfChosen();
    resize(usualSize.boundedTo(parent->window()->size() - QSize(20, 40)).expandedTo({560, 360}));
}

void ColumnsDialog::addParts(bool hasHeader)
{
    m_found->setSourceModel(m_columns);
    m_found->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_list->setObjectName(QStringLiteral("columnsList"));
    m_list->setAccessibleName(Velmora::tr("Columns"));
    m_list->setModel(m_found);
    m_list->setShowGrid(false);
    m_list->setWordWrap(false);
    m_list->setTabKeyNavigation(false);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->verticalHeader()->hide();
    m_list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->horizontalHeader()->setStretchLastSection(false);
    m_list->horizontalHeader()->setSectionResizeMode(ColumnsModel::Rule, QHeaderView::Stretch);
    fitList();

    auto *filter = new QLineEdit(this);
    filter->setObjectName(QStringLiteral("columnFilter"));
    filter->setPlaceholderText(Velmora::tr("Find a column by its name"));
    filter->setClearButtonEnabled(true);
    connect(filter, &QLineEdit::textChanged, m_found, &QSortFilterProxyModel::setFilterFixedString);
    auto *reset = new QPushButton(Velmora::tr("Reset all"), this);
    reset->setObjectName(QStringLiteral("resetColumns"));
    reset->setAutoDefault(false);
    reset->setToolTip(Velmora::tr("No keys, no rules, all columns shown and compared"));
    connect(reset, &QPushButton::clicked, this, [this] {
        m_columns->clear();
        showRuleOfChosen();
    });
    m_byName->setVisible(hasHeader);
    m_byName->setToolTip(Velmora::tr("Compare columns of the same name, wherever they stand"));

    auto *head = new QHBoxLayout;
    head->addWidget(filter, 1);
    head->addWidget(m_byName);
    QFont bold = m_ruleTitle->font();
    bold.setWeight(QFont::DemiBold);
    m_ruleTitle->setFont(bold);
    m_ruleTitle->setTextFormat(Qt::PlainText);
    m_ruleTitle->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    QHBoxLayout *buttons = makeConfirmButtons(*this);
    buttons->insertWidget(0, reset);
    auto *column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(m_list, 1);
    column->addWidget(m_ruleTitle);
    column->addWidget(m_rule);
    column->addSpacing(6);
    column->addLayout(buttons);
}

void ColumnsDialog::fitList()
{
    constexpr int spare = 14;
    constexpr int widestName = 220;
    m_list->horizontalHeader()->setHighlightSections(false);
    m_list->verticalHeader()->setDefaultSectionSize(m_list->fontMetrics().height() + 10);
    for (int column = 0; column < ColumnsModel::ColumnsCount; ++column) {
        if (column >= ColumnsModel::Key && column <= ColumnsModel::Frozen)
            m_list->setItemDelegateForColumn(column, new CheckDelegate(m_list));
        if (column == ColumnsModel::Rule)
            continue;
        m_list->resizeColumnToContents(column);
        m_list->setColumnWidth(column, std::min(widestName, m_list->columnWidth(column) + spare));
    }
}

TableColumnSettings ColumnsDialog::settings() const
{
    return {m_byName->isChecked(), m_columns->keys(), m_columns->choices()};
}

QList<int> ColumnsDialog::chosenLines() const
{
    QList<int> lines;
    for (const QModelIndex &index : m_list->selectionModel()->selectedRows())
        lines.append(m_found->mapToSource(index).row());
    return lines;
}

void ColumnsDialog::showRuleOfChosen()
{
    const QList<int> lines = chosenLines();
    m_rule->setEnabled(!lines.isEmpty());
    if (lines.isEmpty()) {
        m_ruleTitle->setText(Velmora::tr("Choose columns to give them a rule."));
        return;
    }
    m_rule->setRule(m_columns->rule(lines.first()));
    m_ruleTitle->setText(lines.size() == 1
                             ? Velmora::tr("Rule of \"%1\"")
                                   .arg(m_columns->index(lines.first(), ColumnsModel::Name).data().toString().left(60))
                             : Velmora::tr("Rule of %1 columns").arg(lines.size()));
}

void ColumnsDialog::setRuleOfChosen()
{
    for (const int line : chosenLines())
        m_columns->setRule(line, m_rule->rule());
}

} // namespace velmora

#include "settings/dialogs/rule_list_editor.h"

#include "session/translate.h"

#include <QAbstractItemModel>
#include <QCursor>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QListView>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

namespace velmora {

namespace {

QListView *makePlainList(const QString &name)
{
    auto *list = new QListView;
    list->setObjectName(name);
    list->setUniformItemSizes(true);
    return list;
}

} // namespace

RuleListEditor::RuleListEditor(QAbstractItemModel &model, const QString &prefix, const ToolTips &toolTips,
                               QWidget *parent)
    : RuleListEditor(makePlainList(prefix + QLatin1String("List")), model, prefix, toolTips, parent)
{}

RuleListEditor::RuleListEditor(QAbstractItemView *list, QAbstractItemModel &model, const QString &prefix,
                               const ToolTips &toolTips, QWidget *parent)
    : QWidget(parent), m_prefix(prefix), m_list(list), m_buttons(new QHBoxLayout)
{
    m_list->setModel(&model);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);

    m_add = makeButton(Velmora::tr("Add..."), prefix + QLatin1String("Add"), toolTips.add);
    m_edit = makeButton(Velmora::tr("Edit..."), prefix + QLatin1String("Edit"), toolTips.edit);
    m_remove = makeButton(Velmora::tr("Remove"), prefix + QLatin1String("Remove"), toolTips.remove);
    m_buttons->addStretch(1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_list, 1);
    column->addLayout(m_buttons);

    connect(m_add, &QPushButton::clicked, this, &RuleListEditor::addRequested);
    connect(m_edit, &QPushButton::clicked, this, &RuleListEditor::requestEdit);
    connect(m_remove, &QPushButton::clicked, this, &RuleListEditor::removeSelected);
    connect(m_list, &QAbstractItemView::doubleClicked, this, &RuleListEditor::obeyDoubleClick);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &RuleListEditor::enableButtons);
    connect(&model, &QAbstractItemModel::modelReset, this, &RuleListEditor::enableButtons);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &RuleListEditor::enableButtons);
    m_list->installEventFilter(this);
    enableButtons();
}

void RuleListEditor::addButton(QPushButton *button)
{
    button->setAutoDefault(false);
    m_buttons->insertWidget(m_buttons->count() - 1, button);
}

void RuleListEditor::setButtonTexts(const QString &add, const QString &remove)
{
    m_add->setText(add);
    m_remove->setText(remove);
}

void RuleListEditor::allowManySelected()
{
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
}

void RuleListEditor::addMoveButtons()
{
    m_up = makeMoveButton(-1, m_prefix + QLatin1String("Up"), Velmora::tr("Move the selected rule up (Alt+Up)"));
    m_down = makeMoveButton(1, m_prefix + QLatin1String("Down"), Velmora::tr("Move the selected rule down (Alt+Down)"));
    enableButtons();
}

void RuleListEditor::selectRow(int row)
{
    m_list->setCurrentIndex(m_list->model()->index(row, 0));
}

QPushButton *RuleListEditor::makeButton(const QString &text, const QString &name, const QString &toolTip)
{
    auto *button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    m_buttons->addWidget(button);
    return button;
}

bool RuleListEditor::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    // The keypad's keys count, too.
    const Qt::KeyboardModifiers modifiers = key->modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::AltModifier && m_up)
        return obeyMoveKey(key->key());
    return modifiers == Qt::NoModifier && obeyKey(key->key());
}

bool RuleListEditor::obeyMoveKey(int key)
{
    if (key != Qt::Key_Up && key != Qt::Key_Down)
        return false;
    moveSelected(key == Qt::Key_Up ? -1 : 1);
    return true;
}

bool RuleListEditor::obeyKey(int key)
{
    switch (key) {
    case Qt::Key_Insert:
        Q_EMIT addRequested();
        return true;
    case Qt::Key_F2:
        requestEdit();
        return true;
    case Qt::Key_Delete:
        removeSelected();
        return true;
    default:
        return false;
    }
}

int RuleListEditor::selectedRow() const
{
    const QList<int> rows = selectedRows();
    return rows.size() == 1 ? rows.first() : -1;
}

QList<int> RuleListEditor::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex &index : m_list->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end(), std::greater<>());
    return rows;
}

void RuleListEditor::requestEdit()
{
    const int row = selectedRow();
    if (row >= 0)
        Q_EMIT editRequested(row);
}

void RuleListEditor::obeyDoubleClick(const QModelIndex &index)
{
    const bool isCheckable = index.flags().testFlag(Qt::ItemIsUserCheckable);
    const int boxWidth = style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, m_list) +
                         2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_list) + 1);
    const QPoint place = m_list->viewport()->mapFromGlobal(QCursor::pos());
    if (!isCheckable || place.x() > m_list->visualRect(index).left() + boxWidth)
        requestEdit();
}

void RuleListEditor::removeSelected()
{
    const QList<int> rows = selectedRows();
    if (rows.isEmpty())
        return;
    QAbstractItemModel *model = m_list->model();
    for (const int row : rows)
        model->removeRow(row);
    // The next rule takes the place, so that the key can be pressed again.
    if (model->rowCount() > 0)
        selectRow(std::min(rows.last(), model->rowCount() - 1));
    enableButtons();
}

void RuleListEditor::moveSelected(int by)
{
    QAbstractItemModel *model = m_list->model();
    const int row = selectedRow();
    const int target = row + by;
    if (row < 0 || target < 0 || target >= model->rowCount())
        return;
    // Models name the row that the moved one comes to stand before.
    model->moveRow({}, row, {}, by < 0 ? target : target + 1);
    enableButtons();
}

void RuleListEditor::enableButtons()
{
    const int row = selectedRow();
    m_edit->setEnabled(row >= 0);
    m_remove->setEnabled(!selectedRows().isEmpty());
    if (!m_up)
        return;
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_list->model()->rowCount());
}

QToolButton *RuleListEditor::makeMoveButton(int by, const QString &name, const QString &toolTip)
{
    auto *button = new QToolButton;
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setArrowType(by < 0 ? Qt::UpArrow : Qt::DownArrow);
    button->setFocusPolicy(Qt::TabFocus);
    m_buttons->addWidget(button);
    connect(button, &QToolButton::clicked, this, [this, by] { moveSelected(by); });
    return button;
}

} // namespace velmora

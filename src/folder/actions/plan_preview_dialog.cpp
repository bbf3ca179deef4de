#include "folder/actions/plan_preview_dialog.h"

#include "folder/actions/action_words.h"
#include "folder/actions/plan_preview_model.h"
#include "session/translate.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr QSize usualSize(760, 480);
constexpr int openedRows = 2000; // groups up to this size are opened from the start

QTreeView *makeList(PlanPreviewModel *model)
{
    auto *list = new QTreeView;
    model->setParent(list);
    list->setObjectName(QStringLiteral("planList"));
    list->setModel(model);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(false);
    list->setAllColumnsShowFocus(true);
    list->setTextElideMode(Qt::ElideMiddle);
    // The order of the plan until a person asks for another one.
    list->header()->setSortIndicator(-1, Qt::AscendingOrder);
    list->setSortingEnabled(true);
    list->header()->setStretchLastSection(true);
    list->header()->resizeSection(PlanPreviewModel::Name, 360);
    list->header()->resizeSection(PlanPreviewModel::Size, 90);
    for (int group = 0; group < model->rowCount(); ++group) {
        const QModelIndex index = model->index(group, 0);
        list->setFirstColumnSpanned(group, {}, true);
        if (group == 0 || model->rowCount(index) <= openedRows)
            list->expand(index);
    }
    return list;
}

} // namespace

PlanPreviewDialog::PlanPreviewDialog(const QString &title, const QString &question, const QString &consent,
                                     const OperationPlan &plan, QWidget *parent)
    : QDialog(parent), m_offer(new QCheckBox)
{
    setWindowTitle(title);
    setModal(true);
    auto *text = new QLabel(question);
    text->setObjectName(QStringLiteral("planQuestion"));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    auto *model = new PlanPreviewModel(plan);
    auto *totals = new QLabel(model->summary());
    totals->setObjectName(QStringLiteral("planTotals"));
    totals->setWordWrap(true);

    auto *go = new QPushButton(consent);
    go->setObjectName(QStringLiteral("planStart"));
    go->setAutoDefault(false);
    go->setEnabled(!plan.steps.isEmpty());
    auto *cancel = new QPushButton(Velmora::tr("Cancel"));
    cancel->setObjectName(QStringLiteral("planCancel"));
    cancel->setDefault(true);
    connect(go, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(go);
    buttons->addWidget(cancel);

    auto *whole = new QVBoxLayout(this);
    whole->setSpacing(10);
    whole->addWidget(text);
    whole->addWidget(makeList(model), 1);
    whole->addWidget(totals);
    whole->addWidget(m_offer);
    m_offer->setObjectName(QStringLiteral("planOffer"));
    m_offer->hide();
    whole->addLayout(buttons);
    resize(usualSize);
    cancel->setFocus();
}

void PlanPreviewDialog::offer(const QString &text, const QString &hint)
{
    m_offer->setText(text);
    m_offer->setToolTip(toolTipText(hint));
    m_offer->show();
}

bool PlanPreviewDialog::isOfferTaken() const
{
    return m_offer->isChecked();
}

} // namespace velmora

#include "folder/actions/operation_results_dialog.h"

#include "folder/actions/action_words.h"
#include "session/translate.h"

#include <QAbstractTableModel>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr QSize usualSize(720, 380);

class ProblemModel final : public QAbstractTableModel {
public:
    ProblemModel(const QList<ActionProblem> &problems, QObject *parent)
        : QAbstractTableModel(parent), m_problems(problems)
    {}

    [[nodiscard]] int rowCount(const QModelIndex &parent) const override
    {
        return parent.isValid() ? 0 : int(m_problems.size());
    }
    [[nodiscard]] int columnCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : 2; }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
            return {};
        const ActionProblem &problem = m_problems[index.row()];
        const QString &text = index.column() == 0 ? problem.path : problem.reason;
        return role == Qt::ToolTipRole ? toolTipText(text) : text;
    }

    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return {};
        return section == 0 ? Velmora::tr("Name") : Velmora::tr("Reason");
    }

private:
    QList<ActionProblem> m_problems;
};

} // namespace

OperationResultsDialog::OperationResultsDialog(const QString &title, const QString &heading,
                                               const QList<ActionProblem> &problems, QWidget *parent)
    : QDialog(parent), m_problems(problems)
{
    setWindowTitle(title);
    setModal(true);
    auto *text = new QLabel(heading);
    text->setObjectName(QStringLiteral("resultsHeading"));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);

    auto *list = new QTreeView;
    list->setObjectName(QStringLiteral("resultsList"));
    list->setModel(new ProblemModel(problems, list));
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->setTextElideMode(Qt::ElideMiddle);
    list->header()->resizeSection(0, usualSize.width() / 2);
    list->header()->setStretchLastSection(true);

    auto *copy = new QPushButton(Velmora::tr("&Copy list"));
    copy->setObjectName(QStringLiteral("resultsCopy"));
    copy->setAutoDefault(false);
    auto *close = new QPushButton(Velmora::tr("Close"));
    close->setObjectName(QStringLiteral("resultsClose"));
    close->setDefault(true);
    connect(copy, &QPushButton::clicked, this, &OperationResultsDialog::copyAll);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(copy);
    buttons->addStretch(1);
    buttons->addWidget(close);

    auto *whole = new QVBoxLayout(this);
    whole->setSpacing(10);
    whole->addWidget(text);
    whole->addWidget(list, 1);
    whole->addLayout(buttons);
    resize(usualSize);
    close->setFocus();
}

void OperationResultsDialog::copyAll() const
{
    QString text;
    for (const ActionProblem &problem : m_problems)
        text += problem.path + u'\t' + problem.reason + u'\n';
    QGuiApplication::clipboard()->setText(text);
}

} // namespace velmora

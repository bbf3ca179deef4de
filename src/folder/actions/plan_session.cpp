#include "folder/actions/plan_session.h"

#include "folder/actions/folder_command.h"
#include "folder/actions/folder_log_panel.h"
#include "folder/actions/plan_view.h"
#include "session/frame/notice_bar.h"
#include "session/frame/path_edit.h"
#include "session/frame/status_line.h"
#include "session/session_bar.h"
#include "vfs/local_folder.h"

#include <QAbstractItemModel>
#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QSplitter>

#include <algorithm>

namespace velmora {

PlanSession::PlanSession(SessionHost &host, const QList<PathsBar::Field> &fields, const QString &viewName,
                         QAbstractItemModel *model, QWidget *parent)
    : SessionWidget(host, parent),
      m_inputs(new PathsBar(fields, this)),
      m_model(model),
      m_view(new PlanView(viewName, *model)),
      m_log(new FolderLogPanel),
      m_status(new StatusLine),
      m_runs(new PlanRuns(*this, *m_status, *m_log)),
      m_remarks(new QVBoxLayout)
{
    m_model->setParent(this);
    m_log->hide();
    connect(m_inputs, &PathsBar::submitted, this, [this] { start(); });
    connect(m_runs, &PlanRuns::stageChanged, this, &SessionWidget::editStateChanged);
    connect(m_log, &FolderLogPanel::closeWanted, m_log, &QWidget::hide);
    connect(m_view, &QTreeView::activated, this, [this] { openCurrent(); });
    connect(m_view, &PlanView::menuWanted, this, [this](QPoint at) {
        QMenu menu;
        fillRowMenu(menu);
        menu.exec(at);
    });
}

PlanSession::~PlanSession() = default;

void PlanSession::layOut(SessionBar &bar, const QString &label, QWidget *choices)
{
    m_bar = &bar;
    QGridLayout &grid = m_inputs->grid();
    grid.setContentsMargins(10, 8, 10, 8);
    grid.setVerticalSpacing(6);
    auto *name = new QLabel(label);
    name->setBuddy(choices->findChild<QComboBox *>());
    const int row = grid.rowCount();
    grid.addWidget(name, row, 0);
    grid.addWidget(choices, row, 1);
    auto *splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(m_view);
    splitter->addWidget(m_log);
    splitter->setStretchFactor(0, 4);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(&bar);
    column->addWidget(m_inputs);
    column->addLayout(m_remarks);
    column->addWidget(splitter, 1);
    column->addWidget(m_status);
    setFocusProxy(&m_inputs->edit(0));
}

void PlanSession::addAboveRows(QWidget *part)
{
    m_remarks->addWidget(part);
}

void PlanSession::showLog(bool hasNews)
{
    m_log->setVisible(m_log->isVisibleTo(this) || hasNews);
}

void PlanSession::focusRows()
{
    setFocusProxy(m_view); // whoever comes back from another tab is at work there
    if (const QWidget *focus = focusWidget(); !focus || m_inputs->isAncestorOf(focus))
        m_view->setFocus();
}

void PlanSession::dropPaths(const QStringList &paths, QPoint position)
{
    m_inputs->take(paths, m_inputs->mapFrom(this, position));
    if (m_inputs->isComplete())
        start();
}

void PlanSession::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_log->refreshTheme();
    m_status->refreshTheme();
    m_view->refreshTheme();
    for (NoticeBar *remark : findChildren<NoticeBar *>())
        remark->refreshTheme();
}

void PlanSession::onCancel()
{
    m_runs->cancel();
}

void PlanSession::onUndo()
{
    const Sides<QString> folders = writtenFolders();
    FolderActionContext context;
    context.roots = localFolders(folders.left, folders.right);
    m_runs->undo(context);
}

bool PlanSession::canEdit(EditCommand command) const
{
    return command == EditCommand::Undo && m_runs->mayUndo();
}

void PlanSession::edit(EditCommand command)
{
    if (canEdit(command))
        onUndo();
}

void PlanSession::confirmClose(std::function<void(bool mayClose)> answered)
{
    m_runs->confirmClose(closeQuestion(), std::move(answered));
}

} // namespace velmora

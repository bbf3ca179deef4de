#pragma once

#include "core/sides.h"
#include "folder/actions/plan_runs.h"
#include "session/frame/paths_bar.h"
#include "session/session_widget.h"

#include <QList>
#include <QPoint>
#include <QString>
#include <QStringList>

#include <functional>

class QAbstractItemModel;
class QBoxLayout;
class QMenu;

namespace velmora {

class FolderLogPanel;
class PlanView;
class SessionBar;
class StatusLine;

/// The frame of a session that makes a plan of folders, shows it row by row and carries it out: the paths with a row of
/// choices below, remarks, the rows above the log, the status line, and the runs.
class PlanSession : public SessionWidget {
    Q_OBJECT
public:
    ~PlanSession() override;

    [[nodiscard]] SessionPaths paths() const override { return m_inputs->paths(); }
    void setPaths(const SessionPaths &paths) override { m_inputs->setPaths(paths); }
    [[nodiscard]] bool isReading() const override { return m_runs->stage() == PlanRuns::Stage::Reading; }
    [[nodiscard]] bool hasUnsavedChanges() const override { return m_runs->stage() == PlanRuns::Stage::Writing; }
    void confirmClose(std::function<void(bool mayClose)> answered) override;
    /// Undo takes the latest run back.
    [[nodiscard]] bool canEdit(EditCommand command) const override;
    void edit(EditCommand command) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    /// Starts when no input is missing any more.
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

public Q_SLOTS:
    void onCancel();
    void onUndo();

protected:
    /// `model` is shown under `viewName`, and belongs to the session.
    PlanSession(SessionHost &host, const QList<PathsBar::Field> &fields, const QString &viewName,
                QAbstractItemModel *model, QWidget *parent);

    /// Puts the parts below each other; to be called once. `choices` stand below the paths, with `label` before them.
    void layOut(SessionBar &bar, const QString &label, QWidget *choices);
    /// Adds a part, such as a remark, between the paths and the rows.
    void addAboveRows(QWidget *part);

    [[nodiscard]] PathsBar &inputs() { return *m_inputs; }
    [[nodiscard]] PlanView &view() { return *m_view; }
    [[nodiscard]] FolderLogPanel &log() { return *m_log; }
    [[nodiscard]] StatusLine &status() { return *m_status; }
    [[nodiscard]] PlanRuns &runs() { return *m_runs; }
    [[nodiscard]] const PlanRuns &runs() const { return *m_runs; }
    /// Shows the log when there is something new in it.
    void showLog(bool hasNews);
    /// The caret goes to the rows, unless a person is at work elsewhere.
    void focusRows();

    /// The question before a session is closed that writes.
    [[nodiscard]] virtual QString closeQuestion() const = 0;
    /// The folders that the latest run has written to.
    [[nodiscard]] virtual Sides<QString> writtenFolders() const = 0;
    /// What can be done with the selected rows.
    virtual void fillRowMenu(QMenu &menu) = 0;
    /// Compares the current row, or opens it otherwise.
    virtual void openCurrent() = 0;

private:
    SessionBar *m_bar = nullptr;
    PathsBar *m_inputs;
    QAbstractItemModel *m_model;
    PlanView *m_view;
    FolderLogPanel *m_log;
    StatusLine *m_status;
    PlanRuns *m_runs;
    QBoxLayout *m_remarks;
};

} // namespace velmora

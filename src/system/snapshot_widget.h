#pragma once

#include "core/runner.h"
#include "session/session_widget.h"
#include "system/snapshot_job.h"
#include "system/snapshot_kind.h"

class QLabel;

namespace velmora {

class ListModel;
class ListPane;
class PathsBar;
class SnapshotBar;
class SnapshotSide;
class StatusLine;

/// A session that compares a piece of system state between two sides, each captured from this system or loaded from a
/// file. The kinds of state differ in their `SnapshotKind` alone.
///
/// A side that was captured has the kind's live text for its path in records; a record that is opened again captures
/// anew. One thing runs at a time: what a failed or cancelled one was to replace stays.
class SnapshotWidget : public SessionWidget {
    Q_OBJECT
public:
    SnapshotWidget(SnapshotKind kind, SessionHost &host, QWidget *parent = nullptr);
    ~SnapshotWidget() override;

    [[nodiscard]] QString kind() const final;
    [[nodiscard]] SessionPaths paths() const final;
    void setPaths(const SessionPaths &paths) final;
    /// Compares if both sides have something to compare.
    void start() final;
    /// Which rows are shown, as `keepRowsView` has it.
    [[nodiscard]] QJsonObject options() const final;
    void setOptions(const QJsonObject &options) final;
    [[nodiscard]] bool acceptsDroppedPaths() const final { return true; }
    void dropPaths(const QStringList &paths, QPoint position) final;
    void refreshTheme() final;

    [[nodiscard]] bool isBusy() const { return m_runner.isRunning(); }
    [[nodiscard]] const ListModel &rows() const;

public Q_SLOTS:
    void onCompare();

private:
    void buildLayout();
    [[nodiscard]] PathsBar *buildHead();
    void connectBar();
    void connectSides();

    void askForFile(SnapshotSide &side);
    /// Loads the file at `place`, or captures for the side's live place.
    void fetch(SnapshotSide &side, const QString &place);
    void askWhereToSave(SnapshotSide &side);
    void save(const QString &path, const Snapshot &snapshot);
    /// Runs an order, then `done` with what it brought; not when it was cancelled or there was no memory for it.
    void run(SnapshotOrder order, std::function<void(SnapshotOutcome &&)> done);
    /// Says why a side got no snapshot; false when there is nothing to say.
    bool tellFailure(const SideResult &result, const QString &place);
    void takeComparison(SnapshotOutcome &&outcome);
    void submit(SnapshotSide &side);
    void showTitle();

    void showState();
    void showProgress(const ProgressState &state);
    /// In place of an earlier failure.
    void inviteFiles();

    const SnapshotKind m_kind;
    SnapshotBar *m_bar;
    ListPane *m_list;
    StatusLine *m_status;
    QLabel *m_counts;
    PathsBar *m_inputs = nullptr;
    SnapshotSide *m_left = nullptr;
    SnapshotSide *m_right = nullptr;
    QString m_title; ///< of the tab, where a comparison has changed it
    Runner m_runner;
};

/// The session of kind "env": environment variables.
class EnvSnapshotWidget final : public SnapshotWidget {
    Q_OBJECT
public:
    explicit EnvSnapshotWidget(SessionHost &host, QWidget *parent = nullptr)
        : SnapshotWidget(environmentSnapshots(), host, parent)
    {}
};

/// The session of kind "service": the services of Windows.
class ServiceSnapshotWidget final : public SnapshotWidget {
    Q_OBJECT
public:
    explicit ServiceSnapshotWidget(SessionHost &host, QWidget *parent = nullptr)
        : SnapshotWidget(serviceSnapshots(), host, parent)
    {}
};

/// The session of kind "startup": what starts with the system.
class StartupSnapshotWidget final : public SnapshotWidget {
    Q_OBJECT
public:
    explicit StartupSnapshotWidget(SessionHost &host, QWidget *parent = nullptr)
        : SnapshotWidget(startupSnapshots(), host, parent)
    {}
};

} // namespace velmora

#pragma once

#include "core/runner.h"
#include "core/sides.h"
#include "folder/snapshot/folder_snapshot_job.h"
#include "session/session_widget.h"

class QCheckBox;
class QLabel;

namespace velmora {

class FolderSnapshotBar;
class FolderSnapshotRows;
class ListModel;
class ListPane;
class PathsBar;
class StatusLine;

/// The session of kind "snapshot": records the files of a folder in a snapshot file, and compares two sides, each a
/// folder as it is now or a snapshot file. One thing runs at a time: what a failed or cancelled one was to replace
/// stays.
class FolderSnapshotWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit FolderSnapshotWidget(SessionHost &host, QWidget *parent = nullptr);
    ~FolderSnapshotWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("snapshot"); }
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    /// Compares if both sides are named.
    void start() override;
    [[nodiscard]] bool isReading() const override { return m_runner.isRunning(); }
    /// "computeSha256" and "onlyDifferences", each where it is true.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

    [[nodiscard]] const ListModel &rows() const;

public Q_SLOTS:
    void onCompare();
    void onCreateSnapshot();
    void onOpen();
    void onShowInFileManager();

private:
    [[nodiscard]] QWidget *buildHead();
    void connectBar();
    void askForFile(Side side);
    [[nodiscard]] Sides<QString> places() const;
    [[nodiscard]] FolderSnapshotDigests digests() const;

    /// Runs a job; `done` gets what it brought, not when it was cancelled or there was no memory for it.
    template <typename Job, typename Done>
    void run(Job job, Done done);
    void takeComparison(FolderSnapshotOutcome &&outcome, const Sides<QString> &compared);
    void saveSnapshot(const QString &folder, const QString &target);
    void takeRecording(const FolderSnapshotRecording &recording, const QString &target);
    void takeLiveFiles(const LiveFiles &live);

    /// Where the files of the current row would be now.
    [[nodiscard]] Sides<QString> currentFiles() const;
    void showState();

    FolderSnapshotBar *m_bar;
    PathsBar *m_inputs;
    QCheckBox *m_digests;
    ListPane *m_list;
    StatusLine *m_status;
    QLabel *m_counts;
    Runner m_runner;
    Runner m_opening; ///< looks at the files of a row
};

} // namespace velmora

#pragma once

#include "core/passing_folder.h"
#include "core/runner.h"
#include "folder/sftp/engine/ssh_runs.h"
#include "session/session_widget.h"

#include <memory>

class QLabel;

namespace velmora {

class ListModel;
class ListPane;
class SftpBar;
class SftpInputs;
class StatusLine;

/// The session of kind "sftp": compares a local folder with one on a host that the programs ssh and scp reach. Of its
/// paths the left one is the local folder, the right one the place as "user@host:folder". One thing runs at a time:
/// what a failed or cancelled one was to replace stays. Files that were fetched for a comparison go with the session.
class SftpCompareWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit SftpCompareWidget(SessionHost &host, QWidget *parent = nullptr);
    ~SftpCompareWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("sftp"); }
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    /// Compares if host, user and local folder are named.
    void start() override;
    [[nodiscard]] bool isReading() const override { return m_runner.isRunning(); }
    /// "port" where it is another than 22, "onlyDifferences" where it is true.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    /// Takes a folder for the local one.
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

    [[nodiscard]] const ListModel &rows() const;

public Q_SLOTS:
    void onCompare();
    void onFetchAndCompare();
    void onCompareContents();
    void onFetchFiles();

private:
    /// What the rows were made from.
    struct Compared {
        RemotePlace place;
        QString localFolder;
        std::shared_ptr<const RemoteComparison> comparison;
        QHash<QString, bool> contents;
    };

    void connectBar();
    /// Runs a job, which is `doing`; `done` gets what it brought, not when it was cancelled or there was no memory for
    /// it.
    template <typename Job, typename Done>
    void run(const QString &doing, Job job, Done done);
    void takeComparison(RemoteComparing &&comparing, const RemotePlace &place, const QString &folder);
    void takeFetched(const SshEnd &end, const QString &local, const QString &fetched);
    void takeContents(const ContentsComparing &contents, qsizetype asked);
    void fetchInto(const QString &folder, const QStringList &files);
    void tellFailure(const SshEnd &end, const char *program, const RemotePlace &place);
    [[nodiscard]] SshTarget target(const RemotePlace &place) const;
    /// The selected paths that the sides have which `isWanted` tells.
    [[nodiscard]] QStringList selectedPaths(bool (*isWanted)(PairStatus status)) const;
    /// A new folder for a fetched file, which goes with the session; empty when there can be none.
    [[nodiscard]] QString newCopyFolder();
    void showRows();
    void showState();

    SftpBar *m_bar;
    SftpInputs *m_inputs;
    ListPane *m_list;
    StatusLine *m_status;
    QLabel *m_clock;
    QLabel *m_counts;
    Compared m_compared;
    std::shared_ptr<PassingFolder> m_copies; ///< a job that still writes there holds it, too
    int m_copyNumber = 0;
    Runner m_runner;
};

} // namespace velmora

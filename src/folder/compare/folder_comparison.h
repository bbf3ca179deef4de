#pragma once

#include "core/runner.h"
#include "core/sides.h"
#include "folder/engine/folder_jobs.h"
#include "folder/engine/folder_tree.h"
#include "platform/file_access.h"

#include <QObject>

#include <chrono>
#include <optional>

namespace velmora {

/// Two folders being compared: the tree of what is known so far, and the runs that make it grow.
///
/// Lives on the interface thread, which it never keeps busy for long: listing, comparing, sorting and filtering are
/// done by workers, and their results are joined to the tree in linear time. The top level comes first, all of it, with
/// its names; then what its files and folders are, folder by folder or, where the whole tree was asked for, at once. A
/// new load replaces the one before; cancelling keeps what is there.
class FolderComparison final : public QObject {
    Q_OBJECT
public:
    explicit FolderComparison(QObject *parent = nullptr);

    /// How far a load has come.
    enum class Stage {
        None,    ///< there is no load, or it has ended
        Listing, ///< finding the names of the top level
        Level,   ///< comparing the top level, or the whole tree
        Filling, ///< going through folders
    };

    /// Starts a load of two folders; nothing of the old tree is kept but which folders are open.
    void load(const FolderSpec &spec, bool wholeTree);
    /// Takes a result that is there already, made of items of `spec`'s folders.
    void show(const FolderSpec &spec, FolderTree tree);
    /// Ends the runs; what they have found stays.
    void cancel();
    /// Ends the runs and forgets the tree.
    void clear();

    [[nodiscard]] const FolderTree &tree() const noexcept { return m_tree; }
    [[nodiscard]] const FolderSpec &spec() const noexcept { return m_spec; }
    /// What the folders of this system were when they were listed.
    [[nodiscard]] const Sides<std::optional<FileIdentity>> &identities() const noexcept { return m_identities; }
    [[nodiscard]] Stage stage() const noexcept { return m_stage; }
    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] bool isCancelling() const;
    [[nodiscard]] const QList<FolderProblem> &problems() const noexcept { return m_problems; }
    [[nodiscard]] const TimeShifts &shifts() const noexcept { return m_shifts; }
    /// True when no folder of the tree is unloaded.
    [[nodiscard]] bool isWhole() const;
    /// The number of the latest load.
    [[nodiscard]] quint64 generation() const noexcept { return m_loader.currentNumber(); }

    /// Opens or closes a folder. One that is not loaded is read when it is opened, its own level only.
    void setExpanded(qint32 node, bool expanded);
    void setAllExpanded(bool expanded);

    /// Takes up filters, names and options that do not ask for the disk, and judges all entries anew.
    void refilter(const FolderSpec &spec);

    /// Compares entries anew, by their relative names; they may be new or gone.
    void recompare(const QStringList &names);
    /// The same for entries that may well be as they were: a file whose size and time have not changed is not read.
    void recheck(const QStringList &names);
    /// The same for pairs whose paths are not those that the names say.
    void recompare(const QList<BranchTask> &tasks);
    [[nodiscard]] BranchTask taskFor(const QString &name) const;

    /// Compares the contents of files by `method`: of those selected and of all in selected folders.
    void compareContents(const QList<qint32> &nodes, CompareMethod method);
    /// Reads the files that are shown and unread, and no others.
    void readUnread();

Q_SIGNALS:
    /// There will be another tree, and now there is.
    void treeAboutToBeReplaced();
    void treeReplaced();
    /// Entries came, went or were compared: the new number of each old node, -1 where it is gone.
    void treeChanged(const std::vector<qint32> &places);
    /// The numbers are the same; what is known of some nodes is not.
    void statesChanged();
    /// The judgement of the filters is in the tree.
    void filtered();
    /// A load has ended at once since one of the two folders is not there or cannot be read.
    void rootsUnreadable(const velmora::Sides<velmora::FolderRead> &roots);
    /// The files of the top level, or the whole trees, are compared.
    void levelKnown();
    /// A load has ended. `tree()` holds what it found.
    void loadFinished(quint64 generation, bool cancelled);
    /// The contents of a folder that was opened are there.
    void folderRead(const QString &name);
    /// Entries have been compared anew.
    void recompared(const QStringList &names);
    void contentsCompared(const velmora::ContentsResult &result, bool cancelled);
    void progressed(const velmora::ProgressState &state);
    void runningChanged();
    /// A run found no memory.
    void failed(const velmora::RunFault &fault);

private:
    /// Of one run that compares entry by entry: long enough for runs to be few, short enough for a view to seem alive.
    static constexpr auto fillBudget = std::chrono::milliseconds(200);

    void startLevel();
    void startFilling();
    void fillNext();
    void replaceTree(FolderTree &&tree);
    void takeListing(FolderListing &&listing);
    void takeBranches(BranchResult &&branches);
    /// What could not be read of these entries is found anew.
    void forgetProblems(const QList<BranchTask> &tasks);
    void endLoad(bool cancelled);
    void stopScanning();
    void startBranches();
    void startFilter();
    /// Of `m_contentsNodes`; without a method by reading all of them.
    void startContents(std::optional<CompareMethod> method);
    [[nodiscard]] bool canPatch() const { return m_stage != Stage::Listing && m_stage != Stage::Level; }
    void report(const ProgressState &state) { Q_EMIT progressed(state); }

    FolderSpec m_spec;
    Sides<std::optional<FileIdentity>> m_identities;
    FolderTree m_tree;
    QList<FolderProblem> m_problems;
    TimeShifts m_shifts;
    Stage m_stage = Stage::None;
    bool m_wholeTree = false;
    bool m_isCancelled = false;   ///< the load is to end, whatever run it is in
    bool m_filterIsStale = false; ///< the filters have changed since the verdicts of the tree
    quint64 m_revision = 0;       ///< grows when nodes are added, go or get another number
    QList<BranchTask> m_pending;  ///< of the load
    QList<BranchTask> m_asked;    ///< by a person or an operation
    std::optional<quint64> m_contentsRevision;
    std::vector<qint32> m_contentsNodes;
    Runner m_loader;
    Runner m_branches;
    Runner m_contents;
    Runner m_filterer;
    Runner m_disposer; ///< frees what a tree held, which takes a while for a large one
};

} // namespace velmora

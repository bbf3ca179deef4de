#include "folder/operations/merge_run.h"

#include "folder/operations/plan_entries.h"

#include <QSet>

namespace velmora {

namespace {

constexpr int targetRoot = int(allMergeVersions.size()); // behind those of the versions

/// Has the folders made that a file needs, each once, the outer ones first.
class NeededFolders {
public:
    explicit NeededFolders(OperationPlan &plan) : m_plan(plan) {}

    void make(const QString &folder)
    {
        if (folder.isEmpty() || m_made.contains(folder))
            return;
        make(parentPath(folder));
        m_made.insert(folder);
        OperationStep step;
        step.kind = OperationKind::MakeFolder;
        step.to = {targetRoot, folder};
        m_plan.steps.append(step);
    }

private:
    OperationPlan &m_plan;
    QSet<QString> m_made;
};

} // namespace

MergeSources mergeSourcesOf(const QList<FolderMergeFile> &files)
{
    MergeSources sources;
    sources.reserve(std::size_t(files.size()));
    for (const FolderMergeFile &file : files)
        sources.push_back(mergeSourceOf(file.status));
    return sources;
}

OperationPlan planFolderMerge(const MergeVersions<QString> &folders, const QList<FolderMergeFile> &files,
                              const MergeSources &sources, const QString &target)
{
    OperationPlan plan;
    for (const MergeVersion version : allMergeVersions) {
        plan.roots.append({folders[version], std::nullopt, false});
        if (isOrIsInside(target, folders[version]) || isOrIsInside(folders[version], target))
            plan.refusal = PlanRefusal::OverlappingRoots;
    }
    plan.roots.append({target, std::nullopt, true});
    if (plan.refusal != PlanRefusal::None)
        return plan;
    NeededFolders folderSteps(plan);
    for (qsizetype i = 0; i < files.size(); ++i) {
        const std::optional<MergeVersion> source = sources[std::size_t(i)];
        if (!source || files.at(i).sizes[*source] < 0)
            continue;
        folderSteps.make(parentPath(files.at(i).path));
        OperationStep step;
        step.kind = OperationKind::Copy;
        step.from = {int(*source), files.at(i).path};
        step.to = {targetRoot, files.at(i).path};
        step.mayReplace = true;
        plan.steps.append(step);
    }
    return plan;
}

} // namespace velmora

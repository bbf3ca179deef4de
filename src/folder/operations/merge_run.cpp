#include "folder/operations/merge_run.h"

#include "folder/operations/plan_entries.h"

#include <QSet>

namespace velmora {

namespace {

/// The root of the plan that a source stands for: versions first, merged texts behind them.
int rootOf(MergedFileSource source)
{
    return int(source) - int(MergedFileSource::Base);
}

bool isThere(const FolderMergeFile &file, MergedFileSource source)
{
    switch (source) {
    case MergedFileSource::LeftOut:
        break;
    case MergedFileSource::Text:
        return true;
    case MergedFileSource::Base:
    case MergedFileSource::Left:
    case MergedFileSource::Right:
        return file.sizes[allMergeVersions[std::size_t(rootOf(source))]] >= 0;
    }
    return false;
}

/// Has the folders made that a file needs, each once, the outer ones first.
class NeededFolders {
public:
    NeededFolders(OperationPlan &plan, int root) : m_plan(plan), m_root(root) {}

    void make(const QString &folder)
    {
        if (folder.isEmpty() || m_made.contains(folder))
            return;
        make(parentPath(folder));
        m_made.insert(folder);
        OperationStep step;
        step.kind = OperationKind::MakeFolder;
        step.to = {m_root, folder};
        step.mayReplace = true;
        m_plan.steps.append(step);
    }

private:
    OperationPlan &m_plan;
    int m_root;
    QSet<QString> m_made;
};

} // namespace

MergedFileSource mergeSource(MergeVersion version)
{
    return MergedFileSource(int(MergedFileSource::Base) + int(version));
}

MergeSources mergeSourcesOf(const QList<FolderMergeFile> &files)
{
    MergeSources sources;
    sources.reserve(std::size_t(files.size()));
    for (const FolderMergeFile &file : files) {
        const std::optional<MergeVersion> version = mergeSourceOf(file.status);
        sources.push_back(version ? mergeSource(*version) : MergedFileSource::LeftOut);
    }
    return sources;
}

OperationPlan planFolderMerge(const MergeVersions<QString> &folders, const QList<FolderMergeFile> &files,
                              const MergeSources &sources, const QString &target, const QString &texts)
{
    OperationPlan plan;
    for (const MergeVersion version : allMergeVersions) {
        plan.roots.append({folders[version], std::nullopt, false});
        if (isOrIsInside(target, folders[version]) || isOrIsInside(folders[version], target))
            plan.refusal = PlanRefusal::OverlappingRoots;
    }
    if (!texts.isEmpty())
        plan.roots.append({texts, std::nullopt, false});
    const int targetRoot = int(plan.roots.size());
    plan.roots.append({target, std::nullopt, true});
    if (plan.refusal != PlanRefusal::None)
        return plan;
    NeededFolders folderSteps(plan, targetRoot);
    for (qsizetype i = 0; i < files.size(); ++i) {
        const MergedFileSource source = sources[std::size_t(i)];
        if (!isThere(files.at(i), source) || rootOf(source) >= targetRoot)
            continue;
        folderSteps.make(parentPath(files.at(i).path));
        OperationStep step;
        step.kind = OperationKind::Copy;
        step.from = {rootOf(source), files.at(i).path};
        step.to = {targetRoot, files.at(i).path};
        step.mayReplace = true;
        plan.steps.append(step);
    }
    return plan;
}

} // namespace velmora

#include "vfs/archive/archive_problem.h"

#include <algorithm>

namespace velmora {

void noteProblem(QList<ArchiveProblem> &problems, ArchiveProblem::Kind kind, const QString &path, const QString &detail)
{
    const auto known = std::find_if(problems.begin(), problems.end(),
                                    [kind](const ArchiveProblem &problem) { return problem.kind == kind; });
    if (known == problems.end())
        problems.append({kind, path, detail, 1});
    else
        ++known->count;
}

} // namespace velmora

#include "vfs/archive/archive_problem.h"

#include <QString>

#include <algorithm>

namespace velmora {

namespace {

/// Names that no system holds can be as long as they like.
QString tellable(const QString &path)
{
    constexpr qsizetype most = 400;
    return path.size() <= most ? path : path.first(most / 2) + u'…' + path.last(most / 2);
}

} // namespace

void noteProblem(QList<ArchiveProblem> &problems, ArchiveProblem::Kind kind, const QString &path, const QString &detail)
{
    const auto known = std::find_if(problems.begin(), problems.end(),
                                    [kind](const ArchiveProblem &problem) { return problem.kind == kind; });
    if (known == problems.end())
        problems.append({kind, tellable(path), detail, 1});
    else
        ++known->count;
}

} // namespace velmora

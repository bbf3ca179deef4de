#include "folder/browse/problem_rows.h"

#include "core/visible_name.h"
#include "folder/actions/archive_words.h"
#include "session/translate.h"

namespace velmora {

ProblemRows::ProblemRows(const QList<ArchiveProblem> &problems)
    : FixedRowTree(std::vector<quint16>(std::size_t(problems.size()), 0)), m_problems(problems)
{}

QStringList ProblemRows::headings() const
{
    return {Velmora::tr("What is missing or damaged")};
}

QString ProblemRows::text(qint32 node, int /*column*/) const
{
    return visibleName(archiveProblemText(m_problems.at(node)));
}

} // namespace velmora

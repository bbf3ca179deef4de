#pragma once

#include "session/list/row_tree.h"
#include "vfs/archive/archive_problem.h"

#include <QList>
#include <QString>

namespace velmora {

/// What of an archive is not there to see, or cannot be read, as a list of sentences.
class ProblemRows final : public FixedRowTree {
public:
    explicit ProblemRows(const QList<ArchiveProblem> &problems);

    [[nodiscard]] const ArchiveProblem &problem(qint32 node) const { return m_problems.at(node); }

    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] QString text(qint32 node, int column) const override;

private:
    QList<ArchiveProblem> m_problems;
};

} // namespace velmora

#pragma once

#include "folder/operations/operation_executor.h"
#include "folder/operations/operation_journal.h"
#include "folder/operations/plan_builders.h"
#include "folder/operations/plan_survey.h"

#include <QTemporaryDir>

namespace velmora::test {

/// Two folders, "left" and "right", a third, "other", a journal and a recycle bin, all in a temporary folder. Paths of
/// the functions are relative to it.
class OperationFixture {
public:
    /// In memory where the system offers that, unless `folder` is set.
    explicit OperationFixture(const QString &folder = {});

    [[nodiscard]] QString path(const QString &relative) const { return m_root + u'/' + relative; }
    [[nodiscard]] QString left() const { return path(QStringLiteral("left")); }
    [[nodiscard]] QString right() const { return path(QStringLiteral("right")); }
    [[nodiscard]] QString journalFolder() const { return path(QStringLiteral("journal/runs")); }

    /// Makes files of lines "path=contents", folders of "path/" and links of "path->target". Each file is a second
    /// younger than the one before, and so are those of later calls.
    void make(const QStringList &lines);
    void remove(const QString &relative);
    /// Gives a file another time, in seconds after a fixed moment.
    void setTime(const QString &relative, qint64 seconds);
    [[nodiscard]] QDateTime time(const QString &relative) const;

    /// The folder in the form of `make`, in the order of names, hidden entries too.
    [[nodiscard]] QStringList picture(const QString &relative) const;
    /// "left" and "right".
    [[nodiscard]] QStringList picture() const;

    /// Not everywhere: tries it with a file of its own.
    [[nodiscard]] bool hasRecycleBin();

    /// A comparison of both sides by contents.
    [[nodiscard]] PlanInput input() const;
    [[nodiscard]] qsizetype indexOf(const PlanInput &input, const QString &name) const;

    [[nodiscard]] static OperationPlan surveyed(const OperationPlan &plan);
    [[nodiscard]] static ExecutionReport execute(const OperationPlan &plan, const ExecutionOptions &options = {},
                                                 FileLayer &files = FileLayer::native(), const CancelFlag &cancel = {});

private:
    QTemporaryDir m_dir;
    QString m_root;
    qint64 m_clock = 0;
};

/// Steps, one a line: the kind, the places and, in brackets, which files go by their bytes.
[[nodiscard]] QStringList drawn(const OperationPlan &plan);
/// What was left out, one a line: the reason's number and the path below `base`.
[[nodiscard]] QStringList leftOut(const OperationPlan &plan, const QString &base);
/// The codes of the problems, with the path below `base`.
[[nodiscard]] QStringList problems(const ExecutionReport &report, const QString &base);

} // namespace velmora::test

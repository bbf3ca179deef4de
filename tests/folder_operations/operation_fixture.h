#pragma once

#include "folder/operations/operation_executor.h"
#include "folder/operations/operation_journal.h"
#include "folder/operations/plan_builders.h"
#include "folder/operations/plan_survey.h"

#include <QTemporaryDir>

namespace velmora::test {

/// A path or a name, as a literal or not.
struct Name {
    Name(const char *utf8) : text(QString::fromUtf8(utf8)) {}
    Name(const QString &name) : text(name) {}
    QString text;
};

/// The words of a text.
[[nodiscard]] QStringList lines(const char *words);

/// Two folders, "left" and "right", a third, "other", a journal and a recycle bin, all in a temporary folder. Paths of
/// the functions are relative to it.
class OperationFixture {
public:
    /// In memory where the system offers that, unless `folder` is set.
    explicit OperationFixture(const QString &folder = {});

    [[nodiscard]] QString path(const Name &relative) const { return m_root + u'/' + relative.text; }
    [[nodiscard]] QString left() const { return path("left"); }
    [[nodiscard]] QString right() const { return path("right"); }
    [[nodiscard]] QString journalFolder() const { return path("journal/runs"); }

    /// Makes files of words "path=contents", folders of "path/" and links of "path->target". Each file is a second
    /// younger than the one before, and so are those of later calls.
    void make(const char *words);
    void makeLink(const QString &relative, const QString &target);
    void remove(const Name &relative);
    /// Gives a file another time, in seconds after a fixed moment.
    void setTime(const Name &relative, qint64 seconds);
    [[nodiscard]] QDateTime time(const Name &relative) const;

    /// The folder in the form of `make`, in the order of names, hidden entries too.
    [[nodiscard]] QStringList picture(const Name &relative) const;
    /// "left" and "right".
    [[nodiscard]] QStringList picture() const;

    /// Not everywhere: tries it with a file of its own.
    [[nodiscard]] bool hasRecycleBin();

    /// A comparison of both sides by contents.
    [[nodiscard]] PlanInput input() const;
    [[nodiscard]] static qsizetype indexOf(const PlanInput &input, const Name &name);

    /// What makes the right side as the left one is, surveyed.
    [[nodiscard]] OperationPlan mirror(DeleteManner manner = DeleteManner::ForGood) const;
    [[nodiscard]] static OperationPlan surveyed(const OperationPlan &plan);
    [[nodiscard]] static ExecutionReport execute(const OperationPlan &plan, const ExecutionOptions &options = {},
                                                 FileLayer &files = FileLayer::native(), const CancelFlag &cancel = {});
    [[nodiscard]] static ExecutionReport execute(const OperationPlan &plan, OperationJournal &journal,
                                                 FileLayer &files = FileLayer::native());

    /// The codes of the problems, with the paths.
    [[nodiscard]] QStringList problems(const ExecutionReport &report) const;
    /// What was left out, one a line: the reason and the path.
    [[nodiscard]] QStringList leftOut(const OperationPlan &plan) const;

private:
    [[nodiscard]] QString relative(const QString &path) const;
    void makeOne(const QString &line);

    QTemporaryDir m_dir;
    QString m_root;
    qint64 m_clock = 0;
};

/// A line of `OperationFixture::problems` or `leftOut`.
template <typename Code>
[[nodiscard]] QString said(Code code, const char *path)
{
    return QStringLiteral("%1 %2").arg(int(code)).arg(QString::fromUtf8(path));
}

/// Steps, one a line: "kind(place)" or "kind(from,to)", where a place is "root:path".
[[nodiscard]] QStringList drawn(const OperationPlan &plan);

} // namespace velmora::test

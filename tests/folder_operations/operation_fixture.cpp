#include "folder_operations/operation_fixture.h"

#include "folder/engine/folder_engine.h"
#include "vfs/local_folder.h"

#include <QDir>
#include <QTest>

#include <filesystem>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace velmora::test {

namespace {

const QDateTime moment(QDate(2024, 2, 29), QTime(12, 0), Qt::UTC);

QString rawTarget(const QString &link)
{
    return QString::fromStdU16String(std::filesystem::read_symlink(link.toStdU16String()).generic_u16string());
}

void draw(const QString &folder, const QString &prefix, QStringList &lines)
{
    const QFileInfoList entries =
        QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &entry : entries) {
        const QString name = prefix + entry.fileName();
        if (entry.isSymbolicLink()) {
            lines.append(name + QStringLiteral("->") + rawTarget(entry.filePath()));
        } else if (entry.isDir()) {
            lines.append(name + u'/');
            draw(entry.filePath(), name + u'/', lines);
        } else {
            QFile file(entry.filePath());
            const bool isOpen = file.open(QIODevice::ReadOnly);
            lines.append(name + u'=' + (isOpen ? QString::fromUtf8(file.readAll()) : QStringLiteral("?")));
        }
    }
}

/// Thousands of small trees are made: best in memory.
QString temporaryTemplate(const QString &folder)
{
    const QString memory = QStringLiteral("/dev/shm");
    const QString usual = QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
    return (folder.isEmpty() ? usual : folder) + QStringLiteral("/velmora-operations-XXXXXX");
}

} // namespace

OperationFixture::OperationFixture(const QString &folder)
    : m_dir(temporaryTemplate(folder)), m_root(QDir(m_dir.path()).canonicalPath())
{
    for (const char *folder : {"left", "right", "other"})
        QVERIFY(QDir().mkpath(path(folder)));
    // The bin of the home is on the volume of the home, and that is where this is.
    qputenv("XDG_DATA_HOME", path("data").toUtf8());
}

void OperationFixture::make(const char *words)
{
    for (const QString &line : lines(words))
        makeOne(line);
}

void OperationFixture::makeOne(const QString &line)
{
    if (const qsizetype arrow = line.indexOf(QLatin1String("->")); arrow > 0) {
        makeLink(line.left(arrow), line.mid(arrow + 2));
        return;
    }
    const QString name = line.section(u'=', 0, 0);
    QVERIFY(QDir().mkpath(path(name.section(u'/', 0, -2))));
    if (name.endsWith(u'/'))
        return;
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(line.section(u'=', 1).toUtf8()) >= 0);
    file.close();
    setTime(name, ++m_clock);
#ifdef Q_OS_WIN
    if (name.section(u'/', -1).startsWith(u'.')) // elsewhere the name alone hides it
        QVERIFY(::SetFileAttributesW(path(name).toStdWString().c_str(), FILE_ATTRIBUTE_HIDDEN) != FALSE);
#endif
}

void OperationFixture::makeLink(const QString &relative, const QString &target)
{
    QVERIFY(QDir().mkpath(path(relative.section(u'/', 0, -2))));
    QVERIFY(QFile::link(target, path(relative)));
}

void OperationFixture::remove(const Name &relative)
{
    const QFileInfo info(path(relative));
    if (info.isDir() && !info.isSymbolicLink())
        QVERIFY(QDir(path(relative)).removeRecursively());
    else
        QVERIFY(QFile::remove(path(relative)));
}

void OperationFixture::setTime(const Name &relative, qint64 seconds)
{
    QFile file(path(relative));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(moment.addSecs(seconds), QFileDevice::FileModificationTime));
}

QDateTime OperationFixture::time(const Name &relative) const
{
    return QFileInfo(path(relative)).lastModified().toUTC();
}

QStringList OperationFixture::picture(const Name &relative) const
{
    QStringList lines;
    draw(path(relative), {}, lines);
    return lines;
}

QStringList OperationFixture::picture() const
{
    QStringList lines;
    draw(left(), QStringLiteral("left/"), lines);
    draw(right(), QStringLiteral("right/"), lines);
    return lines;
}

bool OperationFixture::hasRecycleBin()
{
    const QString name = QStringLiteral("probe");
    make("probe=");
    FileError error;
    const std::unique_ptr<FolderHandle> folder = FileLayer::native().openRoot(m_root, error);
    const RecycleResult recycled = folder->recycle(name, [](const QString &) { return FileError(); });
    const FileError end =
        recycled.error.isError()
            ? folder->removeFile(name)
            : FileLayer::native().restore(recycled.binPath, *folder, name, [](const NodeState &) { return true; });
    return !recycled.error.isError() && !end.isError();
}

PlanInput OperationFixture::input() const
{
    PlanInput input;
    input.roots = localFolders(left(), right());
    input.items =
        compareFolderTree({.roots = input.roots, .method = CompareMethod::Crc}, {}, {nullptr, &input.problems});
    return input;
}

qsizetype OperationFixture::indexOf(const PlanInput &input, const Name &name)
{
    const auto found = std::find_if(input.items.begin(), input.items.end(),
                                    [&name](const FolderDiffItem &item) { return item.name == name.text; });
    return found == input.items.end() ? -1 : found - input.items.begin();
}

OperationPlan OperationFixture::mirror(DeleteManner manner) const
{
    return surveyed(planMirror(input(), Side::Left, manner));
}

OperationPlan OperationFixture::surveyed(const OperationPlan &plan)
{
    Progress progress;
    return surveyPlan(plan, FileLayer::native(), {}, progress);
}

ExecutionReport OperationFixture::execute(const OperationPlan &plan, const ExecutionOptions &options, FileLayer &files,
                                          const CancelFlag &cancel)
{
    Progress progress;
    return executePlan(plan, files, options, cancel, progress);
}

ExecutionReport OperationFixture::execute(const OperationPlan &plan, OperationJournal &journal, FileLayer &files)
{
    return execute(plan, {false, &journal}, files);
}

QStringList OperationFixture::problems(const ExecutionReport &report) const
{
    QStringList list;
    for (const OperationProblem &problem : report.problems)
        list.append(QStringLiteral("%1 %2").arg(int(problem.code)).arg(relative(problem.path)) +
                    (problem.steps > 1 ? QStringLiteral(" x%1").arg(problem.steps) : QString()));
    return list;
}

QStringList OperationFixture::leftOut(const OperationPlan &plan) const
{
    QStringList list;
    for (const LeftOutEntry &entry : plan.leftOut)
        list.append(QStringLiteral("%1 %2").arg(int(entry.reason)).arg(relative(entry.path)));
    return list;
}

QString OperationFixture::relative(const QString &path) const
{
    return path.startsWith(m_root) ? path.mid(m_root.size() + 1) : path;
}

QStringList lines(const char *words)
{
    return QString::fromUtf8(words).split(u' ', Qt::SkipEmptyParts);
}

QStringList drawn(const OperationPlan &plan)
{
    static const QStringList kinds = lines("make copy replace move recycle delete restore");
    QStringList steps;
    for (const OperationStep &step : plan.steps) {
        QStringList places;
        for (const Place &place : {step.from, step.to}) {
            if (place.isSet())
                places.append(QStringLiteral("%1:%2").arg(place.root).arg(place.relative));
        }
        steps.append(kinds[int(step.kind)] + u'(' + places.join(u',') + u')');
    }
    return steps;
}

} // namespace velmora::test

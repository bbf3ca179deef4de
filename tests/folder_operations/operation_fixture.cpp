#include "folder_operations/operation_fixture.h"

#include "folder/engine/folder_engine.h"

#include <QDir>
#include <QTest>

#include <cstdlib>
#include <filesystem>

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

QString below(const QString &path, const QString &base)
{
    return path.startsWith(base) ? path.mid(base.size() + 1) : path;
}

} // namespace

OperationFixture::OperationFixture(const QString &folder)
    : m_dir(temporaryTemplate(folder)), m_root(QDir(m_dir.path()).canonicalPath())
{
    for (const char *folder : {"left", "right", "other"})
        QVERIFY(QDir().mkpath(path(QLatin1String(folder))));
    // The bin of the home is on the volume of the home, and that is where this is.
    qputenv("XDG_DATA_HOME", path(QStringLiteral("data")).toUtf8());
}

void OperationFixture::make(const QStringList &lines)
{
    for (const QString &line : lines) {
        if (const qsizetype arrow = line.indexOf(QLatin1String("->")); arrow > 0) {
            QVERIFY(QDir().mkpath(path(line.left(arrow).section(u'/', 0, -2))));
            QVERIFY(QFile::link(line.mid(arrow + 2), path(line.left(arrow))));
            continue;
        }
        const QString name = line.section(u'=', 0, 0);
        QVERIFY(QDir().mkpath(path(name.section(u'/', 0, -2))));
        if (name.endsWith(u'/'))
            continue;
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write(line.section(u'=', 1).toUtf8()) >= 0);
        file.close();
        setTime(name, ++m_clock);
#ifdef Q_OS_WIN
        if (name.section(u'/', -1).startsWith(u'.')) // elsewhere the name alone hides it
            QCOMPARE(std::system(("attrib +h \"" + QDir::toNativeSeparators(path(name)).toUtf8() + '"').constData()),
                     0);
#endif
    }
}

void OperationFixture::remove(const QString &relative)
{
    const QFileInfo info(path(relative));
    if (info.isDir() && !info.isSymbolicLink())
        QVERIFY(QDir(path(relative)).removeRecursively());
    else
        QVERIFY(QFile::remove(path(relative)));
}

void OperationFixture::setTime(const QString &relative, qint64 seconds)
{
    QFile file(path(relative));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(moment.addSecs(seconds), QFileDevice::FileModificationTime));
}

QDateTime OperationFixture::time(const QString &relative) const
{
    return QFileInfo(path(relative)).lastModified().toUTC();
}

QStringList OperationFixture::picture(const QString &relative) const
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
    make({name + u'='});
    FileError error;
    const std::unique_ptr<FolderHandle> folder = FileLayer::native().openRoot(m_root, error);
    const RecycleResult recycled = folder->recycle(name);
    const FileError end = recycled.error.isError() ? folder->removeFile(name)
                                                   : FileLayer::native().restore(recycled.binPath, *folder, name);
    return !recycled.error.isError() && !end.isError();
}

PlanInput OperationFixture::input() const
{
    PlanInput input;
    input.leftRoot = left();
    input.rightRoot = right();
    input.items = compareFolderTree(left(), right(), {}, CompareMethod::Crc, {}, 0, {}, {nullptr, &input.problems});
    return input;
}

qsizetype OperationFixture::indexOf(const PlanInput &input, const QString &name) const
{
    for (qsizetype i = 0; i < input.items.size(); ++i) {
        if (input.items[i].name == name)
            return i;
    }
    return -1;
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

QStringList drawn(const OperationPlan &plan)
{
    static const QStringList kinds{QStringLiteral("make"),   QStringLiteral("copy"),    QStringLiteral("replace"),
                                   QStringLiteral("move"),   QStringLiteral("recycle"), QStringLiteral("delete"),
                                   QStringLiteral("restore")};
    QStringList lines;
    for (const OperationStep &step : plan.steps) {
        const auto place = [](const Place &where) {
            return where.isSet() ? QStringLiteral(" %1:%2").arg(where.root).arg(where.relative) : QString();
        };
        lines.append(kinds[int(step.kind)] + place(step.from) +
                     (step.to.isSet() ? QStringLiteral(" ->") + place(step.to) : QString()));
    }
    return lines;
}

QStringList leftOut(const OperationPlan &plan, const QString &base)
{
    QStringList lines;
    for (const LeftOutEntry &entry : plan.leftOut)
        lines.append(QStringLiteral("%1 %2").arg(int(entry.reason)).arg(below(entry.path, base)));
    return lines;
}

QStringList problems(const ExecutionReport &report, const QString &base)
{
    QStringList lines;
    for (const OperationProblem &problem : report.problems)
        lines.append(QStringLiteral("%1 %2").arg(int(problem.code)).arg(below(problem.path, base)));
    return lines;
}

} // namespace velmora::test

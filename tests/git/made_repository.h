#pragma once

#include "support/files.h"

#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace velmora::test {

/// Runs plain git in a folder, with a configuration of its own, and returns what it wrote.
inline QByteArray git(const QString &folder, const QStringList &arguments, int *status = nullptr)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("GIT_CONFIG_NOSYSTEM"), QStringLiteral("1"));
    environment.insert(QStringLiteral("GIT_CONFIG_GLOBAL"), QDir::rootPath() + QStringLiteral("dev/null"));
    for (const char *who : {"AUTHOR", "COMMITTER"}) {
        environment.insert(QStringLiteral("GIT_%1_NAME").arg(QLatin1String(who)), QStringLiteral("A U Thor"));
        environment.insert(QStringLiteral("GIT_%1_EMAIL").arg(QLatin1String(who)), QStringLiteral("a@b.c"));
        environment.insert(QStringLiteral("GIT_%1_DATE").arg(QLatin1String(who)), QStringLiteral("1700000000 +0000"));
    }
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(QStringLiteral("git"),
                  QStringList{QStringLiteral("-c"), QStringLiteral("protocol.file.allow=always")} + arguments);
    const bool ended = process.waitForFinished();
    if (status)
        *status = ended ? process.exitCode() : -1;
    return process.readAllStandardOutput();
}

/// For the first function of a test: where there is no git, there is nothing to test.
#define SKIP_WITHOUT_GIT()                                                                                             \
    if (QStandardPaths::findExecutable(QStringLiteral("git")).isEmpty())                                               \
    QSKIP("git is not installed")

/// A repository for one test, with files beside it.
class MadeRepository {
public:
    MadeRepository() { run("init -q -b main ."); }

    [[nodiscard]] QString path(const QString &name = {}) const { return QDir(m_folder.path()).filePath(name); }
    /// Plain git with the arguments separated by blanks.
    QByteArray run(const char *arguments) const
    {
        return git(m_folder.path(), QString::fromUtf8(arguments).split(u' ', Qt::SkipEmptyParts));
    }
    void write(const QString &name, const QByteArray &bytes) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QVERIFY2(makeFile(path(name), bytes), qPrintable(name));
    }
    void commit(const QString &subject) const
    {
        run("add -A");
        git(m_folder.path(), {QStringLiteral("commit"), QStringLiteral("-q"), QStringLiteral("--allow-empty"),
                              QStringLiteral("-m"), subject});
    }

private:
    QTemporaryDir m_folder;
};

/// Lines that no other seed has.
inline QByteArray lines(int seed, int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += "line " + QByteArray::number(seed * 1000 + i) + '\n';
    return text;
}

} // namespace velmora::test

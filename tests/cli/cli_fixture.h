#pragma once

#include "cli/command_line.h"
#include "support/files.h"

#include <QBuffer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace velmora::test {

/// What one run of the command line put out.
struct CliResult {
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

/// Runs the command line in this process.
inline CliResult runCli(const QStringList &arguments, const QByteArray &standardInput = {})
{
    QByteArray input = standardInput;
    CliResult result;
    QBuffer in(&input);
    QBuffer out(&result.output);
    QBuffer err(&result.errors);
    const bool open = in.open(QIODevice::ReadOnly) && out.open(QIODevice::WriteOnly) && err.open(QIODevice::WriteOnly);
    if (open)
        result.status = cli::run(arguments, {in, out, err});
    return result;
}

/// The same with the arguments separated by blanks.
inline CliResult runCli(const QByteArray &arguments, const QByteArray &standardInput = {})
{
    return runCli(QString::fromUtf8(arguments).split(u' ', Qt::SkipEmptyParts), standardInput);
}

/// A folder of its own for the files of one test, and the current one for as long.
class CliFiles {
public:
    CliFiles() { QDir::setCurrent(m_folder.path()); }
    ~CliFiles() { QDir::setCurrent(m_before); }
    CliFiles(const CliFiles &) = delete;
    CliFiles &operator=(const CliFiles &) = delete;

    static void write(const char *name, const QByteArray &bytes) { QVERIFY2(makeFile(word(name), bytes), name); }

    [[nodiscard]] static QByteArray read(const char *name) { return contentsOf(word(name)); }

private:
    QString m_before = QDir::currentPath();
    QTemporaryDir m_folder;
};

} // namespace velmora::test

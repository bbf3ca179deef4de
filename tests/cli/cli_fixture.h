#pragma once

#include "cli/command_line.h"

#include <QBuffer>
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

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

/// A folder of its own for the files of one test.
class CliFiles {
public:
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Writes a file and returns its path.
    QString write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(name));
        return file.fileName();
    }

    [[nodiscard]] QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(unreadable)");
    }

private:
    QTemporaryDir m_folder;
};

} // namespace velmora::test

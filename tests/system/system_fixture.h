#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace velmora::test {

/// JSON written with single quotation marks.
inline QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

/// A folder of its own for the files of one test.
class TestFiles {
public:
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Writes a file, with the folders that it lies in, and returns its path.
    QString write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        QDir().mkpath(QFileInfo(file).absolutePath());
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

/// Puts a program of the tests' own in the place of PowerShell while it lives, and nothing else on the search path.
class FakePowerShell {
public:
    FakePowerShell() { qputenv("PATH", VELMORA_FAKE_POWERSHELL_FOLDER); }
    ~FakePowerShell()
    {
        qputenv("PATH", m_path);
        for (const char *variable : {"VELMORA_FAKE_OUTPUT", "VELMORA_FAKE_CALL", "VELMORA_FAKE_ENDLESS"})
            qunsetenv(variable);
    }
    FakePowerShell(const FakePowerShell &) = delete;
    FakePowerShell &operator=(const FakePowerShell &) = delete;

    /// What it writes from now on.
    void says(const QByteArray &output) const
    {
        qputenv("VELMORA_FAKE_OUTPUT", m_files.write(QStringLiteral("output"), output).toLocal8Bit());
    }
    /// From now on it never ends.
    static void hangs() { qputenv("VELMORA_FAKE_ENDLESS", "1"); }
    /// From now on it is not there.
    static void goes() { qputenv("PATH", QTemporaryDir().path().toLocal8Bit()); }

    /// Remembers from now on how it is called.
    void listens() const { qputenv("VELMORA_FAKE_CALL", m_files.write(QStringLiteral("call"), {}).toLocal8Bit()); }
    /// The arguments of all calls since then.
    [[nodiscard]] QStringList call() const
    {
        return QString::fromUtf8(m_files.read(QStringLiteral("call"))).split(u'\n', Qt::SkipEmptyParts);
    }

private:
    TestFiles m_files;
    QByteArray m_path = qgetenv("PATH");
};

} // namespace velmora::test

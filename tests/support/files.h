#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>

namespace velmora::test {

[[nodiscard]] inline QString word(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// The parts of a text between "|".
[[nodiscard]] inline QStringList words(const char *utf8)
{
    return word(utf8).split(u'|', Qt::SkipEmptyParts);
}

/// False where the file cannot be written whole.
[[nodiscard]] inline bool makeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// "(unreadable)" where nothing can be read.
[[nodiscard]] inline QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(unreadable)");
}

/// The names of all that is in a folder, hidden entries too.
[[nodiscard]] inline QStringList entriesOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace velmora::test

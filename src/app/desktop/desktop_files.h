#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace velmora {

/// A file that a desktop reads from the user's data folder.
struct DesktopFile {
    QString path; ///< from the data folder on, with "/"
    QByteArray contents;
    bool executable = false;
};

/// Puts files into the user's data folder and takes them away again without a trace.
///
/// What came with the files, folders and the caches that the system's tools make, is written down beside them, so that
/// it goes when they go; what was there before, or has been filled by others since, stays. Blocks while files are
/// written and the tools run.
class DesktopFiles final {
public:
    /// `files` is what is installed, and by its paths what is removed.
    DesktopFiles(QString dataFolder, QList<DesktopFile> files);

    [[nodiscard]] bool areInstalled() const;
    /// Writes all files; false, and nothing is left of them, when one cannot be written.
    [[nodiscard]] bool install() const;
    /// False when a file could not be removed.
    bool remove() const;

private:
    [[nodiscard]] QString whole(const QString &path) const;
    [[nodiscard]] QStringList missingParents(const QString &path) const;
    [[nodiscard]] QStringList readList() const;
    [[nodiscard]] bool write(const DesktopFile &file) const;
    void removeCaches(const QStringList &made) const;

    QString m_folder;
    QList<DesktopFile> m_files;
};

/// A text as the value of a desktop entry's key.
[[nodiscard]] QString desktopValue(const QString &text);

/// A command of fixed arguments, `program` first, as the value of an Exec key, followed by `code`: the field code for
/// the chosen files, such as "%f".
[[nodiscard]] QString desktopCommand(const QStringList &command, const QString &code);

/// An argument as a POSIX shell reads it back.
[[nodiscard]] QString shellArgument(const QString &argument);

} // namespace velmora

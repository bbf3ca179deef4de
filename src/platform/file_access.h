#pragma once

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velmora {

/// Tells two files or folders apart whatever the paths that lead to them.
struct FileIdentity {
    quint64 volume = 0;
    quint64 number = 0;

    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

/// What an entry is once links are followed.
enum class EntryKind : quint8 {
    File,
    Folder,
    Special, ///< reached by a link: a pipe, a socket or a device, which nobody may open
};

/// One entry of a folder as a listing sees it.
struct FolderEntry {
    QString name;
    qint64 size = 0;                      ///< bytes; of a folder whatever the file system says
    qint64 modifiedMs = 0;                ///< milliseconds since 1970-01-01 UTC
    std::optional<FileIdentity> identity; ///< where the file system gives it away with the listing
    EntryKind kind = EntryKind::File;
    bool isLink = false;
};

/// How reading a folder ended.
enum class FolderRead : quint8 {
    Complete,
    Stopped,    ///< the sink wanted no more
    Missing,    ///< there is no folder of this path
    Unreadable, ///< there is one, and it cannot be listed, or not to its end
};

/// What one read brought.
struct FilePiece {
    qint64 length = 0;   ///< bytes read, fewer than asked for when the file ended or failed
    bool failed = false; ///< the byte after them could not be read

    friend bool operator==(const FilePiece &, const FilePiece &) = default;
};

/// An open regular file, closed by the destructor. Any number of threads may read from it at once.
class OpenFile {
public:
    OpenFile() = default;
    virtual ~OpenFile() = default;
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    /// Reads from `offset` on until `length` bytes are there, the file ends or a byte cannot be read.
    [[nodiscard]] virtual FilePiece readAt(qint64 offset, char *buffer, qint64 length) = 0;

    /// The length of the file now; nothing when that cannot be told.
    [[nodiscard]] virtual std::optional<qint64> size() const = 0;

    /// The first place from `offset` on that may hold anything but zeros: what lies before it takes no room on the
    /// medium. The end of the file when there is none, and `offset` where the file system does not tell.
    [[nodiscard]] virtual qint64 nextData(qint64 offset) const { return offset; }

    /// Tells the system that the range will be read soon. May do nothing.
    virtual void expect(qint64 offset, qint64 length) = 0;

    /// Nothing for a file that is none of this system.
    [[nodiscard]] virtual std::optional<FileIdentity> identity() const = 0;
};

/// What a caller of `FileOpener::open` already knows about the path.
enum class OpenHint : quint8 {
    Unknown,
    ListedAsFile, ///< a listing showed it as a regular file a moment ago
};

/// Opens one file after the other. Used by one thread; holds on to the folder of the last files, so that files of one
/// folder are best opened in a row.
class FileOpener {
public:
    FileOpener() = default;
    virtual ~FileOpener() = default;
    FileOpener(const FileOpener &) = delete;
    FileOpener &operator=(const FileOpener &) = delete;

    /// Opens a regular file for reading; null when that fails or the path leads to anything else: that is never opened.
    [[nodiscard]] virtual std::unique_ptr<OpenFile> open(const QString &path, OpenHint hint) = 0;
};

/// The file system as the folder tools see it. Stateless and usable from any thread at once.
///
/// Paths are absolute and use "/". They may be longer than the system takes in one call, and names may hold bytes that
/// are no text: see `nativeName`. `native()` is the real one; tests put others in its place.
class FileAccess {
public:
    FileAccess() = default;
    virtual ~FileAccess() = default;
    FileAccess(const FileAccess &) = delete;
    FileAccess &operator=(const FileAccess &) = delete;

    /// Takes one entry; false stops the reading.
    using Sink = std::function<bool(FolderEntry &&)>;

    /// Gives `sink` the entries of a folder in no order: files, folders and working links, classed as what they point
    /// to. Left out are hidden entries (but see `nativeWithHidden`), broken links, entries that vanish meanwhile, and
    /// pipes, sockets and devices, unless a link leads to one. Costs one system call for each entry.
    [[nodiscard]] virtual FolderRead readFolder(const QString &path, const Sink &sink) const = 0;

    /// A new opener; this object must outlive it.
    [[nodiscard]] virtual std::unique_ptr<FileOpener> makeOpener() const = 0;

    /// What stands at `path`, links followed, with its identity and without a name; nothing when there is nothing.
    [[nodiscard]] virtual std::optional<FolderEntry> describe(const QString &path) const = 0;

    [[nodiscard]] std::optional<FileIdentity> identity(const QString &path) const
    {
        const std::optional<FolderEntry> entry = describe(path);
        return entry ? entry->identity : std::nullopt;
    }

    [[nodiscard]] static const FileAccess &native();
    /// The same, and its listings hold hidden entries.
    [[nodiscard]] static const FileAccess &nativeWithHidden();
};

/// The bytes that stand for a path or name in system calls, in the output of programs, in archives and repositories,
/// and on other hosts. There names are bytes: those that are valid UTF-8 are text, and every other byte b appears in
/// strings as the lone surrogate U+DC00 + b, which no text holds. So each name survives the way through a string, and
/// names that differ stay different, on Windows as on Unix.
[[nodiscard]] std::string nativeName(QStringView name);

/// The string form of the bytes of a name; the reverse of `nativeName`.
[[nodiscard]] QString nameFromNative(std::string_view bytes);

} // namespace velmora

#pragma once

#include "platform/file_access.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// Why a call of the file system failed, as far as callers act on it.
enum class FileErrorKind : quint8 {
    None,
    Missing,        ///< there is nothing of that name
    Exists,         ///< there is something of that name already
    NotAFolder,     ///< what should be passed or listed is no folder
    NotAFile,       ///< what should be read is no regular file
    LinkOnTheWay,   ///< a link stands where a folder should; it was not followed
    NotEmpty,       ///< the folder to be removed holds something
    Denied,         ///< no permission, a read-only volume, or protected
    InUse,          ///< held by another program
    ReadFailed,     ///< of a copy: the source could not be read to its end
    NoSpace,        ///< the volume or the quota is full
    NameNotAllowed, ///< no entry can have this name here
    OtherVolume,    ///< the two names lie on different volumes
    Unsupported,    ///< this file system or system cannot do that
    NotExpected,    ///< what came was not what the caller expected; it is where it was
    Stopped,        ///< the caller asked for it
    Other,
};

/// What a call of the file system says of its end.
struct FileError {
    FileErrorKind kind = FileErrorKind::None;
    QString reason; ///< the system's own words

    [[nodiscard]] bool isError() const noexcept { return kind != FileErrorKind::None; }
};

/// What an entry itself is: links are not followed.
enum class NodeKind : quint8 {
    File,
    Folder,
    Link,
    Special, ///< a pipe, a socket, a device
};

/// An entry as it stands, links not followed.
struct NodeState {
    NodeKind kind = NodeKind::File;
    qint64 size = 0;                      ///< bytes; of anything but a file whatever the file system says
    qint64 modifiedNs = 0;                ///< nanoseconds since 1970-01-01 UTC, as precise as the file system is
    std::optional<FileIdentity> identity; ///< where the file system gives entries a lasting one
    quint32 permissions = 0;              ///< Unix: the lowest nine mode bits; Windows: the attributes
    bool leadsToFolder = false;           ///< of a link: made as a link to a folder (Windows tells them apart)
};

/// An entry, or why there is none to be had.
struct NodeResult {
    NodeState node;
    FileError error;
};

/// A regular file open for reading, from its begin on. Closed by the destructor.
class FileSource {
public:
    FileSource() = default;
    virtual ~FileSource() = default;
    FileSource(const FileSource &) = delete;
    FileSource &operator=(const FileSource &) = delete;

    /// What is open, whatever has its name by now.
    [[nodiscard]] virtual NodeResult state() = 0;

    /// Reads the next bytes; fewer than asked for at the end of the file only, or when `failed` is set.
    [[nodiscard]] virtual FilePiece read(char *buffer, qint64 length) = 0;

    /// May read a file of up to `most` bytes into memory, for `FileSink::copyFrom`; to be called before anything is
    /// read. What changes afterwards shows in `state`.
    virtual void readAhead(qint64 /*most*/) {}
};

/// A new file that is being written. The destructor closes it and leaves it where it is.
class FileSink {
public:
    FileSink() = default;
    virtual ~FileSink() = default;
    FileSink(const FileSink &) = delete;
    FileSink &operator=(const FileSink &) = delete;

    /// Called with the number of bytes copied so far, at least every 50 ms unless the device blocks; false stops.
    using Tick = std::function<bool(qint64 bytes)>;

    /// Appends `length` bytes.
    [[nodiscard]] virtual FileError write(const char *bytes, qint64 length) = 0;

    /// Copies all of `source`, which must come from the same layer and be unread, in the quickest way that there is.
    /// Holes stay holes.
    [[nodiscard]] virtual FileError copyFrom(FileSource &source, const Tick &tick) = 0;

    /// Sets modification time and permissions, those of access lists and what else the system keeps about files too
    /// where a source was copied. `Unsupported` when this file system has no access lists and the source has one;
    /// then nobody may do more than at the source.
    [[nodiscard]] virtual FileError keepAttributes(const NodeState &model) = 0;

    /// Brings what was written to the disk.
    [[nodiscard]] virtual FileError flush() = 0;

    /// What has been written.
    [[nodiscard]] virtual NodeResult state() = 0;
};

/// Where a recycled entry went.
struct RecycleResult {
    QString binPath; ///< what `FileLayer::restore` takes; empty where the system does not tell
    FileError error;
};

/// A folder that is held, so that its entries are reached by their names alone and no link that takes the place of a
/// folder on the way can lead elsewhere. Made by `FileLayer::openRoot` and `openFolder`. For one thread at a time.
///
/// Names are bare names in the form of `nativeName`. No call follows a link that `name` is.
class FolderHandle {
public:
    FolderHandle() = default;
    virtual ~FolderHandle() = default;
    FolderHandle(const FolderHandle &) = delete;
    FolderHandle &operator=(const FolderHandle &) = delete;

    /// Takes one entry; false stops the listing.
    using Sink = std::function<bool(const QString &name, const NodeState &node)>;

    /// The folder itself.
    [[nodiscard]] virtual NodeResult self() = 0;
    [[nodiscard]] virtual NodeResult stat(const QString &name) = 0;
    /// Every entry, hidden ones too, in no order.
    [[nodiscard]] virtual FileError list(const Sink &sink) = 0;
    /// Takes the name of an entry; false stops the listing.
    using NameSink = std::function<bool(const QString &name)>;
    /// `list` without looking at the entries.
    [[nodiscard]] virtual FileError listNames(const NameSink &sink)
    {
        return list([&sink](const QString &name, const NodeState &) { return sink(name); });
    }
    /// True when this folder is `other` or lies in it, by whatever path.
    [[nodiscard]] virtual bool liesIn(FolderHandle &other) = 0;
    /// The identities of this folder and of those that it lies in, up to the top; nothing where that cannot be told.
    /// What has none of them does not hold this folder.
    [[nodiscard]] virtual std::optional<std::vector<FileIdentity>> lineage() { return std::nullopt; }
    /// Whether `path`, by which this folder was opened, still leads to it: no error when it does or nobody can tell,
    /// `NotExpected` when it leads to another one, else why it leads nowhere. Costs about one look at an entry.
    [[nodiscard]] virtual FileError checkPath(const QString & /*path*/) { return {}; }

    /// Null with `error` set when it fails.
    [[nodiscard]] virtual std::unique_ptr<FolderHandle> openFolder(const QString &name, FileError &error) = 0;
    /// `openFolder` for each part of `relative` in turn, parts being separated by '/'.
    [[nodiscard]] virtual std::unique_ptr<FolderHandle> openBelow(const QString &relative, FileError &error);
    [[nodiscard]] virtual std::unique_ptr<FileSource> openFile(const QString &name, FileError &error) = 0;
    /// Makes a file that only its owner can read until `keepAttributes`; fails when the name is taken.
    [[nodiscard]] virtual std::unique_ptr<FileSink> createFile(const QString &name, FileError &error) = 0;

    /// With a `model` nobody else may look in until the folder is given its attributes.
    [[nodiscard]] virtual FileError makeFolder(const QString &name, const NodeState *model) = 0;
    [[nodiscard]] virtual FileError linkTarget(const QString &name, QString &target) = 0;
    [[nodiscard]] virtual FileError makeLink(const QString &name, const QString &target, bool leadsToFolder) = 0;
    /// Gives the same file a second name; fails when that is taken.
    [[nodiscard]] virtual FileError makeHardLink(const QString &name, FolderHandle &to, const QString &newName) = 0;

    enum class IfTaken : quint8 {
        Fail,
        Replace, ///< a file or link of the new name is replaced in one step
    };
    [[nodiscard]] virtual FileError move(const QString &name, FolderHandle &to, const QString &newName,
                                         IfTaken ifTaken) = 0;
    /// Swaps two entries in one step, so that the caller can look at what came out and swap back. `Unsupported` where
    /// the system or the volume cannot.
    [[nodiscard]] virtual FileError exchange(const QString & /*name*/, FolderHandle & /*to*/,
                                             const QString & /*newName*/)
    {
        return {FileErrorKind::Unsupported, {}};
    }

    /// Gives the owner the permission to change what is in this folder, or takes it back. Nothing where permissions of
    /// a folder do not protect what is in it.
    [[nodiscard]] virtual FileError letOwnerWrite(bool /*may*/) { return {}; }

    /// Modification time and permissions of a folder or, where links have them, of a link.
    [[nodiscard]] virtual FileError keepAttributes(const QString &name, const NodeState &model) = 0;
    /// Gives the folder `name` the time, permissions and what else the system keeps about folders of the folder `model`
    /// in `from`. Errors as those of `FileSink::keepAttributes`.
    [[nodiscard]] virtual FileError keepFolderAttributes(const QString &name, FolderHandle &from, const QString &model)
    {
        const NodeResult found = from.stat(model);
        return found.error.isError() ? found.error : keepAttributes(name, found.node);
    }
    /// Removes a file or link.
    [[nodiscard]] virtual FileError removeFile(const QString &name) = 0;
    /// Removes an empty folder.
    [[nodiscard]] virtual FileError removeFolder(const QString &name) = 0;
    /// Told where in the bin an entry is about to go, right before it does; an error keeps it from going.
    using BinNotice = std::function<FileError(const QString &binPath)>;

    /// Moves an entry, a folder with everything in it, to the recycle bin of its volume. Fails with `Unsupported` where
    /// there is none; deletes nothing then. `notice` is not called where the system chooses the place itself.
    [[nodiscard]] virtual RecycleResult recycle(const QString &name, const BinNotice &notice) = 0;

    /// Brings everything to the disk that was written to the volume of this folder.
    [[nodiscard]] virtual FileError settle() = 0;
};

/// The file system as the operations on files see it. `native()` is the real one; tests put others in its place.
class FileLayer {
public:
    FileLayer() = default;
    virtual ~FileLayer() = default;
    FileLayer(const FileLayer &) = delete;
    FileLayer &operator=(const FileLayer &) = delete;

    /// Opens a folder by its absolute path, links on the way followed. Null with `error` set when it fails.
    [[nodiscard]] virtual std::unique_ptr<FolderHandle> openRoot(const QString &path, FileError &error) = 0;

    /// True when handles may be used on several threads at once, each on one.
    [[nodiscard]] virtual bool isForThreads() const { return false; }

    /// True when `FolderHandle::settle` works; else every file must be flushed by itself.
    [[nodiscard]] virtual bool canSettle() const = 0;

    /// What is at `binPath`, where `FolderHandle::recycle` put something.
    [[nodiscard]] virtual NodeResult statInBin(const QString &binPath) = 0;

    /// Whether an entry is the one that is meant.
    using NodeTest = std::function<bool(const NodeState &node)>;

    /// Moves what `FolderHandle::recycle` put at `binPath` to a name that is free. `NotExpected` when something else
    /// lies there by now, which then stays.
    [[nodiscard]] virtual FileError restore(const QString &binPath, FolderHandle &to, const QString &name,
                                            const NodeTest &isExpected) = 0;

    [[nodiscard]] static FileLayer &native();
};

/// True for a file or link whose owner has marked it as one that is not to be changed.
[[nodiscard]] bool isProtected(const NodeState &node);

/// False for names that the system would take for something else or cannot keep: empty, ".", "..", with a separator or
/// NUL; on Windows also the names of devices, those with one of <>:"|?* or a control character, and those that end in a
/// blank or dot.
[[nodiscard]] bool isPlainName(QStringView name);

/// True when every part of a relative path is neither empty nor "." nor ".." nor holds a NUL.
[[nodiscard]] bool isCleanRelative(QStringView relative);

} // namespace velmora

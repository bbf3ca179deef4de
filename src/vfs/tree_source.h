#pragma once

#include "core/cancel_flag.h"
#include "core/sides.h"
#include "platform/file_access.h"
#include "vfs/location.h"

#include <QByteArray>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// Whether listings hold hidden files and folders: of a local folder those of a name that begins with a dot on Unix,
/// with the attribute on Windows.
enum class HiddenEntries : quint8 { LeftOut, Listed };

/// What a source knows of a file's content without reading it. Two of one algorithm can be compared; those of
/// different ones say nothing about each other.
struct ContentIdentity {
    enum class Algorithm : quint8 {
        Crc32,       ///< as `fileCrc32`: files of one value may still differ
        GitBlobSha1, ///< the name of a blob; this and the next are equal exactly when the contents are
        GitBlobSha256,
        Sha256, ///< of the bytes alone; the same goes for it
    };

    Algorithm algorithm = Algorithm::Crc32;
    QByteArray value; ///< most significant byte first

    friend bool operator==(const ContentIdentity &, const ContentIdentity &) = default;
};

/// Why nothing can be written to a source.
enum class WriteBar : quint8 {
    None,       ///< it can be written, as far as the system lets
    FixedState, ///< it shows how things are or were somewhere, and has no way to change them
};

/// What a source has of the contents of its files.
enum class ContentAccess : quint8 {
    Readable,
    NamesOnly, ///< identities were recorded, not of all files maybe, and no bytes
    None,      ///< neither
};

/// Where a program finds a file of a source.
struct LaidOutFile {
    QString path;  ///< absolute; empty when there is none
    QString error; ///< the system's own words; may be empty even then

    [[nodiscard]] bool ok() const noexcept { return !path.isEmpty(); }
};

/// A tree of files wherever it is: what is compared, listed, counted and read goes through one of these for each side.
///
/// Immutable once it is made, and usable from any thread at once. Paths use "/", and those of entries begin with the
/// path of the folder that they are in: of a local folder they are absolute paths of the system, of every other source
/// they begin with "/" at its root. Names are not trusted: they are unique within a folder and hold no "/", and nothing
/// more is known of them.
class TreeSource {
public:
    explicit TreeSource(Location location) : m_location(std::move(location)) {}
    virtual ~TreeSource() = default;
    TreeSource(const TreeSource &) = delete;
    TreeSource &operator=(const TreeSource &) = delete;

    [[nodiscard]] const Location &location() const noexcept { return m_location; }
    [[nodiscard]] bool isLocal() const noexcept { return m_location.kind == Location::Kind::LocalFolder; }

    /// Gives `sink` the entries of a folder, as `FileAccess::readFolder`.
    [[nodiscard]] virtual FolderRead readFolder(const QString &path, HiddenEntries hidden,
                                                const FileAccess::Sink &sink) const = 0;

    /// What a listing would say of the entry at `path`, without a name, or of a folder that is no entry; nothing when
    /// there is nothing, or only a hidden one and those are left out.
    [[nodiscard]] virtual std::optional<FolderEntry> describe(const QString &path, HiddenEntries hidden) const = 0;

    /// A way to read files, for one thread. This object must outlive it. Files that only a source knows have no
    /// `OpenFile::identity`.
    [[nodiscard]] virtual std::unique_ptr<FileOpener> makeOpener() const = 0;

    /// Nothing where the content would have to be read here for it. Asked for each pair that contents decide.
    [[nodiscard]] virtual std::optional<ContentIdentity> contentIdentity(const QString & /*path*/) const
    {
        return std::nullopt;
    }

    /// By which algorithm it knows most contents without reading them; nothing where it knows none.
    [[nodiscard]] virtual std::optional<ContentIdentity::Algorithm> identityKind() const { return std::nullopt; }

    /// How many contents `contentIdentities` is best asked for at a time; 0 where nothing is won by asking for many.
    [[nodiscard]] virtual qsizetype identitiesAtOnce() const { return 0; }

    /// As `contentIdentity`, of many, each in the place of its path; those by `algorithm` where there is a choice.
    /// Where there is nothing, nothing is said: that content may still be asked for alone. For a worker.
    [[nodiscard]] virtual std::vector<std::optional<ContentIdentity>>
    contentIdentities(const QStringList &paths, ContentIdentity::Algorithm algorithm, const CancelFlag &cancel) const;

    /// Whether a file carries the "system" attribute; false where there is none. May remember the answer.
    [[nodiscard]] virtual bool isSystemFile(const QString & /*path*/) const { return false; }

    [[nodiscard]] virtual WriteBar writeBar() const { return WriteBar::FixedState; }

    /// Whether its files have times of their own, which tell when they were changed.
    [[nodiscard]] virtual bool hasFileTimes() const { return true; }

    [[nodiscard]] virtual ContentAccess contentAccess() const { return ContentAccess::Readable; }

    /// Lays a file out for a program that needs a path: the file itself where it has one, else a copy under its name in
    /// a new folder within `folder`, which is absolute and private to this user. For a worker; when `cancel` is set, or
    /// the file cannot be read to its end, or its name cannot stand in a folder, nothing is left behind.
    [[nodiscard]] virtual LaidOutFile layOut(const QString &path, const QString &folder,
                                             const CancelFlag &cancel) const;

private:
    Location m_location;
};

/// A folder of an opened source: what a comparison takes for a side. Without a path it is none.
struct TreeFolder {
    std::shared_ptr<const TreeSource> source; ///< set when there is a path
    QString path = {};

    [[nodiscard]] bool isThere() const noexcept { return !path.isEmpty(); }
    /// What people know its tree by; empty for none.
    [[nodiscard]] QString shown() const { return source ? source->location().shown : QString(); }
    /// With "/", and also where the path leads in the tree: what a person can write for it.
    [[nodiscard]] QString shownPath() const
    {
        if (!source || source->isLocal())
            return path;
        return source->location().place + (path == u"/" ? QString() : path);
    }
};

/// What paths of the two sides lead to.
using SourcePair = Sides<std::shared_ptr<const TreeSource>>;

/// Whether the times of both sides can be compared; also of a side that is not there.
[[nodiscard]] inline bool tellTimes(const SourcePair &sources)
{
    return (!sources.left || sources.left->hasFileTimes()) && (!sources.right || sources.right->hasFileTimes());
}

[[nodiscard]] inline SourcePair sourcesOf(const Sides<TreeFolder> &folders)
{
    return {folders.left.source, folders.right.source};
}

} // namespace velmora

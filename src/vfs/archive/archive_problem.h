#pragma once

#include <QList>
#include <QString>

namespace velmora {

/// What of an archive is not there to see, or not to be trusted. One for all entries that share a kind.
struct ArchiveProblem {
    enum class Kind : quint8 {
        NameLeadsOut,     ///< a name that is absolute or has ".."; the entry is left out
        NameUnfit,        ///< a name that is empty, too long, or holds a zero byte; left out
        TooDeep,          ///< left out
        LinkLeadsOut,     ///< the link is left out
        SameName,         ///< a later entry of the same name has taken the place of one
        Overlapping,      ///< entries that share bytes of the archive; they are not unpacked
        Damaged,          ///< an entry that cannot be read to its end, or whose checksum does not hold
        Incomplete,       ///< the archive ends or is damaged at `path`: what comes after is unknown
        EndsEncrypted,    ///< what begins at `path` is encrypted in a way that cannot be read, names as well
        Encrypted,        ///< entries that need a password, or another one
        CannotDecrypt,    ///< entries that are encrypted in a way that cannot be read
        TooManyEntries,   ///< the rest is left out
        TooMuchContent,   ///< unpacking ended at the limit
        NestedUnreadable, ///< an archive within that stays a file
        NestedTooLarge,   ///< the same, as those within may take no more of the disk
        Unlisted,         ///< a name that a host cannot tell
        NotAllListed,     ///< a host could not list everything
    };

    Kind kind = Kind::Damaged;
    QString path;     ///< of the first; the middle of a very long one is left out
    QString detail;   ///< the library's own words about the first; may be empty
    qint64 count = 0; ///< entries

    friend bool operator==(const ArchiveProblem &, const ArchiveProblem &) = default;
};

/// Counts one more of `kind`.
void noteProblem(QList<ArchiveProblem> &problems, ArchiveProblem::Kind kind, const QString &path,
                 const QString &detail = {});

} // namespace velmora

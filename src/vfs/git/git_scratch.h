#pragma once

#include "core/passing_folder.h"
#include "vfs/git/git_repository.h"
#include "vfs/git/loose_object.h"

#include <memory>
#include <vector>

namespace velmora {

/// What a tree of git says of the kind of a file, in its numbers.
struct GitMode {
    static constexpr quint32 none = 0;
    static constexpr quint32 plain = 0100644;
    static constexpr quint32 program = 0100755;
    static constexpr quint32 link = 0120000;
    static constexpr quint32 submodule = 0160000;
};

/// One file as a tree of git has it.
struct GitEntry {
    quint32 mode = GitMode::none;
    QByteArray name; ///< of its content, in hexadecimal; of a submodule, of its commit

    [[nodiscard]] bool isThere() const noexcept { return mode != GitMode::none; }
    [[nodiscard]] bool isLink() const noexcept { return mode == GitMode::link; }
    [[nodiscard]] bool isSubmodule() const noexcept { return mode == GitMode::submodule; }
    friend bool operator==(const GitEntry &, const GitEntry &) = default;
};

struct GitFile {
    QString path; ///< from the root of the tree, with "/"; as `nameFromNative`
    GitEntry entry;
};

/// A private temporary place where states of the disk become trees that git can read beside those of the repository,
/// which is not written to. Goes with its last owner.
class GitScratch {
public:
    /// Check `isValid`.
    explicit GitScratch(const GitRepository &repository);

    [[nodiscard]] bool isValid() const;
    [[nodiscard]] const LooseObjects &objects() const noexcept { return m_objects; }
    /// A folder for files that are laid out.
    [[nodiscard]] QString filesFolder() const { return m_folder.filePath(QStringLiteral("files")); }
    /// What a call needs to read the trees and contents of this place, too.
    [[nodiscard]] QMap<QString, QString> variables() const;

    /// The name of the tree that holds exactly these files, whose contents are here or in the repository.
    [[nodiscard]] GitReply makeTree(const GitRepository &repository, const std::vector<GitFile> &files,
                                    const CancelFlag &cancel) const;

private:
    PassingFolder m_folder;
    LooseObjects m_objects;
    bool m_isReady = false;
};

} // namespace velmora

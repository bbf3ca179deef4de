#pragma once

#include "folder/engine/folder_diff_item.h"
#include "support/files.h"

#include <QTemporaryDir>

namespace velmora::test {

/// Two folders, "left" and "right", in a temporary one. Paths of the functions are relative to it.
class TestTree {
public:
    TestTree();

    [[nodiscard]] QString left() const { return path(QStringLiteral("left")); }
    [[nodiscard]] QString right() const { return path(QStringLiteral("right")); }
    [[nodiscard]] QString path(const QString &relative) const { return m_root + u'/' + relative; }

    /// Makes the folders on the way, too.
    void folder(const QString &relative);
    /// A file of these bytes, modified `seconds` after a fixed moment.
    void file(const QString &relative, const QByteArray &bytes, qint64 seconds = 0);
    void link(const QString &relative, const QString &target);

    /// Removes both folders by a program: the destructor alone cannot where names are no text or paths too long.
    void removeHostile();

    /// The moment that times of files count from.
    [[nodiscard]] static QDateTime moment(qint64 seconds);

private:
    QTemporaryDir m_dir;
    QString m_root;
};

/// One line for each item, so that an expectation reads like a listing: a sign for the status ("=", "<", ">", "!"), the
/// name, a "/" after folders, and the sizes where they are not 0.
[[nodiscard]] QStringList drawn(const QList<FolderDiffItem> &items);

/// Every field of every item, to compare two lists in full.
[[nodiscard]] QStringList dumped(const QList<FolderDiffItem> &items);

} // namespace velmora::test

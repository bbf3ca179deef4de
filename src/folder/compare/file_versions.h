#pragma once

#include "core/runner.h"
#include "core/side.h"
#include "folder/engine/folder_diff_item.h"
#include "vfs/tree_source.h"

#include <QHash>
#include <QObject>
#include <QTimer>

namespace velmora {

/// A file of a tree as it was when it was listed.
struct ListedFile {
    std::shared_ptr<const TreeSource> source;
    QString path;
    qint64 size = 0;
    qint64 modifiedMs = 0;

    friend bool operator==(const ListedFile &, const ListedFile &) = default;
    friend size_t qHash(const ListedFile &file, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, file.path, file.size, file.modifiedMs);
    }
};

/// The versions that programs and libraries say of themselves, read on a worker when they are asked for: what was asked
/// for last comes first, and what has scrolled out of sight before its turn is not read.
class FileVersions final : public QObject {
    Q_OBJECT
public:
    explicit FileVersions(QObject *parent = nullptr);

    /// The version of a file; empty for one without, and as long as it is not known, which `read` tells.
    [[nodiscard]] QString of(const ListedFile &file);

Q_SIGNALS:
    /// Versions are known that were not before.
    void read();

private:
    void want(const ListedFile &file);
    void startReading();

    QHash<ListedFile, QString> m_known;
    QList<ListedFile> m_wanted;  ///< the latest at the end
    QList<ListedFile> m_reading; ///< by the run that is under way
    QTimer m_turn;
    Runner m_runner;
};

} // namespace velmora

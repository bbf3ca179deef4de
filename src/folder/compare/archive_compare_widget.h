#pragma once

#include "core/runner.h"
#include "core/sides.h"
#include "folder/compare/folder_compare_widget.h"
#include "vfs/place/tree_path.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmora {

/// The session that compares archives, with each other or with folders: a folder comparison on two trees that are
/// opened first. Archives within two archives are folders. Says of the two as a whole whether they have the same bytes,
/// the same contents or the same names. A password is asked for once.
class ArchiveCompareWidget final : public FolderCompareWidget {
    Q_OBJECT
public:
    explicit ArchiveCompareWidget(SessionHost &host, QWidget *parent = nullptr);

    [[nodiscard]] QString kind() const override;

protected:
    [[nodiscard]] TreeWords words() const override;
    [[nodiscard]] Sides<TreeFolder> trees(const SessionPaths &paths) const override;
    [[nodiscard]] bool openTrees() override;
    [[nodiscard]] bool isOpening() const override { return m_runner.isRunning(); }
    void cancelOpening() override { m_runner.cancel(); }
    [[nodiscard]] bool takesPath(const QString &path) const override;
    void browse(Side side) override;
    [[nodiscard]] QString verdict() const override;
    [[nodiscard]] QString caution() const override;

private:
    /// What has been opened: holds as long as the file stays as it was.
    struct Opened {
        TreeAt tree;
        std::optional<FolderEntry> stamp; ///< of the archive
    };
    struct Opening {
        Sides<Opened> sides;
        bool haveSameBytes = false;
    };

    [[nodiscard]] static Opening open(const Sides<ArchiveRequest> &requests, const CancelFlag &cancel,
                                      Progress &progress);
    /// The folder that `path` is in what has been opened; none where it is not in it.
    [[nodiscard]] TreeFolder folderAt(Side side, const QString &path) const;
    [[nodiscard]] bool isCurrent(Side side, const QString &path) const;
    void take(Opening &&opening, const SessionPaths &paths);
    void tellProblems();
    void askPassword(Side side, const QString &path);

    Opening m_opened;
    Sides<QByteArray> m_passwords;
    Sides<QString> m_askedFor; ///< the archive whose password was asked for last
    Runner m_runner;
};

} // namespace velmora

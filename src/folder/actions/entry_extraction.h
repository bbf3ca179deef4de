#pragma once

#include "core/progress.h"
#include "core/runner.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QWidget;

namespace velmora {

class ArchiveSource;
class FolderActions;
class PassingFolder;

/// Copies entries of an archive into a folder that is asked for first: they are laid out in a private folder, on a
/// worker, and go from there like any files, with the plan, the questions and the journal of that.
class EntryExtraction final : public QObject {
    Q_OBJECT
public:
    /// Questions belong to `window`, which owns the object.
    explicit EntryExtraction(QWidget &window);
    ~EntryExtraction() override;

    /// Entries by their paths in the archive, folders with all that is in them; what lies in one of them goes with it.
    void start(const std::shared_ptr<const ArchiveSource> &archive, const QStringList &paths);
    void cancel();
    [[nodiscard]] bool isRunning() const;

Q_SIGNALS:
    void logLine(const QString &line);
    void statusChanged(const QString &text);
    void progressed(const velmora::ProgressState &state);
    void runningChanged();

private:
    struct LaidOut;

    void unpack(const std::shared_ptr<const ArchiveSource> &archive, const QStringList &paths,
                const QString &destination);
    void take(const LaidOut &laidOut, const QString &destination);

    QWidget &m_window;
    Runner m_runner;
    FolderActions *m_actions;
    std::unique_ptr<PassingFolder> m_folder; ///< of the last extraction
};

} // namespace velmora

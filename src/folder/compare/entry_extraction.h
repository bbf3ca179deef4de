#pragma once

#include "core/progress.h"
#include "core/runner.h"
#include "folder/engine/folder_diff_item.h"
#include "vfs/tree_source.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTemporaryDir>

#include <memory>

class QWidget;

namespace velmora {

class FolderActions;

/// Copies entries that are no files of this system into a folder that is asked for: they are laid out in a private
/// folder, on a worker, and go from there like any files, with the plan, the questions and the journal of that.
class EntryExtraction final : public QObject {
    Q_OBJECT
public:
    /// Questions belong to `window`, which owns the object.
    explicit EntryExtraction(QWidget &window);
    ~EntryExtraction() override;

    /// Entries of one side; those that are not there are passed over.
    void start(const TreeFolder &root, const QList<FolderDiffItem> &items, Side side);
    void cancel();
    [[nodiscard]] bool isRunning() const;

Q_SIGNALS:
    void logLine(const QString &line);
    void statusChanged(const QString &text);
    void progressed(const velmora::ProgressState &state);
    void runningChanged();

private:
    struct LaidOut;

    void take(const LaidOut &laidOut);

    Runner m_runner;
    FolderActions *m_actions;
    std::unique_ptr<QTemporaryDir> m_folder; ///< of the last extraction
};

} // namespace velmora

#pragma once

#include "folder/actions/folder_actions.h"
#include "folder/engine/folder_jobs.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

class QAction;

namespace velmora {

class FolderCompareBar;
class FolderComparison;
class FolderView;

/// The commands of a folder session that change files, between its buttons and `FolderActions`: on what they work, when
/// they can be chosen and why not, and what is compared again afterwards.
class FileCommands final : public QObject {
    Q_OBJECT
public:
    /// All of these outlive the object.
    FileCommands(FolderCompareBar &bar, FolderView &view, FolderComparison &comparison, QWidget &window);

    /// Begins `command` on the selection, on the side of the pane that has the keyboard where one must be told.
    void carryOut(FolderCommand command);

    [[nodiscard]] bool isRunning() const { return m_actions->isRunning(); }
    void cancel() { m_actions->cancel(); }
    [[nodiscard]] bool canUndo() const;

    /// What the next command works on.
    [[nodiscard]] FolderSelection selection() const;

public Q_SLOTS:
    /// Looks soon at what can be chosen now.
    void update();

Q_SIGNALS:
    /// The entries are to be copied to a folder, and are no files of this system.
    void extractionWanted(const velmora::TreeFolder &root, const QStringList &paths);
    void logLine(const QString &line);
    void statusChanged(const QString &text);
    void progressed(qint64 done, qint64 total);
    void runningChanged();
    /// A command has changed files of folders that are no longer those compared.
    void othersTouched();

private:
    struct Button {
        QAction *action;
        FolderCommand command;
        QString hint; ///< while it can be chosen
    };

    void showPossible();
    [[nodiscard]] FolderActionContext context(bool withItems) const;
    [[nodiscard]] Sides<QString> rootPaths() const;
    [[nodiscard]] FolderSelection selectionOf(const QList<qint32> &nodes) const;

    FolderView &m_view;
    FolderComparison &m_comparison;
    FolderActions *m_actions;
    Sides<QString> m_roots; ///< of the command that began last
    QList<Button> m_buttons;
    QTimer m_updater;
};

} // namespace velmora

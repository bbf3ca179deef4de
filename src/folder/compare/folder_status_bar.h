#pragma once

#include "folder/engine/folder_tree.h"

#include <QFrame>
#include <QTimer>

class QLabel;
class QProgressBar;
class QToolButton;

namespace velmora {

/// The foot of a folder comparison: what it does or has done, how far it is, what it has counted.
class FolderStatusBar final : public QFrame {
    Q_OBJECT
public:
    explicit FolderStatusBar(QWidget *parent = nullptr);

    void showMessage(const QString &message);
    [[nodiscard]] QString message() const;

    /// Shows how much of `total` is done, or only that something is when `total` is 0, with `text` beside it. What is
    /// over in a moment is not shown at all, so that nothing flickers.
    void showProgress(qint64 done, qint64 total, const QString &text);
    void clearProgress();

    void showCounts(const FolderCounts &counts);
    /// Empty for no selection worth telling.
    void showSelection(const QString &text);

Q_SIGNALS:
    /// What is the same by size and time alone shall be read.
    void readWanted();

private:
    void showProgressParts();

    QLabel *m_message;
    QLabel *m_progressText;
    QProgressBar *m_progress;
    QLabel *m_selection;
    QLabel *m_counts;
    QToolButton *m_read;
    QTimer m_appearance; ///< of the progress
};

} // namespace velmora

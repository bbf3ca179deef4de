#pragma once

#include "core/progress.h"
#include "system/engine/snapshot_compare.h"

#include <QFrame>

class QLabel;
class QProgressBar;

namespace velmora {

/// The foot of a snapshot session: what it did or why it could not, how far it is, what it has counted.
class SnapshotStatusBar final : public QFrame {
    Q_OBJECT
public:
    explicit SnapshotStatusBar(QWidget *parent = nullptr);

    /// Shows `message`, with `detail` beside it.
    void showMessage(const QString &message, const QString &detail = {});
    /// The same for something that went wrong.
    void showFailure(const QString &message, const QString &detail);
    [[nodiscard]] QString message() const;
    [[nodiscard]] QString detail() const;

    void showProgress(const QString &text, const ProgressState &state);
    void clearProgress();
    void showCounts(const SnapshotCounts &counts, qsizetype shown);

    /// Takes up a changed theme.
    void refreshTheme();

private:
    QLabel *m_sign;
    QLabel *m_message;
    QLabel *m_detail;
    QProgressBar *m_progress;
    QLabel *m_counts;
};

} // namespace velmora

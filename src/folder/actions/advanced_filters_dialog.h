#pragma once

#include "folder/engine/folder_filter.h"

#include <QDialog>

class QCheckBox;
class QDateTimeEdit;
class QLabel;
class QPushButton;
class QSpinBox;

namespace velmora {

/// Asks for the sizes and modification times of the files that are shown. Opened with open(); the limits count when
/// `accepted` comes.
class AdvancedFiltersDialog final : public QDialog {
    Q_OBJECT
public:
    explicit AdvancedFiltersDialog(const FolderViewLimits &limits, QWidget *parent = nullptr);

    /// The limits chosen. Sizes are whole KB (1024 bytes); times are local, whole minutes, and a last minute counts to
    /// its end. The masks are those that the dialog was opened with, and so is a limit that nobody has changed.
    [[nodiscard]] FolderViewLimits limits() const;

private:
    struct TimeLimit {
        QCheckBox *enabled = nullptr;
        QDateTimeEdit *time = nullptr;
    };

    [[nodiscard]] QWidget *makeSizes();
    [[nodiscard]] QWidget *makeTimes();
    [[nodiscard]] QSpinBox *makeSize(const QString &name, qint64 bytes);
    [[nodiscard]] TimeLimit makeTime(const QString &name, const QDateTime &value, const QDateTime &proposal);
    void clear();
    void judge();

    FolderViewLimits m_limits; ///< as opened
    QSpinBox *m_minimum;
    QSpinBox *m_maximum;
    TimeLimit m_from;
    TimeLimit m_to;
    QLabel *m_verdict;
    QPushButton *m_ok = nullptr;
};

/// The line of the action log for limits that were applied at `time`.
[[nodiscard]] QString advancedFiltersLogLine(const FolderViewLimits &limits, const QTime &time);

} // namespace velmora

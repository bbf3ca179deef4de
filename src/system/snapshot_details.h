#pragma once

#include "system/engine/snapshot_compare.h"

#include <QWidget>

class QLabel;
class QPlainTextEdit;

namespace velmora {

/// Both values of one row in full, side by side. Lists, as the folders of a search path, stand with one entry in a
/// line, aligned, so that what only one side has faces an empty line.
class SnapshotDetails final : public QWidget {
    Q_OBJECT
public:
    explicit SnapshotDetails(QWidget *parent = nullptr);

    void showRow(const SnapshotRow &row);
    void clear();

    /// Takes up a changed theme.
    void refreshTheme();

private:
    void showLists(const QStringList &left, const QStringList &right);
    void showTexts(const SnapshotRow &row);

    QLabel *m_title;
    QLabel *m_note;
    QPlainTextEdit *m_left;
    QPlainTextEdit *m_right;
    SnapshotRow m_row;
    bool m_empty = true;
};

} // namespace velmora

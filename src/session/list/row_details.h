#pragma once

#include "core/keyed_rows.h"

#include <QWidget>

class QLabel;
class QPlainTextEdit;

namespace velmora {

/// Both values of one row in full, side by side. Lists, as the folders of a search path, stand with one entry in a
/// line, aligned, so that what only one side has faces an empty line.
class RowDetails final : public QWidget {
    Q_OBJECT
public:
    explicit RowDetails(QWidget *parent = nullptr);

    /// `status`: what the row's status is called.
    void showRow(const KeyedRow &row, const QString &status);
    void clear();

    /// Takes up a changed theme.
    void refreshTheme();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void showTitle();
    void showLists(const QStringList &left, const QStringList &right);

    QLabel *m_title;
    QLabel *m_note;
    QPlainTextEdit *m_left;
    QPlainTextEdit *m_right;
    KeyedRow m_row;
    QString m_status;
    bool m_empty = true;
};

} // namespace velmora

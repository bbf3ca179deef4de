#pragma once

#include "session/list/list_model.h"

#include <QList>
#include <QSet>
#include <QTreeView>

namespace velmora {

/// The rows of a comparison as a table, or a few words where there is nothing to show.
class ListView final : public QTreeView {
    Q_OBJECT
public:
    explicit ListView(ListModel &rows, QWidget *parent = nullptr);

    /// Columns that hold numbers: aligned to the right and as wide as those need, not as the view has room.
    void setNumberColumns(const QList<int> &columns);

    /// What is said in place of rows.
    void setNotice(const QString &notice);
    [[nodiscard]] const QString &notice() const { return m_notice; }

    /// Makes a row the current and only selected one; nothing for -1.
    void goToRow(int row);
    [[nodiscard]] std::vector<int> selectedRows() const;

Q_SIGNALS:
    void currentRowChanged();
    void selectedRowsChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fitColumns();
    void keepPlace();
    void restorePlace();
    void selectKept();

    ListModel &m_rows;
    QString m_notice;
    QString m_keptKey;           ///< of the current row, over a change of what is shown
    QSet<QString> m_keptKeys;    ///< of the selected rows, where there are several
    bool m_hasOwnWidths = false; ///< somebody has made a column wider or narrower
    bool m_isFitting = false;
};

} // namespace velmora

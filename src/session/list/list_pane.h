#pragma once

#include "session/list/list_model.h"

#include <QList>
#include <QWidget>

class QAction;
class QHBoxLayout;
class QLineEdit;
class QSplitter;

namespace velmora {

class ListBar;
class ListView;
class RowDetails;

/// The list of a session with its filter above and the details of the current row below it, and what the list's
/// commands in the session's bar do.
class ListPane final : public QWidget {
    Q_OBJECT
public:
    /// `source`: without rows, for the headings.
    ListPane(ListBar &bar, std::unique_ptr<const RowSource> source, QWidget *parent);
    ~ListPane() override;

    /// Puts a command for the current row into the rows' menu, and lets it be used while there is such a row. The first
    /// one is also what Return and a double click do, instead of showing the details.
    void addRowCommand(QAction *command);

    /// Shows the result of a comparison.
    void setResult(std::unique_ptr<const RowSource> source);
    [[nodiscard]] bool hasResult() const { return m_hasResult; }
    void setRowsView(RowsView view);

    /// Has a button beside the filter for `search`, which looks for its words in more than the list has. It stands
    /// there while there are words and the command is enabled; `notice` is then said where no row holds them.
    void setWiderSearch(QAction *search, const QString &notice);

    /// What is said in place of rows until there is a result.
    void setNotice(const QString &notice);
    /// How many rows there are of each status, and how many are not shown.
    [[nodiscard]] QString countsText() const;

    [[nodiscard]] const ListModel &model() const { return *m_model; }
    [[nodiscard]] ListView &view() { return *m_view; }

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    /// The counts of a result may be others.
    void shownRowsChanged();
    /// Something to be said by the session.
    void told(const QString &message);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QWidget *makeFilterRow();
    void connectBar();
    void connectView();
    void showNotice();
    void showWiderSearch();
    [[nodiscard]] bool offersWiderSearch() const;
    void showCurrentRow();
    void showSelection();
    void takeShownRows();
    void goToDifference(bool forward);
    void openMenu(const QPoint &point);
    void fitDetails();

    ListBar &m_bar;
    ListModel *m_model;
    ListView *m_view;
    RowDetails *m_details;
    QLineEdit *m_filter;
    QHBoxLayout *m_filterRow = nullptr;
    QSplitter *m_parts; ///< the list above the details
    QList<QAction *> m_rowCommands;
    QAction *m_widerSearch = nullptr;
    QWidget *m_widerButton = nullptr;
    QString m_widerNotice;
    QString m_notice;
    bool m_hasResult = false;
    bool m_hasOwnHeights = false; ///< somebody has moved the border between the two parts
};

} // namespace velmora

#pragma once

#include "core/rows_view.h"
#include "core/runner.h"
#include "filetypes/table/table_job.h"
#include "session/frame/difference_index.h"
#include "session/frame/report_saver.h"
#include "session/session_widget.h"

#include <functional>

class QBoxLayout;
class QLabel;
class QSplitter;

namespace velmora {

class CellFinder;
struct TableColumnSettings;
class FindBar;
class NoticeBar;
class PairInputs;
class RowCard;
class StatusLine;
class TableCompareBar;
class TableGrids;
class TableInputsBar;
class TableScene;

/// The session of kind "table": two tables of delimited text are compared cell by cell and shown side by side.
///
/// A comparison runs on a worker; what is shown stays until the next one has completed, also when that fails or is
/// cancelled. Delimiter, header and key take effect at the next comparison.
class TableCompareWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit TableCompareWidget(SessionHost &host, QWidget *parent = nullptr);
    ~TableCompareWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("table"); }
    [[nodiscard]] SessionPaths paths() const override;
    /// Chooses the tabulator as delimiter, too, where a name ends in ".tsv".
    void setPaths(const SessionPaths &paths) override;
    /// Starts anew when a comparison runs already; does nothing while a path is missing.
    void start() override;
    [[nodiscard]] bool isReading() const override { return m_runner.isRunning(); }
    /// "delimiter", "header"; where there is a key its column "key" (from 0) and "keyName", or where there are several
    /// "keys", objects with "column" and "name"; "columnsByName" when it is chosen; "columns" (see `columnsToJson`)
    /// where something is chosen for any; "card", the order of the card's columns, where it is shown.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    bool setPendingReport(const QString &path) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    /// Fills the paths, an empty one first; starts nothing.
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

    [[nodiscard]] TableScene &scene() { return *m_scene; }

public Q_SLOTS:
    void onBrowseLeft();
    void onBrowseRight();
    /// Starts a comparison, or cancels the one that runs.
    void onCompare();
    void onNextDiff();
    void onPrevDiff();
    void onShowAll();
    void onShowDifferences();
    void onShowIdentical();
    void onSwapSides();
    /// Asks for a file and writes the rows that differ there: HTML, or CSV by its name.
    void onExport();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void buildLayout();
    void connectBar();
    void takeOutcome(RunOutcome<TableResult> &&outcome);
    void showResult(const std::shared_ptr<const TableDocument> &document);
    void showRemarks(const TableDocument &document);
    void proposeDelimiter(QChar delimiter);
    void proposeKey(const TableDocument &document);
    void showRunning();
    void showDifference(qsizetype index);
    void showFilter(RowsView filter);
    void showNotice();
    void copyRows();
    void openColumns();
    void openDuplicates();
    void takeColumns(const TableColumnSettings &settings);
    /// Shows the columns that are to be shown, in their order.
    void arrangeColumns();
    void showColumnFacts();
    void showColumnMenu(int place, QPoint globalPosition);
    /// Chooses keys, by name, and compares again.
    void compareBy(const QList<ColumnRef> &keys);
    void changeColumn(qint32 column, const std::function<void(ColumnChoice &)> &change);
    void writeReport(const QString &path);
    void showMenu(QPoint globalPosition);

    TableCompareBar *m_bar;
    TableInputsBar *m_choices;
    QBoxLayout *m_head = nullptr; ///< of both
    PairInputs *m_inputs;
    NoticeBar *m_remarks;
    NoticeBar *m_proposal;   ///< of a key
    NoticeBar *m_duplicates; ///< of rows that are left out for others with their key
    TableScene *m_scene;
    TableGrids *m_grids;
    RowCard *m_card;
    FindBar *m_findBar;
    CellFinder *m_finder;
    StatusLine *m_status;
    QLabel *m_position;
    QLabel *m_columnFacts;
    QLabel *m_encodings;
    QList<ColumnChoice> m_columns; ///< what is chosen for columns, also of other tables
    SessionPaths m_running;        ///< what is being compared
    SessionPaths m_shown;
    DifferenceIndex m_index;
    QString m_pendingReport;
    ReportSaver m_reports;
    Runner m_runner;
};

} // namespace velmora

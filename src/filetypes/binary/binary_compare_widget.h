#pragma once

#include "core/runner.h"
#include "filetypes/binary/binary_compare_job.h"
#include "filetypes/binary/engine/byte_text.h"
#include "session/frame/difference_index.h"
#include "session/session_widget.h"

class QLabel;
class QSplitter;

namespace velmora {

class BinaryCompareBar;
class BinaryHexView;
class HexDifferenceList;
class HexFindBar;
class HexFinder;
class HexOverview;
class HexScene;
class HexStartsBar;
class HexValuesPanel;
class PairInputs;
class StatusLine;

/// The session of kind "binary": two files are compared byte for byte, in rows of 16 bytes, and shown side by side.
///
/// A comparison runs on a worker; what is shown stays until the next one has completed, also when that fails or is
/// cancelled.
class BinaryCompareWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit BinaryCompareWidget(SessionHost &host, QWidget *parent = nullptr);
    ~BinaryCompareWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("binary"); }
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    /// Starts anew when a comparison runs already.
    void start() override;
    [[nodiscard]] bool isReading() const override { return m_runner.isRunning(); }
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    /// Fills the paths; starts nothing.
    void dropPaths(const QStringList &paths, QPoint position) override;
    /// "align": whether bytes that have moved are found again; "leftStart", "rightStart": where the sides begin.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    void refreshTheme() override;

public Q_SLOTS:
    void onBrowseLeft();
    void onBrowseRight();
    /// Starts a comparison, or cancels the one that runs.
    void onCompare();
    void onNextDiff();
    void onPrevDiff();
    void onSwapSides();
    void onGoToOffset();

protected:
    void wheelEvent(QWheelEvent *event) override;

private:
    void buildLayout();
    void connectBar();
    void connectCopies();
    void connectPanels();
    void connectViews();
    void showPanels();
    void takeOutcome(RunOutcome<BinaryCompareResult> &&outcome);
    [[nodiscard]] QString failedPath(const BinaryCompareResult &result) const;
    void showResult(const BinaryCompareResult &result);
    void showRunning();
    void showDifference(qsizetype index);
    /// In the side that the caret is in.
    void goToOffset(qint64 offset);
    void showPlace();
    void copy(ByteForm form);
    void zoom(int points);
    void focusView(Side side);
    /// Compares anew with what was chosen, once there is something to compare.
    void compareAnew();
    void startHere();
    void goToRow(qint64 row);

    BinaryCompareBar *m_bar;
    PairInputs *m_inputs;
    HexScene *m_scene;
    Sides<BinaryHexView *> m_views;
    HexOverview *m_overview;
    HexStartsBar *m_starts;
    HexFindBar *m_findBar;
    HexFinder *m_finder;
    HexDifferenceList *m_list;
    HexValuesPanel *m_values;
    QSplitter *m_parts;  ///< the views, and below them the panels
    QSplitter *m_panels; ///< the list and the values
    StatusLine *m_status;
    QLabel *m_place;
    SessionPaths m_running; ///< what is being compared
    DifferenceIndex m_index;
    Runner m_runner;
};

} // namespace velmora

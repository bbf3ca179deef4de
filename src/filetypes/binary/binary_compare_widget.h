#pragma once

#include "core/runner.h"
#include "filetypes/binary/binary_compare_job.h"
#include "filetypes/binary/engine/byte_text.h"
#include "session/frame/difference_index.h"
#include "session/session_widget.h"

class QLabel;

namespace velmora {

class BinaryCompareBar;
class BinaryHexView;
class HexOverview;
class HexScene;
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
    void connectViews();
    void takeOutcome(RunOutcome<BinaryCompareResult> &&outcome);
    void showResult(const BinaryCompareResult &result);
    void showRunning();
    void showDifference(qsizetype index);
    void showPlace();
    void copy(ByteForm form);
    void zoom(int points);
    void focusView(Side side);

    BinaryCompareBar *m_bar;
    PairInputs *m_inputs;
    HexScene *m_scene;
    Sides<BinaryHexView *> m_views;
    HexOverview *m_overview;
    StatusLine *m_status;
    QLabel *m_place;
    SessionPaths m_running; ///< what is being compared
    DifferenceIndex m_index;
    Runner m_runner;
};

} // namespace velmora

#pragma once

#include "text/view/diff_scene.h"

#include <QWidget>

class QScrollBar;

namespace velmora {

class DiffPane;
class MergeSplitter;
class OverviewStrip;
class NoticeCard;

/// Two texts side by side, row by row: the panes, a splitter between them, one pair of scroll bars for both, the
/// overview of all differences, and cards for what is to be said about a side.
///
/// Holds no text: shows a `DiffDocument` that it is given.
class DiffView final : public QWidget {
    Q_OBJECT
public:
    explicit DiffView(QWidget *parent = nullptr);
    ~DiffView() override;

    [[nodiscard]] DiffScene &scene() noexcept { return m_scene; }
    [[nodiscard]] DiffPane &pane(Side side) { return side == Side::Left ? *m_left : *m_right; }

    /// What is between the panes.
    [[nodiscard]] MergeSplitter &splitter() { return *m_splitter; }

    /// The side with the keyboard focus, or the one that had it last.
    [[nodiscard]] Side activeSide() const { return m_scene.caret().side; }
    /// The side with the keyboard focus, also before there is a text for the caret; else the active side.
    [[nodiscard]] Side focusedSide() const;
    /// Moves the keyboard focus to the other pane, or to a pane when none has it.
    void switchPane();

    /// The card on a side; hidden until shown.
    [[nodiscard]] NoticeCard &notice(Side side) { return side == Side::Left ? *m_leftNotice : *m_rightNotice; }
    void showNotice(Side side, bool shown);

    /// The size of the texts in points; clamped to 6 to 40.
    [[nodiscard]] qreal fontPointSize() const;
    void setFontPointSize(qreal size);
    /// The font's family, empty for the system's own, and the size that `resetZoom` brings back.
    void setUsualFont(const QString &family, qreal points);
    void zoomBy(int steps);
    void resetZoom();

    /// The part of both panes' width that the left one has, between 0 and 1.
    [[nodiscard]] double leftShare() const;
    void setLeftShare(double share);

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void contextMenuWanted(Side side, QPoint globalPosition);
    void panesMoved(); ///< a pane has another place or width
    void fontSizeChanged();

protected:
    void wheelEvent(QWheelEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fitViewport();
    void fitScrollBars();
    void followScene();
    void scrollVertically(int index);
    void placeNotices();

    DiffScene m_scene;
    DiffPane *m_left;
    DiffPane *m_right;
    MergeSplitter *m_splitter;
    OverviewStrip *m_overview;
    QScrollBar *m_vertical;
    QScrollBar *m_horizontal;
    NoticeCard *m_leftNotice;
    NoticeCard *m_rightNotice;
    QString m_fontFamily;
    qreal m_usualPoints = 10;
    QPoint m_wheelRest; ///< angle that did not yet make a row or a column
};

} // namespace velmora

#pragma once

#include "session/pane/pane_scene.h"

#include <QWidget>

class QScrollBar;
class QSplitter;

namespace velmora {

class TextPane;
class NoticeCard;

/// Texts side by side, row by row: panes that scroll together, one pair of scroll bars for all, and cards for what is
/// to be said about a pane. An arrangement derives from it and lays the panes out.
///
/// Holds no text: shows a `PaneDocument` that its scene is given.
class PaneView : public QWidget {
    Q_OBJECT
public:
    /// So many `panes`, of which the pairs `compared` show the changed characters of their lines.
    explicit PaneView(int panes, const QList<PanePair> &compared = {}, QWidget *parent = nullptr);
    ~PaneView() override;

    [[nodiscard]] PaneScene &scene() noexcept { return m_scene; }
    [[nodiscard]] int paneCount() const noexcept { return int(m_panes.size()); }
    [[nodiscard]] TextPane &pane(PaneIndex pane) { return *m_panes[std::size_t(pane.number())]; }

    /// The pane with the keyboard focus, or the one that had it last.
    [[nodiscard]] PaneIndex activePane() const { return m_scene.caret().pane; }
    /// The pane with the keyboard focus, also before there is a text for the caret; else the active one.
    [[nodiscard]] PaneIndex focusedPane() const;
    /// Moves the keyboard focus to the next pane, or to a pane when none has it.
    void switchPane();

    /// The card on a pane; hidden until shown.
    [[nodiscard]] NoticeCard &notice(PaneIndex pane) { return *m_notices[std::size_t(pane.number())]; }
    void showNotice(PaneIndex pane, bool shown);

    /// The size of the texts in points; clamped to 6 to 40.
    [[nodiscard]] qreal fontPointSize() const;
    void setFontPointSize(qreal size);
    /// The font's family, empty for the system's own, and the size that `resetZoom` brings back.
    void setUsualFont(const QString &family, qreal points);
    void zoomBy(int steps);
    void resetZoom();

    /// Lays the panes out side by side, for who wants nothing else.
    void arrangeInRow();

    /// Takes up a changed theme.
    virtual void refreshTheme();

Q_SIGNALS:
    void contextMenuWanted(velmora::PaneIndex pane, QPoint globalPosition);
    void panesMoved(); ///< a pane has another place or width
    void fontSizeChanged();

protected:
    /// For the constructor of an arrangement: `panes` is a widget that holds all panes, `beside` stands between it and
    /// the scroll bar, or is null.
    void arrange(QWidget *panes, QWidget *beside);
    /// Puts all panes into `splitter`, side by side and equally wide.
    void fill(QSplitter &splitter);

    void wheelEvent(QWheelEvent *event) override;

private:
    [[nodiscard]] const TextPane *paneWithFocus() const;
    void fitViewport();
    void fitScrollBars();
    void followScene();
    void scrollVertically(int index);
    void placeNotices();

    PaneScene m_scene;
    std::vector<TextPane *> m_panes;
    std::vector<NoticeCard *> m_notices;
    QScrollBar *m_vertical;
    QScrollBar *m_horizontal;
    QString m_fontFamily;
    qreal m_usualPoints = 10;
    QPoint m_wheelRest; ///< angle that did not yet make a row or a column
};

} // namespace velmora

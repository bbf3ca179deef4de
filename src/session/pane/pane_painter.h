#pragma once

#include "session/diff_colours.h"
#include "session/pane/pane_scene.h"

#include <QColor>
#include <QPixmap>
#include <QRect>

#include <array>

class QPainter;

namespace velmora {

/// What differs between the panes in how they are painted.
struct PaneLook {
    PaneIndex pane;
    QRect gutter;
    QRect text;
    bool focused = false;
};

/// Paints one frame of a pane, row by row.
class PanePainter {
public:
    PanePainter(QPainter &painter, PaneScene &scene, const PaneLook &look);

    /// Paints the rows that touch `exposed`.
    void paint(const QRect &exposed);

private:
    struct Row {
        qsizetype row;
        qsizetype index;
        TextRowState state;
        RowLook look;
        PaneDocument::Cell cell;
        QRect gutter; ///< of all its lines
        QRect text;
    };

    [[nodiscard]] Row rowAt(qsizetype index, int y) const;
    void paintRow(const Row &row);
    void paintGutter(const Row &row);
    void paintBackground(const Row &row);
    void paintFiller(const Row &row);
    void paintFillerText(const Row &row);
    /// What stands for equal rows that are folded.
    void paintBand(qsizetype index, int y);
    void paintGap(const Row &row);
    void paintText(const Row &row);
    /// These paint what stands behind characters and note the ink that these need.
    void paintChanges(const Row &row, QList<Tint> &inks);
    void paintMatches(const Row &row, QList<Tint> &inks);
    void paintSelection(const Row &row, QList<Tint> &inks);
    void paintCaretRow(const Row &row);
    void paintCaret(const Row &row);
    /// The first and last unit of the row's line that may be in sight.
    [[nodiscard]] std::pair<qsizetype, qsizetype> unitsInSight(const Row &row);
    void paintUnits(const Row &row, qsizetype first, qsizetype end, const QColor &colour);
    /// The line of the screen that shows a wrapped part of the row, with x = 0 of that part at its left edge.
    [[nodiscard]] QRectF partArea(const Row &row, qsizetype part);
    [[nodiscard]] QColor colour(DiffColour role) const { return m_colours[std::size_t(role)]; }
    /// The name of the line's end behind it.
    void paintLineEnd(const Row &row);

    QPainter &m_painter;
    PaneScene &m_scene;
    const PaneLook m_look;
    const PaneDocument &m_document;
    const RoleInks m_inks;
    std::array<QColor, diffColourCount> m_colours;
    QPixmap m_hatch; ///< null until a row needs it
};

/// The distance from the edge of a pane to its sign column, its text and so on.
namespace paneMetrics {
inline constexpr int marker = 3;  ///< the bar beside the current difference
inline constexpr int padding = 6; ///< around line numbers
inline constexpr int textIndent = 5;
} // namespace paneMetrics

} // namespace velmora

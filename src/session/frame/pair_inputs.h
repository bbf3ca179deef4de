#pragma once

#include "core/sides.h"
#include "session/session_record.h"

#include <QWidget>

namespace velmora {

class PathEdit;

/// The inputs of a session on two files: both paths in one row, each with its browse button.
class PairInputs final : public QWidget {
    Q_OBJECT
public:
    /// Texts are translated.
    struct Field {
        QString placeholder;
        QString browseTitle; ///< of the file dialog, and the button's tool tip
        QString filter = {}; ///< of the file dialog
    };

    explicit PairInputs(const Sides<Field> &fields, QWidget *parent = nullptr);

    [[nodiscard]] SessionPaths paths() const;
    /// Fills the fields; starts nothing.
    void setPaths(const SessionPaths &paths);

    /// Fills the fields with paths that were dropped at `x` of this widget: one goes to the side whose half that is in,
    /// of several the first two to left and right.
    void take(const QStringList &dropped, int x);
    /// Asks for the file of a side, which then stands in its field.
    void browse(Side side);

    [[nodiscard]] PathEdit &at(Side side) { return *m_edits[side]; }

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    /// A person has pressed Return in a path.
    void submitted();

private:
    Sides<Field> m_fields;
    Sides<PathEdit *> m_edits;
};

} // namespace velmora

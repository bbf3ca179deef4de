#pragma once

#include "core/sides.h"
#include "session/session_record.h"
#include "text/editing/external_change.h"
#include "text/text_side.h"

#include <QWidget>

class QHBoxLayout;

namespace velmora {

/// Both sides' inputs in one row, each above its pane.
class TextInputs final : public QWidget {
    Q_OBJECT
public:
    /// A file must be smaller than this many bytes.
    static constexpr qint64 sizeLimit = 52'428'801;

    explicit TextInputs(QWidget *parent = nullptr);

    [[nodiscard]] TextSide &at(Side side) { return *m_sides[side]; }
    [[nodiscard]] const TextSide &at(Side side) const { return *m_sides[side]; }

    [[nodiscard]] SessionPaths paths() const;
    void setPaths(const SessionPaths &paths);

    /// Shows the encodings and locks the paths as `options` say.
    void apply(const TextSessionOptions &options);

    /// Why the inputs cannot be compared, in words; empty when they can.
    [[nodiscard]] QString problem() const;

    /// The files that changed on disk since they were read.
    [[nodiscard]] ExternalChange externalChange() const;

    /// Gives each side the place and width of its pane.
    void alignTo(const QWidget &leftPane, const QWidget &rightPane);

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void browseRequested(velmora::Side side);
    void encodingChosen(velmora::Side side);
    /// A person has pressed Return in a path.
    void submitted();

private:
    Sides<TextSide *> m_sides;
    QHBoxLayout *m_row;
};

} // namespace velmora

#pragma once

#include "core/sides.h"
#include "session/document/text_input.h"
#include "session/session_record.h"
#include "settings/options/text_session_options.h"
#include "text/editing/external_change.h"

#include <QWidget>

class QHBoxLayout;

namespace velmora {

/// Both sides' inputs in one row, each above its pane.
class TextInputs final : public QWidget {
    Q_OBJECT
public:
    explicit TextInputs(QWidget *parent = nullptr);

    [[nodiscard]] TextInput &at(Side side) { return *m_sides[side]; }
    [[nodiscard]] const TextInput &at(Side side) const { return *m_sides[side]; }

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
    Sides<TextInput *> m_sides;
    QHBoxLayout *m_row;
};

} // namespace velmora

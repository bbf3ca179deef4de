#pragma once

#include <QDialog>

namespace velmora {

class GrammarBoxes;
struct TextSessionOptions;

/// Edits the grammar elements in a window of their own. Opened with open(); the result counts when `accepted` comes.
class GrammarDialog final : public QDialog {
    Q_OBJECT
public:
    GrammarDialog(const TextSessionOptions &options, QWidget *parent);

    /// Writes the five flags into `options`.
    void store(TextSessionOptions &options) const;

private:
    GrammarBoxes *m_boxes;
};

} // namespace velmora

#pragma once

#include "text/edit/text_edit_options.h"

#include <QObject>

namespace velmora {

class EditedTexts;
class PaneScene;
class TextEditFormat;
class TextInput;

/// What a person wants of the form of one text: the encoding that it is read by, encoding and line ends that it gets
/// when it is saved, the syntax that it is coloured by.
class TextEditWishes final : public QObject {
    Q_OBJECT
public:
    /// What it acts on, which outlives it; the text is that of the first pane.
    struct Parts {
        TextInput &input;
        EditedTexts &texts;
        PaneScene &scene;
        TextEditFormat &format;
    };

    TextEditWishes(const Parts &parts, QObject *parent);

    [[nodiscard]] const TextEditOptions &options() const { return m_options; }
    /// What they say of the form takes effect; what is wished for the saved file, only once a file is there.
    void setOptions(const TextEditOptions &options);
    void setReadOnly(bool readOnly) { m_options.readOnly = readOnly; }
    /// The encoding that a file is read by from now on.
    void setEncoding(const QString &name);
    /// Has the path's field show the encoding that holds.
    void showEncoding();

    /// After a text has come in: colours it, and has it saved as it is wished.
    void apply();
    /// After the text was saved: what was asked for is done; the next save leaves the text in the form that it has now.
    void takeSaved();

Q_SIGNALS:
    /// The form that is shown may be another one.
    void applied();

private:
    void connectFormat();
    void applyToSaving();
    void chooseSyntax();
    void showFormat();
    [[nodiscard]] QString syntaxName() const;

    Parts m_parts;
    TextEditOptions m_options = usualTextEditOptions();
};

} // namespace velmora

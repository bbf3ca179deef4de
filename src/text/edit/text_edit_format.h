#pragma once

#include "core/text_file.h"
#include "text/edit/text_edit_options.h"

#include <QObject>

class QMenu;
class QToolButton;

namespace velmora {

struct LoadedText;
class StatusLine;
class SyntaxDefinition;

/// The format of the text at the end of the status line, as buttons with menus: the encoding and the line ends that the
/// text is saved with, and the syntax that it is coloured by. Also offers these menus for the context menu.
class TextEditFormat final : public QObject {
    Q_OBJECT
public:
    /// Adds the buttons to `foot`, which outlives this object.
    TextEditFormat(StatusLine &foot, QObject *parent);

    /// Shows what the text has and what `options` make of it. `syntax` is the name of the one in use, empty for none.
    void show(const LoadedText &loaded, const TextEditOptions &options, const QString &syntax);

    /// Whether the text may be given another format.
    void setChangeable(bool changeable);

    /// Adds the three menus.
    void addTo(QMenu &menu);

Q_SIGNALS:
    /// A person has chosen how the text is to be saved: an encoding by its name, line ends by theirs; empty for those
    /// that it has.
    void savedEncodingChosen(const QString &name);
    void savedLineEndsChosen(const QString &name);
    void fileTypeChosen(const QString &type);

private:
    void fillEncodings();
    void fillLineEnds();
    void fillTypes();

    QMenu *m_encodings;
    QMenu *m_lineEnds;
    QMenu *m_types;
    QToolButton *m_encoding;
    QToolButton *m_ends;
    QToolButton *m_type;
    TextEditOptions m_options;
};

} // namespace velmora

#pragma once

#include "session/pane/pane_index.h"

#include <QString>

#include <vector>

namespace velmora {

class TextInput;

/// What a session says of one of its texts, translated. "%1" stands for the path of the text's file.
struct TextWords {
    QString unnamed;       ///< in place of the path of a text without a file
    QString noTextYet;     ///< nothing has been read that could be saved
    QString noChanges;     ///< there is nothing to save
    QString saveTitle;     ///< of the dialog that asks for a name
    QString saved;         ///< with the path
    QString askToSave;     ///< before the session is closed, with the path
    QString changedOnDisk; ///< by somebody else, with the path
    QString goneFromDisk;  ///< with the path
    QString noText;        ///< it is not edited, because it holds bytes that no text has
    QString undecodable;   ///< it is not edited, because it holds bytes that its encoding does not know
};

/// One of the texts that a session shows in panes, and what belongs to it.
struct EditedText {
    PaneIndex pane;
    TextInput *input = nullptr; ///< never null; not owned
    TextWords words;
};

/// The one in `pane`, which is among `texts`.
[[nodiscard]] const EditedText &textIn(PaneIndex pane, const std::vector<EditedText> &texts);

/// Why the text that `input` has read cannot be written again without loss; empty when it can.
[[nodiscard]] QString describeLoss(const EditedText &text);

} // namespace velmora

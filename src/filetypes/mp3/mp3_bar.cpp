#include "filetypes/mp3/mp3_bar.h"

#include "session/translate.h"

namespace velmora {

Mp3Bar::Mp3Bar(QWidget *session) : FieldsBar(session)
{
    addSeparator();
    editing = add({"editTagsAction",
                   Velmora::tr("Edit tags"),
                   QStringLiteral("edit.png"),
                   {Qt::CTRL | Qt::Key_E},
                   Velmora::tr("Let tags be copied from one file to the other; nothing is written until you save")});
    editing->setCheckable(true);
    save = add({"saveAction",
                Velmora::tr("Save"),
                QStringLiteral("save.png"),
                {QKeySequence(QKeySequence::Save)},
                Velmora::tr("Write the changed tags into their files; the sound stays as it is")});
    copyToRight = add({"copyToRightAction",
                       Velmora::tr("Copy to the right"),
                       QStringLiteral("copy_right.png"),
                       {},
                       Velmora::tr("Make the selected fields of the right file like those of the left one")});
    copyToLeft = add({"copyToLeftAction",
                      Velmora::tr("Copy to the left"),
                      QStringLiteral("copy_left.png"),
                      {},
                      Velmora::tr("Make the selected fields of the left file like those of the right one")});
    copyAllToRight = add({"copyAllToRightAction",
                          Velmora::tr("Copy all tags to the right"),
                          QStringLiteral("mirror_right.png"),
                          {Qt::CTRL | Qt::SHIFT | Qt::Key_Right},
                          {}});
    copyAllToLeft = add({"copyAllToLeftAction",
                         Velmora::tr("Copy all tags to the left"),
                         QStringLiteral("mirror_left.png"),
                         {Qt::CTRL | Qt::SHIFT | Qt::Key_Left},
                         {}});
    undo = add({"undoAction",
                Velmora::tr("Undo"),
                QStringLiteral("undo.png"),
                {},
                hintWithKeys(Velmora::tr("Undo"), {QKeySequence(QKeySequence::Undo)})});
    redo = add({"redoAction",
                Velmora::tr("Redo"),
                QStringLiteral("redo.png"),
                {},
                hintWithKeys(Velmora::tr("Redo"), {QKeySequence(QKeySequence::Redo)})});
    refreshTheme();
}

} // namespace velmora

#include "session/pane/text_bar.h"

#include "session/translate.h"

namespace velmora {

void TextBar::addFinding()
{
    find = add({"findAction", Velmora::tr("Find"), QStringLiteral("find.png"), {}, {}});
    replace = add({"replaceAction", Velmora::tr("Replace"), {}, {Qt::CTRL | Qt::Key_H}, {}});
    goToLine =
        add({"goToLineAction", Velmora::tr("Go to line"), QStringLiteral("goto_line.png"), {Qt::CTRL | Qt::Key_G}, {}});
}

void TextBar::addWrapping()
{
    wrapLines = add({"wrapLinesAction",
                     Velmora::tr("Wrap long lines"),
                     QStringLiteral("wrap.png"),
                     {Qt::ALT | Qt::Key_Z},
                     Velmora::tr("Wrap long lines at the edge of the texts")});
    wrapLines->setCheckable(true);
    syntaxColours = add({"syntaxColoursAction", Velmora::tr("Syntax colours"), {}, {Qt::ALT | Qt::Key_X}, {}});
    syntaxColours->setCheckable(true);
}

void TextBar::addBlanks()
{
    showBlanks = add({"showBlanksAction",
                      Velmora::tr("Show blanks and tabs"),
                      QStringLiteral("whitespace.png"),
                      {Qt::ALT | Qt::Key_B},
                      {}});
    showBlanks->setCheckable(true);
}

void TextBar::addMatchSteps()
{
    findNext = add({"findNextAction", Velmora::tr("Next match"), {}, {Qt::Key_F3}, {}});
    findPrevious = add({"findPreviousAction", Velmora::tr("Previous match"), {}, {Qt::SHIFT | Qt::Key_F3}, {}});
}

void TextBar::addZoom()
{
    zoomIn =
        add({"zoomInAction", Velmora::tr("Larger text"), {}, {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal}, {}});
    zoomOut = add({"zoomOutAction", Velmora::tr("Smaller text"), {}, {Qt::CTRL | Qt::Key_Minus}, {}});
    resetZoom = add({"resetZoomAction", Velmora::tr("Usual text size"), {}, {Qt::CTRL | Qt::Key_0}, {}});
}

} // namespace velmora

#include "text/edit/text_edit_place.h"

#include "session/document/text_description.h"
#include "session/frame/status_line.h"
#include "session/pane/pane_scene.h"
#include "session/translate.h"

#include <QLabel>
#include <QLocale>

namespace velmora {

TextEditPlace::TextEditPlace(StatusLine &foot, const PaneScene &scene, QObject *parent)
    : QObject(parent),
      m_scene(scene),
      m_protected(foot.addFact(QStringLiteral("protectedLabel"))),
      m_selection(foot.addFact(QStringLiteral("selectionLabel"))),
      m_place(foot.addFact(QStringLiteral("placeLabel")))
{
    m_protected->setText(Velmora::tr("Read-only file"));
    m_protected->hide();
    m_selection->hide();
    connect(&scene, &PaneScene::caretMoved, this, &TextEditPlace::show);
}

void TextEditPlace::setWriteProtected(bool isProtected)
{
    m_protected->setVisible(isProtected);
}

void TextEditPlace::show()
{
    m_place->setText(describePlace(m_scene.document(), m_scene.caret()));
    m_selection->setVisible(m_scene.caret().hasSelection());
    if (m_scene.caret().hasSelection())
        showSelection();
}

void TextEditPlace::showSelection()
{
    const TextPosition start = m_scene.caret().selectionStart();
    const TextPosition end = m_scene.caret().selectionEnd();
    const QLocale locale;
    if (start.row == end.row) {
        m_selection->setText(Velmora::tr("%1 characters selected").arg(locale.toString(end.unit - start.unit)));
        return;
    }
    // One that ends before the first character of a line does not mean that line.
    const qsizetype lines = end.row - start.row + (end.unit > 0 ? 1 : 0);
    m_selection->setText(lines == 1 ? Velmora::tr("1 line selected")
                                    : Velmora::tr("%1 lines selected").arg(locale.toString(lines)));
}

} // namespace velmora

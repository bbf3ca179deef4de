#include "text/edit/text_edit_format.h"

#include "session/document/text_description.h"
#include "session/frame/status_line.h"
#include "session/translate.h"
#include "text/syntax/syntax_library.h"

#include <QMenu>
#include <QToolButton>

#include <memory>

namespace velmora {

namespace {

QToolButton *addButton(StatusLine &foot, const char *name, QMenu *menu)
{
    auto *button = new QToolButton(&foot);
    button->setObjectName(QLatin1String(name));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setPopupMode(QToolButton::InstantPopup);
    // The style's own sign stands below the line, and is black in both themes.
    button->setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; }"));
    button->setMenu(menu);
    button->setToolTip(menu->title());
    foot.addPart(button);
    return button;
}

void showText(QToolButton *button, const QString &text)
{
    button->setText(text + QStringLiteral(" ▾"));
    button->setAccessibleName(button->menu()->title() + QStringLiteral(": ") + text);
}

/// What is, and what it is to become.
QString withChange(const QString &present, const QString &wanted)
{
    return wanted.isEmpty() || wanted == present ? present : present + QStringLiteral(" → ") + wanted;
}

QAction *addChoice(QMenu &menu, const QString &text, bool chosen)
{
    QAction *action = menu.addAction(text);
    action->setCheckable(true);
    action->setChecked(chosen);
    return action;
}

} // namespace

TextEditFormat::TextEditFormat(StatusLine &foot, QObject *parent)
    : QObject(parent),
      m_encodings(new QMenu(Velmora::tr("Save in encoding"), &foot)),
      m_lineEnds(new QMenu(Velmora::tr("Save with line ends"), &foot)),
      m_types(new QMenu(Velmora::tr("Syntax"), &foot)),
      m_encoding(addButton(foot, "encodingButton", m_encodings)),
      m_ends(addButton(foot, "lineEndsButton", m_lineEnds)),
      m_type(addButton(foot, "syntaxButton", m_types))
{
    connect(m_encodings, &QMenu::aboutToShow, this, &TextEditFormat::fillEncodings);
    connect(m_lineEnds, &QMenu::aboutToShow, this, &TextEditFormat::fillLineEnds);
    connect(m_types, &QMenu::aboutToShow, this, &TextEditFormat::fillTypes);
}

void TextEditFormat::show(const LoadedText &loaded, const TextEditOptions &options, const QString &syntax)
{
    m_options = options;
    showText(m_encoding, withChange(loaded.text.encoding.name(), options.savedEncoding));
    const QString ends = loaded.missing ? lineEndStyleName(loaded.text.lineEnds) : describeContent(loaded);
    showText(m_ends, withChange(ends, options.savedLineEnds));
    showText(m_type, syntax.isEmpty() ? Velmora::tr("Plain text") : syntax);
}

void TextEditFormat::setChangeable(bool changeable)
{
    for (QMenu *menu : {m_encodings, m_lineEnds})
        menu->menuAction()->setEnabled(changeable);
    m_encoding->setEnabled(changeable);
    m_ends->setEnabled(changeable);
}

void TextEditFormat::addTo(QMenu &menu)
{
    menu.addSeparator();
    for (QMenu *offered : {m_encodings, m_lineEnds, m_types})
        menu.addMenu(offered);
}

void TextEditFormat::fillEncodings()
{
    m_encodings->clear();
    const auto add = [this](const QString &text, const QString &name) {
        connect(addChoice(*m_encodings, text, name == m_options.savedEncoding), &QAction::triggered, this,
                [this, name] { Q_EMIT savedEncodingChosen(name); });
    };
    add(Velmora::tr("As it was read"), {});
    m_encodings->addSeparator();
    for (const QString &name : TextEncoding::offeredNames()) {
        if (!TextEncoding::fromName(name).isAutomatic())
            add(name, TextEncoding::fromName(name).name());
    }
}

void TextEditFormat::fillLineEnds()
{
    m_lineEnds->clear();
    const std::pair<QString, QString> choices[] = {{Velmora::tr("As each line has it"), {}},
                                                   {QStringLiteral("LF (Unix)"), QStringLiteral("LF")},
                                                   {QStringLiteral("CRLF (Windows)"), QStringLiteral("CRLF")},
                                                   {QStringLiteral("CR (Mac OS 9)"), QStringLiteral("CR")}};
    for (const auto &[text, name] : choices) {
        connect(addChoice(*m_lineEnds, text, name == m_options.savedLineEnds), &QAction::triggered, this,
                [this, name = name] { Q_EMIT savedLineEndsChosen(name); });
    }
}

void TextEditFormat::fillTypes()
{
    m_types->clear();
    const auto add = [this](const QString &text, const QString &type) {
        connect(addChoice(*m_types, text, type == m_options.fileType), &QAction::triggered, this,
                [this, type] { Q_EMIT fileTypeChosen(type); });
    };
    add(Velmora::tr("By name and content"), automaticType);
    add(Velmora::tr("Plain text"), plainType);
    m_types->addSeparator();
    for (const QString &name : SyntaxLibrary::bundled().names())
        add(name, name);
}

} // namespace velmora

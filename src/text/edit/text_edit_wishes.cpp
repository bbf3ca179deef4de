#include "text/edit/text_edit_wishes.h"

#include "core/line_ends.h"
#include "session/document/edited_texts.h"
#include "session/document/text_input.h"
#include "session/pane/pane_scene.h"
#include "session/pane/syntax_detection.h"
#include "text/edit/text_edit_format.h"
#include "text/syntax/syntax_definition.h"
#include "text/syntax/syntax_library.h"

#include <memory>
#include <optional>
#include <utility>

namespace velmora {

namespace {

constexpr int onlyPane = 0;

} // namespace

TextEditWishes::TextEditWishes(const Parts &parts, QObject *parent) : QObject(parent), m_parts(parts)
{
    connectFormat();
}

void TextEditWishes::connectFormat()
{
    connect(&m_parts.format, &TextEditFormat::savedEncodingChosen, this, [this](const QString &name) {
        m_options.savedEncoding = name;
        applyToSaving();
    });
    connect(&m_parts.format, &TextEditFormat::savedLineEndsChosen, this, [this](const QString &name) {
        m_options.savedLineEnds = name;
        applyToSaving();
    });
    connect(&m_parts.format, &TextEditFormat::fileTypeChosen, this, [this](const QString &type) {
        m_options.fileType = type;
        chooseSyntax();
        showFormat();
    });
}

void TextEditWishes::setOptions(const TextEditOptions &options)
{
    m_options = options;
    showEncoding();
    chooseSyntax();
    if (m_parts.input.loadedPath().isEmpty())
        showFormat(); // what is wished for is not yet for this text
    else
        applyToSaving();
}

void TextEditWishes::setEncoding(const QString &name)
{
    m_options.encoding = name;
    showEncoding();
}

void TextEditWishes::showEncoding()
{
    m_parts.input.setEncoding(TextEncoding::fromName(m_options.encoding));
}

void TextEditWishes::apply()
{
    chooseSyntax();
    applyToSaving();
}

void TextEditWishes::takeSaved()
{
    if (!m_options.savedEncoding.isEmpty() && m_options.encoding != TextEncoding().name())
        m_options.encoding = m_parts.input.loaded().text.encoding.name();
    m_options.savedEncoding.clear();
    m_options.savedLineEnds.clear();
    showEncoding();
}

void TextEditWishes::applyToSaving()
{
    TextSaving &saving = m_parts.texts.saving();
    const bool neededSaving = saving.needsSaving(onlyPane);
    saving.setLineEnds(onlyPane, lineEndStyleFromName(m_options.savedLineEnds));
    saving.setEncoding(onlyPane, m_options.savedEncoding.isEmpty()
                                     ? std::nullopt
                                     : std::optional(TextEncoding::fromName(m_options.savedEncoding)));
    // Another form of the same text is a change, too, which closing would lose.
    if (!neededSaving && saving.needsSaving(onlyPane))
        m_parts.texts.editor().markUnsaved(onlyPane);
    showFormat();
}

void TextEditWishes::chooseSyntax()
{
    std::shared_ptr<const SyntaxDefinition> syntax;
    if (m_options.fileType == automaticType)
        syntax = detectSyntax(m_parts.input.loadedPath(), m_parts.scene.document()->source(onlyPane));
    else if (m_options.fileType != plainType)
        syntax = SyntaxLibrary::bundled().named(m_options.fileType);
    m_parts.scene.colouring(onlyPane).setDefinition(std::move(syntax));
}

QString TextEditWishes::syntaxName() const
{
    const auto &syntax = m_parts.scene.colouring(onlyPane).definition();
    return syntax ? syntax->name : QString();
}

void TextEditWishes::showFormat()
{
    m_parts.format.show(m_parts.input.loaded(), m_options, syntaxName());
    m_parts.format.setChangeable(m_parts.texts.editor().obstacle(onlyPane).isEmpty());
    Q_EMIT applied();
}

} // namespace velmora

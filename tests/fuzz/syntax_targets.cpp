#include "fuzz/targets.h"
#include "text/syntax/syntax_library.h"
#include "text/syntax/syntax_reader.h"
#include "text/syntax/syntax_scanner.h"

namespace velmora::fuzz {

namespace {

void colour(const SyntaxDefinition &definition, const QString &text)
{
    SyntaxState state;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        const ColouredLine coloured = colourLine(definition, state, line);
        qsizetype end = 0;
        for (const SyntaxToken &token : coloured.tokens) {
            require(token.start >= end && token.length > 0, "tokens follow each other");
            end = token.start + token.length;
        }
        require(end <= line.size(), "tokens stay in the line");
        require(stateBehind(definition, state, line) == coloured.end, "the state alone is the same");
        state = coloured.end;
    }
}

} // namespace

void syntaxDefinition(const QByteArray &input)
{
    const SyntaxReadResult read = readSyntaxDefinition(input);
    require((read.definition == nullptr) != read.error.isEmpty(), "a definition or an error");
    if (read.definition)
        colour(*read.definition,
               QStringLiteral("a = \"b\\\"c\" /* 1.5e3\n */ <tag x='y'> # end\n") + QString::fromUtf8(input));
}

/// The first byte chooses the file type.
void syntaxScanner(const QByteArray &input)
{
    static const SyntaxLibrary library(QStringLiteral(VELMORA_SOURCE_DIR "/resources/syntax"));
    require(!library.names().isEmpty() && library.errors().isEmpty(), "the definitions are whole");
    if (input.isEmpty())
        return;
    const QString name = library.names().at(static_cast<unsigned char>(input[0]) % library.names().size());
    const QString text = QString::fromUtf8(input.mid(1));
    colour(*library.named(name), text);
    (void)library.detect(text.left(40), text);
}

} // namespace velmora::fuzz

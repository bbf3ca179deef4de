#include "text/syntax/syntax_scanner.h"

#include "text/syntax/line_scanner.h"

namespace velmora {

namespace {

SyntaxState scan(const SyntaxDefinition &definition, const SyntaxState &start, QStringView line,
                 std::vector<SyntaxToken> *tokens)
{
    const bool isWhole = line.size() <= longestColouredLine;
    QList<SyntaxFrame> open =
        LineScanner(definition, start, isWhole ? line : line.first(longestColouredLine), tokens).run();
    // An unchanged state goes on sharing its memory.
    return !isWhole || open == start.open ? start : SyntaxState{std::move(open)};
}

} // namespace

ColouredLine colourLine(const SyntaxDefinition &definition, const SyntaxState &start, QStringView line)
{
    ColouredLine result;
    result.end = scan(definition, start, line, &result.tokens);
    return result;
}

SyntaxState stateBehind(const SyntaxDefinition &definition, const SyntaxState &start, QStringView line)
{
    return scan(definition, start, line, nullptr);
}

} // namespace velmora

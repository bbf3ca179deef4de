#pragma once

#include "text/syntax/scanned_characters.h"
#include "text/syntax/syntax_definition.h"
#include "text/syntax/syntax_state.h"

#include <QStringView>
#include <QVarLengthArray>

#include <optional>
#include <vector>

namespace velmora {

/// One walk along one line, from its start to its end.
///
/// Every step moves on by at least one unit. What looks ahead is either bounded, or looks for something that ends what
/// it begins; a search that failed is not repeated in the line. So the walk is linear.
class LineScanner {
public:
    /// `tokens` is null when only the state is wanted. All arguments outlive the scanner.
    LineScanner(const SyntaxDefinition &definition, const SyntaxState &start, QStringView line,
                std::vector<SyntaxToken> *tokens);

    [[nodiscard]] QList<SyntaxFrame> run();

private:
    struct UpToPlace {
        const SyntaxRule *rule;
        qsizetype at; ///< -1 when the line has no stop
    };

    [[nodiscard]] const SyntaxContext &contextOf(const SyntaxFrame &frame) const
    {
        return m_definition.contexts[frame.context];
    }
    [[nodiscard]] const SyntaxContext &context() const
    {
        return m_open.isEmpty() ? m_definition.contexts.front() : contextOf(m_open.constLast());
    }
    [[nodiscard]] const SyntaxSet &set() const { return m_definition.sets[std::size_t(context().set)]; }
    [[nodiscard]] const QString &endOf(const SyntaxContext &context) const;

    /// True when the line as a whole belongs to a span that ends by lines.
    [[nodiscard]] bool takeWholeLine();
    void step();
    void finishLine();

    [[nodiscard]] bool takeEnd(const SyntaxContext &context);
    [[nodiscard]] bool takeEscape(const SyntaxContext &context);
    [[nodiscard]] bool takeNested(const SyntaxContext &context);
    [[nodiscard]] bool takeRule();
    [[nodiscard]] bool takeRule(const SyntaxRule &rule);
    [[nodiscard]] bool takeDelimited(const SyntaxRule &rule);
    [[nodiscard]] bool takeHereDocument(const SyntaxRule &rule);
    [[nodiscard]] bool takeIndented(const SyntaxRule &rule);
    [[nodiscard]] bool takeUpTo(const SyntaxRule &rule);
    [[nodiscard]] bool takeNumber();
    [[nodiscard]] bool takeWord();
    void takePlain(const SyntaxContext &context);

    [[nodiscard]] bool isAt(qsizetype at, const QString &text, bool ignoresCase) const
    {
        if (text.size() > m_limit - at)
            return false;
        const QStringView here = m_line.sliced(at, text.size());
        return ignoresCase ? here.compare(text, Qt::CaseInsensitive) == 0 : here == text;
    }
    [[nodiscard]] bool isPlace(const SyntaxRule &rule) const;
    [[nodiscard]] bool isNext(SyntaxRule::Next next, qsizetype at) const;
    [[nodiscard]] bool closes(const SyntaxRule &rule, qsizetype from);
    [[nodiscard]] std::optional<qsizetype> findEnd(const SyntaxContext &context, qsizetype from, int atMost) const;
    [[nodiscard]] bool isWordCharacter(qsizetype at) const
    {
        const QChar unit = m_line[at];
        if (!isAscii(unit))
            return unit.isLetterOrNumber() || unit.isMark() || unit.isSurrogate();
        return set().wordCharacters.test(unit.unicode());
    }
    [[nodiscard]] qsizetype behindWord(qsizetype from) const
    {
        while (from < m_limit && isWordCharacter(from))
            ++from;
        return from;
    }
    [[nodiscard]] qsizetype behindName(qsizetype from) const
    {
        while (from < m_limit && (m_line[from].isLetterOrNumber() || m_line[from] == u'_'))
            ++from;
        return from;
    }
    [[nodiscard]] qsizetype behindBlanks(qsizetype from) const
    {
        while (from < m_limit && isBlank(m_line[from]))
            ++from;
        return from;
    }
    [[nodiscard]] qsizetype nextCharacter(qsizetype at) const
    {
        if (at >= m_limit)
            return m_limit;
        const bool isPair = m_line[at].isHighSurrogate() && at + 1 < m_limit && m_line[at + 1].isLowSurrogate();
        return at + (isPair ? 2 : 1);
    }

    void take(qsizetype length, SyntaxRole role);
    void push(int context, const QString &end = {});
    /// Looks where the innermost span that ends whatever is open inside ends.
    void findLimit();

    static constexpr int deepest = 48;

    const SyntaxDefinition &m_definition;
    QStringView m_line;
    std::vector<SyntaxToken> *m_tokens;
    QList<SyntaxFrame> m_open;
    QVarLengthArray<SyntaxFrame, 2> m_fromNextLine;
    QVarLengthArray<const SyntaxRule *, 4> m_unclosed; ///< rules whose end was looked for in vain
    QVarLengthArray<UpToPlace, 2> m_upTo;
    qsizetype m_at = 0;
    qsizetype m_limit = 0;          ///< the line's end, or that of the embedded text
    qsizetype m_embeddedFrame = -1; ///< the frame that ends at the limit
    bool m_atLineStart = true;      ///< nothing but blanks and comments so far
    bool m_wantsOperand = true;     ///< what comes cannot be an operator
    bool m_isContinued = false;     ///< the line ends with an escape character
};

} // namespace velmora

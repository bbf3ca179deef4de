#include "text/result/verdict.h"

#include "session/translate.h"
#include "text/engine/white_space.h"

namespace velmora {

namespace {

std::string_view indentationOf(std::string_view line)
{
    size_t length = 0;
    while (length < line.size()) {
        const size_t space = spaceAtStart(line.substr(length));
        if (space == 0)
            break;
        length += space;
    }
    return line.substr(0, length);
}

bool isReindented(const DiffDocument &document, qsizetype row)
{
    const DiffDocument::Cell left = document.cell(row, Side::Left);
    const DiffDocument::Cell right = document.cell(row, Side::Right);
    if (!left.own || !right.own)
        return false;
    return indentationOf(left.source->bytes(left.line)) != indentationOf(right.source->bytes(right.line));
}

QString describeIgnoredSpace(const TextSessionOptions &options)
{
    const bool leading = !options.importantLeadingWhitespace;
    const bool embedded = !options.importantEmbeddedWhitespace;
    const bool trailing = !options.importantTrailingWhitespace;
    if ((leading && embedded && trailing) || !options.importantEverythingElse)
        return Velmora::tr("white space");
    QStringList places;
    if (leading)
        places.append(Velmora::tr("leading white space"));
    if (embedded)
        places.append(Velmora::tr("white space within lines"));
    if (trailing)
        places.append(Velmora::tr("trailing white space"));
    return places.join(Velmora::tr(", "));
}

/// Of texts without a row that differs, and that are not the same bytes.
QString describeEqualRows(const Findings &findings, const TextSessionOptions &options)
{
    QStringList sentences;
    if (findings.lineEnds.any()) {
        sentences.append(Velmora::tr("The lines are equal, their ends are not."));
        sentences += describeLineEnds(findings.lineEnds);
    } else {
        sentences.append(Velmora::tr("No differences under the rules of this comparison, which ignore: %1")
                             .arg(describeIgnored(options)));
    }
    return sentences.join(Velmora::tr(" | "));
}

} // namespace

Findings findingsOf(const DiffDocument &document)
{
    Findings findings;
    findings.rows = document.counts() ? *document.counts() : countRows(document.rows());
    findings.lineEnds = countLineEnds(document.lineEndRows());
    findings.unimportantRows = qint64(document.unimportantRows().size());
    for (const qint32 row : document.unimportantRows())
        findings.reindentedRows += isReindented(document, row);
    return findings;
}

Verdict judge(const Findings &findings, const LoadedText &left, const LoadedText &right,
              const TextSessionOptions &options, const VerdictScope &scope)
{
    const bool differs = findings.rows.differences() > 0;
    const bool sameText = left.text.lines.bytes() == right.text.lines.bytes();
    if (!differs && sameText) {
        return {left.text.encoding != right.text.encoding
                    ? Velmora::tr("The texts are identical; only their encodings differ")
                    : Velmora::tr("The texts are identical")};
    }
    Verdict verdict;
    QStringList sentences;
    if (differs)
        sentences = describeLineEnds(findings.lineEnds);
    else
        sentences.append(describeEqualRows(findings, options));
    if (scope.countsUnimportant) {
        if (!differs && findings.unimportantRows > 0) {
            sentences.append(findings.unimportantRows == 1
                                 ? Velmora::tr("1 row differs only in what is ignored, and counts here")
                                 : Velmora::tr("%1 rows differ only in what is ignored, and count here")
                                       .arg(findings.unimportantRows));
            verdict.offer = Verdict::Offer::IgnoreUnimportant;
        }
    } else {
        const bool isIndented = !scope.indentedType.isEmpty() && findings.reindentedRows > 0;
        if (isIndented) {
            sentences.append(
                findings.reindentedRows == 1
                    ? Velmora::tr("1 row that counts as equal is indented differently, which has meaning in %1")
                          .arg(scope.indentedType)
                    : Velmora::tr("%1 rows that count as equal are indented differently, which has meaning in %2")
                          .arg(findings.reindentedRows)
                          .arg(scope.indentedType));
        } else if (!differs && findings.unimportantRows > 0) {
            sentences.append(findings.unimportantRows == 1
                                 ? Velmora::tr("1 row differs only in that")
                                 : Velmora::tr("%1 rows differ only in that").arg(findings.unimportantRows));
        }
        verdict.warns = isIndented;
        if (isIndented || (!differs && findings.unimportantRows > 0))
            verdict.offer = Verdict::Offer::CountUnimportant;
    }
    verdict.warns = verdict.warns || (!differs && findings.lineEnds.any());
    verdict.text = sentences.join(Velmora::tr(" | "));
    return verdict;
}

QString describeIgnored(const TextSessionOptions &options)
{
    QStringList ignored{describeIgnoredSpace(options)};
    if (!options.importantCharacterCase)
        ignored.append(Velmora::tr("letter case"));
    if (!options.compareLineEndings)
        ignored.append(Velmora::tr("line ends"));
    if (options.ignoreBlankLines)
        ignored.append(Velmora::tr("blank lines"));
    if (!options.unimportantText.isEmpty())
        ignored.append(Velmora::tr("unimportant text"));
    if (!options.leftReplaceFind.isEmpty() || !options.rightReplaceFind.isEmpty())
        ignored.append(Velmora::tr("what replacement rules change"));
    ignored.removeAll(QString());
    return ignored.join(Velmora::tr(", "));
}

QStringList describeLineEnds(const LineEndCounts &counts)
{
    QStringList found;
    if (counts.rows > 0)
        found.append(counts.rows == 1 ? Velmora::tr("Line ends differ in 1 row")
                                      : Velmora::tr("Line ends differ in %1 rows").arg(counts.rows));
    if (counts.lastFeedMissesLeft)
        found.append(Velmora::tr("The last line feed is missing on the left"));
    if (counts.lastFeedMissesRight)
        found.append(Velmora::tr("The last line feed is missing on the right"));
    return found;
}

QString describeCounts(const Findings &findings, bool countsUnimportant)
{
    const DiffCounts &counts = findings.rows;
    QStringList parts{
        Velmora::tr("Compare done: %1 diffs (added %2, removed %3, modified %4) | Left: %5 lines, Right: %6 lines")
            .arg(counts.differences())
            .arg(counts.added)
            .arg(counts.removed)
            .arg(counts.modified)
            .arg(counts.leftLines)
            .arg(counts.rightLines)};
    parts += describeLineEnds(findings.lineEnds);
    if (countsUnimportant && findings.unimportantRows > 0)
        parts.append(findings.unimportantRows == 1
                         ? Velmora::tr("1 unimportant row counts, too")
                         : Velmora::tr("%1 unimportant rows count, too").arg(findings.unimportantRows));
    return parts.join(Velmora::tr(" | "));
}

} // namespace velmora

#include "core/text_file.h"
#include "fuzz/targets.h"
#include "settings/options/text_presets.h"
#include "settings/options/text_replacements.h"
#include "settings/options/text_session_options.h"
#include "text/engine/line_diff_engine.h"
#include "text/engine/text_patch.h"

#include <QBuffer>

namespace velmora::fuzz {

namespace {

TextSessionOptions chosenOptions(unsigned char choice)
{
    TextSessionOptions options;
    if (choice & 1)
        (void)applyTextPreset(QStringLiteral("@preset/text/vm-strict"), options);
    options.alignAlgorithm = choice >> 1 & 3;
    options.ignoreBlankLines = (choice & 8) != 0;
    if (choice & 16)
        options.unimportantText = QStringList{QStringLiteral("b"), QStringLiteral("^[ac]+$")};
    if (choice & 32) {
        options.leftReplaceFind = QStringList{QStringLiteral("a"), QStringLiteral("b")};
        options.leftReplaceWith = QStringList{QStringLiteral("bb")};
    }
    return options;
}

/// Each line once and in order, but for blank ones that are left out.
void checkNumbers(const QList<AlignedRow> &rows, const TextLines &left, const TextLines &right, bool all)
{
    qint32 lastLeft = 0;
    qint32 lastRight = 0;
    for (const AlignedRow &row : rows) {
        require(row.leftLine == -1 || (all ? row.leftLine == lastLeft + 1 : row.leftLine > lastLeft),
                "left lines rise");
        require(row.rightLine == -1 || (all ? row.rightLine == lastRight + 1 : row.rightLine > lastRight),
                "right lines rise");
        lastLeft = std::max(lastLeft, row.leftLine);
        lastRight = std::max(lastRight, row.rightLine);
    }
    require(lastLeft <= left.count() && lastRight <= right.count(), "no line is made up");
    require(!all || (lastLeft == left.count() && lastRight == right.count()), "no line is lost");
}

QByteArray patched(const std::vector<PatchChange> &changes, const TextLines &left, const TextLines &right)
{
    QByteArray result;
    const auto append = [&result](const TextLines &text, qsizetype begin, qsizetype end) {
        for (qsizetype line = begin; line < end; ++line) {
            const std::string_view lineEnd = lineEndBytes(text.lineEnd(line));
            result.append(text.line(line).data(), qsizetype(text.line(line).size()));
            result.append(lineEnd.data(), qsizetype(lineEnd.size()));
        }
    };
    qsizetype at = 0;
    for (const PatchChange &change : changes) {
        require(at <= change.leftBegin && change.leftBegin <= change.leftEnd, "changes rise");
        append(left, at, change.leftBegin);
        append(right, change.rightBegin, change.rightEnd);
        at = change.leftEnd;
    }
    append(left, at, left.count());
    return result;
}

QByteArray bytesOf(const TextLines &text)
{
    return QByteArray(text.bytes().data(), qsizetype(text.bytes().size()));
}

} // namespace

/// The first byte chooses options; a byte 0xFF divides the rest into left and right.
void compare(const QByteArray &input)
{
    const qsizetype cut = input.indexOf('\xFF', 1);
    if (cut < 0)
        return;
    const TextSessionOptions options = chosenOptions(static_cast<unsigned char>(input[0]));
    const TextLines left = decodeText(input.mid(1, cut - 1), {}).lines;
    const TextLines right = decodeText(input.mid(cut + 1), {}).lines;
    const auto replaced = applyReplacementRules(left, options.leftReplaceFind, options.leftReplaceWith);
    require(replaced && replaced->count() == left.count(), "rules keep the number of lines");

    Progress nobody;
    const QList<AlignedRow> rows = compareTexts(*replaced, right, options, {}, nobody);
    checkNumbers(rows, left, right, !options.ignoreBlankLines);
    const std::vector<PatchChange> changes = byteChanges(rows, left, right);
    require(patched(changes, left, right) == bytesOf(right), "the changes turn left into right");
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    OutputBuffer output(device);
    writePatch(output, changes, QStringLiteral("l"), left, QStringLiteral("r"), right);
    require(output.finish() && device.data().isEmpty() == changes.empty(),
            "a patch is written where there are changes");
}

} // namespace velmora::fuzz

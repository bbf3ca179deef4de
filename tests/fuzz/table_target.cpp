#include "core/text_file.h"
#include "core/utf8_text.h"
#include "filetypes/table/engine/cell_cursor.h"
#include "fuzz/targets.h"

namespace velmora::fuzz {

namespace {

/// Rules of the first two columns: none for 0, else one of each meaning and the next one.
QList<ColumnRule> rulesFor(int choice)
{
    if (choice == 0)
        return {};
    const auto rule = [](int number) {
        return ColumnRule{.ignoresCase = number % 2 == 0,
                          .ignoresSpace = number % 2 == 0,
                          .meaning = ColumnRule::Meaning(number % 4),
                          .bound = ColumnRule::Bound(number / 4 % 2),
                          .tolerance = 0.5};
    };
    return {rule(choice), rule(choice + 1)};
}

} // namespace

/// The first byte chooses delimiter, header, key and rules; the rest is cut in half for the two tables.
void table(const QByteArray &input)
{
    if (input.isEmpty())
        return;
    const auto choice = static_cast<unsigned char>(input[0]);
    const QChar delimiter = QStringLiteral(",;\t，")[choice % 4];
    const bool hasHeader = choice & 4;
    const qint32 key = (choice >> 3) % 4 - 1;
    const QList<ColumnRule> rules = rulesFor(choice >> 5);
    const DecodedText left = decodeText(input.sliced(1, (input.size() - 1) / 2), {});
    const DecodedText right = decodeText(input.sliced(1 + (input.size() - 1) / 2), {});
    Progress progress;
    const TableAlignment fast = alignTables(TableText(left.lines, delimiter), TableText(right.lines, delimiter),
                                            {hasHeader, false, {key}, rules}, {}, progress);
    const TableAlignment byName = alignTables(fast.tables.left, fast.tables.right, {true, true, {key}}, {}, progress);
    require(qsizetype(byName.rows.size()) == withCells(byName).rows.size(), "columns of any names can be paired");
    const auto parsed = [delimiter](const DecodedText &text) {
        return parseDelimitedText(textOfUtf8(text.lines.bytes()), delimiter);
    };
    require(withCells(fast) == compareTables(parsed(left), parsed(right), {key}, hasHeader, rules), "both forms agree");
}

} // namespace velmora::fuzz

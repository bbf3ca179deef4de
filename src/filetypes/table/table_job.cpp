#include "filetypes/table/table_job.h"

#include "core/text_file.h"
#include "core/text_pair.h"
#include "filetypes/table/engine/cell_cursor.h"
#include "filetypes/table/engine/table_proposal.h"
#include "filetypes/table/table_scene.h"

#include <QFileInfo>

namespace velmora {

namespace {

constexpr std::size_t duplicatesListed = 20'000; // more than anyone goes through

struct SideText {
    RawText raw;
    QString error;
};

SideText readSide(const QString &path, const CancelFlag &cancel)
{
    FileContents contents = readFile(path, cancel);
    SideText side{{contents.bytes, {}}, contents.error};
    side.raw.text = decodeText(side.raw.bytes, {}, cancel);
    return side;
}

TableSource sourceOf(const SideText &side)
{
    const DecodedText &text = side.raw.text;
    return {text.encoding, text.encodingGuessed, text.undecodable, side.error};
}

/// The names that a key is chosen from: those of the first table that has any.
QStringList firstRow(const TableText &left, const TableText &right)
{
    const TableText &table = left.isEmpty() ? right : left;
    QStringList names;
    if (table.isEmpty())
        return names;
    qint32 count = 0;
    for (FieldCursor cursor = table.fields(0); cursor.next();)
        ++count;
    constexpr qint32 most = 1000; // that a person can choose from
    for (qint32 column = 0; column < std::min(count, most); ++column)
        names.append(table.value(0, column));
    return names;
}

std::vector<qint32> changedCells(const TableDocument &document, const CancelFlag &cancel)
{
    const TableAlignment &alignment = document.alignment;
    std::vector<qint32> counts(std::size_t(std::min(alignment.columns.count(), TableScene::columnLimit)), 0);
    for (const qint32 index : document.differences) {
        const AlignedTableRow &row = alignment.rows[std::size_t(index)];
        if (row.status != TableRowStatus::Modified)
            continue;
        if (cancel.isCancelled())
            break;
        CellCursor cell(alignment, row);
        for (qint32 &count : counts)
            count += cell.next() && cell.status() == TableCellStatus::Modified;
    }
    return counts;
}

void sortRows(TableDocument &document)
{
    const std::vector<AlignedTableRow> &rows = document.alignment.rows;
    document.differences.reserve(std::size_t(document.alignment.counts.differences()));
    document.same.reserve(std::size_t(document.alignment.counts.same));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        std::vector<qint32> &list = rows[row].status == TableRowStatus::Same ? document.same : document.differences;
        list.push_back(qint32(row));
    }
}

/// The key columns that are there, by which rows will be paired.
QList<qint32> takeKeys(const TableRequest &request, const TableColumns &columns, TableDocument &document)
{
    QList<qint32> keys;
    for (const ColumnRef &ref : request.keys) {
        const qint32 column = columnOf(ref, columns);
        if (column < 0 || column >= document.keyNames.size()) {
            if (!ref.name.isEmpty())
                document.missingKeys.append(ref.name);
            continue;
        }
        keys.append(column);
        document.keys.append({column, columns.name(column)});
    }
    return keys;
}

} // namespace

TableResult compareTableFiles(const TableRequest &request, const CancelFlag &cancel, Progress &progress)
{
    for (const Side side : bothSides) {
        if (QFileInfo(request.paths[side]).size() > tableSizeLimit)
            return {TableResult::Fault::TooLarge};
    }
    Sides<SideText> texts{readSide(request.paths.left, cancel), readSide(request.paths.right, cancel)};
    if (texts.left.raw.text.lines.isEmpty() && texts.right.raw.text.lines.isEmpty())
        return {TableResult::Fault::NothingRead};
    settleGuesses(texts.left.raw, texts.right.raw, cancel);

    auto document = std::make_shared<TableDocument>();
    document->sources = {sourceOf(texts.left), sourceOf(texts.right)};
    const auto cut = [&](const SideText &side) {
        return TableText(withoutQuotedReturns(side.raw.text.lines, cancel), request.delimiter, cancel);
    };
    document->delimiterProposal =
        proposedDelimiter(texts.left.raw.text.lines, texts.right.raw.text.lines, request.delimiter);
    const TableText left = cut(texts.left);
    const TableText right = cut(texts.right);
    texts = {};
    if (request.hasHeader)
        document->keyNames = firstRow(left, right);
    TableOptions options{request.hasHeader, request.columnsByName};
    const TableColumns columns = tableColumns(left, right, options, cancel);
    document->hasLongerRows =
        request.hasHeader && (hasLongerRows(left, columns.count()) || hasLongerRows(right, columns.count()));
    options.keys = takeKeys(request, columns, *document);
    options.rules = rulesOf(request.columns, columns);
    document->alignment = alignTables(left, right, columns, options, cancel, progress);
    sortRows(*document);
    document->duplicates = duplicateKeys(document->alignment, duplicatesListed);
    document->changedCells = changedCells(*document, cancel);
    if (document->keys.isEmpty() && document->alignment.counts.differences() > 0)
        document->keyProposal = proposedKey(left, right, qint32(document->keyNames.size()), cancel);
    return {TableResult::Fault::None, std::move(document)};
}

} // namespace velmora

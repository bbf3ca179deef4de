#include "session/pane/row_patch.h"

#include "session/pane/line_segments.h"

#include <algorithm>

namespace velmora {

namespace {

// An edit that joins or parts lines may shift the pairs of the difference that it is in.
constexpr qsizetype rowsAround = 100;

} // namespace

RowRange touchedRows(const PaneDocument &before, PaneIndex pane, const LineChange &change)
{
    RowRange rows;
    if (change.removed > 0) {
        rows.first = before.rowOfLine(pane, qint32(change.first + 1));
        rows.count = before.rowOfLine(pane, qint32(change.first + change.removed)) - rows.first + 1;
    } else {
        // Lines that come in between take the place of the rows that had none.
        rows.first = before.rowOfLine(pane, qint32(change.first)) + 1;
        const bool atEnd = change.first >= before.source(pane).count();
        const qsizetype next = atEnd ? before.rowCount() : before.rowOfLine(pane, qint32(change.first + 1));
        rows.count = next - rows.first;
    }
    if (change.removed == change.inserted)
        return rows;
    qsizetype end = rows.end();
    for (qsizetype k = 0; k < rowsAround && rows.first > 0 && !before.isEqual(rows.first - 1); ++k)
        --rows.first;
    for (qsizetype k = 0; k < rowsAround && end < before.rowCount() && !before.isEqual(end); ++k)
        ++end;
    return {rows.first, end - rows.first};
}

PaneLines linesIn(const PaneDocument &document, RowRange rows, PaneIndex pane)
{
    PaneLines lines;
    for (qsizetype row = rows.first; row < rows.end(); ++row) {
        const qint32 number = document.lineNumber(row, pane);
        if (number < 1)
            continue;
        if (lines.count == 0)
            lines.first = number - 1;
        ++lines.count;
    }
    return lines;
}

qint64 patchedWidth(const PaneDocument &before, const PaneTexts &texts, PaneIndex pane, const LineChange &change)
{
    const int tabWidth = before.tabWidth();
    const EditSnapshot &text = *texts[std::size_t(pane.number())];
    qint64 columns = before.widestLine();
    for (qsizetype line = change.first; line < change.first + change.inserted; ++line) {
        const std::string_view bytes = text.bytes(line);
        if (bytes.size() <= bytesLookedAt || change.removed != change.inserted) {
            columns = std::max(columns, columnCount(bytes, tabWidth));
        } else {
            // What came in takes columns, and may push the text behind it to the next stop of a tab.
            const qint64 growth = qint64(bytes.size()) - qint64(before.source(pane).bytes(line).size());
            columns += std::max<qint64>(growth, 0) * std::max(tabWidth, 3) + tabWidth;
        }
    }
    return columns;
}

std::shared_ptr<const PaneDocument> patchPlainDocument(const PaneDocument &before, const PaneTexts &texts,
                                                       PaneIndex pane, const LineChange &change)
{
    return std::make_shared<PlainDocument>(static_cast<const PlainDocument &>(before), texts.front(),
                                           patchedWidth(before, texts, pane, change));
}

} // namespace velmora

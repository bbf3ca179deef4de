#pragma once

#include "filetypes/binary/hex_document.h"

#include <QObject>

namespace velmora {

/// Bytes of one file.
struct ByteSelection {
    Side side = Side::Left;
    qint64 begin = 0;
    qint64 end = 0;

    [[nodiscard]] qint64 length() const noexcept { return end - begin; }
};

/// What both views of a comparison share: the document, the rows in sight, the current row, the caret with its
/// selection.
class HexScene final : public QObject {
    Q_OBJECT
public:
    /// Where a person is. The caret stands on a byte of its side.
    struct Caret {
        Side side = Side::Left;
        qint64 offset = -1; ///< in the file; -1 before a person has gone anywhere
        qint64 anchor = -1; ///< where the selection began, the caret's own place without one
    };

    using QObject::QObject;

    /// Null before the first comparison.
    [[nodiscard]] const HexDocument *document() const { return m_document.get(); }
    [[nodiscard]] std::shared_ptr<const HexDocument> sharedDocument() const { return m_document; }
    /// Shows another document from its beginning.
    void setDocument(std::shared_ptr<const HexDocument> document);

    [[nodiscard]] qint64 rowCount() const { return m_document ? m_document->rows.rowCount() : 0; }
    /// The rows that a view has room for, 1 at least.
    [[nodiscard]] qint64 visibleRows() const { return m_visibleRows; }
    void setVisibleRows(qint64 rows);

    /// The first row in sight.
    [[nodiscard]] qint64 top() const { return m_top; }
    [[nodiscard]] qint64 lastTop() const { return std::max<qint64>(rowCount() - m_visibleRows, 0); }
    void setTop(qint64 row);

    /// -1 for none.
    [[nodiscard]] qint64 currentRow() const { return m_currentRow; }
    /// Makes `row` the current one, with the caret at its beginning, and scrolls it to the middle.
    void showRow(qint64 row);

    [[nodiscard]] const Caret &caret() const { return m_caret; }
    /// The row and the column that the caret is in; it must be somewhere.
    [[nodiscard]] qint64 caretRow() const;
    [[nodiscard]] int caretColumn() const;
    /// Moves the caret to a byte of the side, or the nearest that there is, and brings it into sight. `selects` keeps
    /// the anchor where it is.
    void moveCaret(Side side, qint64 offset, bool selects = false);
    /// Selects bytes, with the caret on the first of them, and scrolls its row to the middle if it is out of sight.
    void select(const ByteSelection &range);
    /// What is selected; without a selection the byte under the caret, or nothing before there is one.
    [[nodiscard]] ByteSelection selection() const;

    /// Tells that colours and fonts have changed.
    void refresh() { Q_EMIT changed(); }

Q_SIGNALS:
    void documentChanged();
    /// `top`, or the range that it can be in.
    void scrolled();
    /// The caret or the current row.
    void changed();

private:
    void bringIntoSight(qint64 row);

    std::shared_ptr<const HexDocument> m_document;
    qint64 m_visibleRows = 1;
    qint64 m_top = 0;
    qint64 m_currentRow = -1;
    Caret m_caret;
};

} // namespace velmora

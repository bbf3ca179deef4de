#pragma once

#include "session/diff_colours.h"
#include "session/pane/line_source.h"
#include "session/pane/pane_index.h"
#include "session/pane/shown_rows.h"

#include <memory>
#include <vector>

namespace velmora {

class EditSnapshot;

/// How a row looks in one pane.
struct RowLook {
    DiffColour background = DiffColour::Background;
    QChar sign;      ///< in the margin beside the line number; null for none
    QString lineEnd; ///< the name of the line's end where it is to be seen behind the line
    DiffColour strong = DiffColour::ModifiedStrong; ///< behind its changed characters
    bool isSignFaint = false;
    DiffColour filler = DiffColour::Filler; ///< behind the missing line; hatched unless it is another colour
    QString fillerText = {};                ///< in place of the missing line
};

/// The texts of the panes that scroll together, and how their lines stand side by side: rows, each with at most one
/// line of each text. What the rows mean is for the derived class to know.
///
/// Immutable, shared between the view and its workers, usable from any thread. Rows are addressed by their 0-based
/// position.
class PaneDocument {
public:
    /// The text that a row shows in one pane.
    struct Cell {
        const LineSource *source = nullptr; ///< null where the pane has nothing to show
        qsizetype line = -1;                ///< 0-based in `source`
        PaneIndex pane;                     ///< whose text it is
        bool own = false;                   ///< false for a line of another pane, shown because it does not matter
    };

    PaneDocument &operator=(const PaneDocument &) = delete;
    virtual ~PaneDocument() = default;

    [[nodiscard]] int paneCount() const noexcept { return int(m_texts.size()); }
    [[nodiscard]] const LineSource &source(PaneIndex pane) const { return *m_texts[std::size_t(pane.number())]; }
    [[nodiscard]] int tabWidth() const noexcept { return m_tabWidth; }
    /// The same rows and lines with other tab stops.
    [[nodiscard]] virtual std::shared_ptr<const PaneDocument> withTabWidth(int columns) const = 0;
    /// Columns of the widest line of all texts, or more.
    [[nodiscard]] qint64 widestLine() const noexcept { return m_widest; }

    [[nodiscard]] virtual qsizetype rowCount() const = 0;
    /// The line number, 1-based, or -1.
    [[nodiscard]] virtual qint32 lineNumber(qsizetype row, PaneIndex pane) const = 0;
    /// The pane's own line, where it has one.
    [[nodiscard]] virtual Cell cell(qsizetype row, PaneIndex pane) const;
    /// The text of a cell, empty without one.
    [[nodiscard]] QString text(qsizetype row, PaneIndex pane) const;

    /// The row that shows line `number` (1-based) of `pane`, or the nearest row before it that shows a line; -1 when no
    /// row does. Takes the logarithm of the rows, and a step for each row in the longest run of rows without a line.
    [[nodiscard]] qsizetype rowOfLine(PaneIndex pane, qint32 number) const;
    /// The lines that `pane` has before `row`, which may be `rowCount()`.
    [[nodiscard]] qsizetype linesBefore(qsizetype row, PaneIndex pane) const;

    /// True unless the texts of the row's lines differ; what differs in a way that does not matter is equal.
    [[nodiscard]] virtual bool isEqual(qsizetype /*row*/) const { return true; }
    /// What each row is; `countsMinor` says whether differences that do not matter count.
    [[nodiscard]] virtual std::vector<TextRowState> states(bool countsMinor) const;
    /// Whether `states` of both are known to be the same.
    [[nodiscard]] virtual bool hasSameStates(const PaneDocument &other, bool countsMinor) const = 0;
    [[nodiscard]] virtual RowLook look(qsizetype /*row*/, PaneIndex /*pane*/) const { return {}; }
    /// Columns of the room that a look's `lineEnd` needs behind the lines.
    [[nodiscard]] virtual qint64 columnsBehindLines() const { return 0; }

    /// For assistive tools: what the row is ("modified"), and a block in a sentence; empty when there is nothing to
    /// say.
    [[nodiscard]] virtual QString describeRow(qsizetype /*row*/) const { return {}; }
    [[nodiscard]] virtual QString describeBlock(const ShownRows & /*shown*/, qsizetype /*block*/) const { return {}; }

protected:
    /// Of texts whose widest line has at most `widest` columns.
    PaneDocument(std::vector<std::shared_ptr<const LineSource>> texts, int tabWidth, qint64 widest);
    PaneDocument(const PaneDocument &) = default;

    /// Measures the texts: one pass over the long lines.
    void setTabWidth(int columns);

private:
    std::vector<std::shared_ptr<const LineSource>> m_texts;
    int m_tabWidth;
    qint64 m_widest;
};

/// One text in one pane: each line is a row, and where the last line has an end, or there is none, an empty row behind
/// it is the place to go on.
class PlainDocument final : public PaneDocument {
public:
    explicit PlainDocument(const std::shared_ptr<const EditSnapshot> &text, int tabWidth = 4);
    /// `text` is that of `before` after an edit; `widest` as in `patchedWidth`.
    PlainDocument(const PlainDocument &before, const std::shared_ptr<const EditSnapshot> &text, qint64 widest);

    [[nodiscard]] std::shared_ptr<const PaneDocument> withTabWidth(int columns) const override;
    [[nodiscard]] qsizetype rowCount() const override { return source(0).count(); }
    [[nodiscard]] qint32 lineNumber(qsizetype row, PaneIndex /*pane*/) const override { return qint32(row + 1); }
    [[nodiscard]] bool hasSameStates(const PaneDocument &other, bool countsMinor) const override;
};

} // namespace velmora

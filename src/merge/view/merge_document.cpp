#include "merge/view/merge_document.h"

#include "merge/view/merge_words.h"
#include "session/translate.h"

#include <algorithm>

namespace velmora {

namespace {

std::vector<std::shared_ptr<const LineSource>> sourcesIn(const PaneTexts &texts)
{
    return {texts.begin(), texts.end()};
}

/// The colours of lines that only `version` has changed, or that are taken from it.
DiffColour colourOf(MergeSource version)
{
    return version == MergeSource::Left ? DiffColour::Removed : DiffColour::Added;
}

DiffColour strongColourOf(MergeSource version)
{
    return version == MergeSource::Left ? DiffColour::RemovedStrong : DiffColour::AddedStrong;
}

} // namespace

MergeDocument::MergeDocument(std::shared_ptr<const MergeTexts> merged, Parts parts, MergeRows rows,
                             const PaneTexts &texts, int tabWidth)
    : PaneDocument(sourcesIn(texts), tabWidth, 0),
      m_merged(std::move(merged)),
      m_parts(std::move(parts)),
      m_rows(std::move(rows))
{
    setTabWidth(tabWidth);
}

MergeDocument::MergeDocument(const MergeDocument &before, Parts parts, MergeRows rows, const PaneTexts &texts,
                             qint64 widest)
    : PaneDocument(sourcesIn(texts), before.tabWidth(), widest),
      m_merged(before.m_merged),
      m_parts(std::move(parts)),
      m_rows(std::move(rows))
{}

std::shared_ptr<const PaneDocument> MergeDocument::withTabWidth(int columns) const
{
    auto copy = std::make_shared<MergeDocument>(*this);
    copy->setTabWidth(columns);
    return copy;
}

qsizetype MergeDocument::partOfRow(qsizetype row) const
{
    const auto behind = std::upper_bound(m_rows.firstOfPart.begin(), m_rows.firstOfPart.end() - 1, row);
    return qsizetype(behind - m_rows.firstOfPart.begin()) - 1;
}

RowRange MergeDocument::rowsOfPart(qsizetype part) const
{
    const qsizetype first = m_rows.firstOfPart[std::size_t(part)];
    return {first, m_rows.firstOfPart[std::size_t(part) + 1] - first};
}

qint32 MergeDocument::lineNumber(qsizetype row, PaneIndex pane) const
{
    return m_rows.rows.at(row).lines[std::size_t(pane.number())];
}

std::vector<TextRowState> MergeDocument::states(bool /*countsMinor*/) const
{
    std::vector<TextRowState> states(std::size_t(rowCount()), TextRowState::Equal);
    for (std::size_t part = 0; part < m_parts->size(); ++part) {
        const RowRange rows = rowsOfPart(qsizetype(part));
        if (!(*m_parts)[part].isPlain())
            std::fill_n(states.begin() + rows.first, rows.count, TextRowState::Modified);
    }
    return states;
}

bool MergeDocument::hasSameStates(const PaneDocument &other, bool /*countsMinor*/) const
{
    const auto &document = static_cast<const MergeDocument &>(other);
    return m_rows.rows.isSharedWith(document.m_rows.rows) && m_parts == document.m_parts;
}

// How it looks --------------------------------------------------------------------------------------------------------

bool MergeDocument::differsFromBase(qsizetype row, MergeSource version) const
{
    const Cell base = PaneDocument::cell(row, paneOf(MergeSource::Base));
    const Cell own = PaneDocument::cell(row, paneOf(version));
    if (!base.source || !own.source)
        return base.source != own.source;
    return base.source->bytes(base.line) != own.source->bytes(own.line);
}

bool MergeDocument::isLeftOut(qsizetype row, MergeSource version) const
{
    const QList<SourceLine> &leftOut = partAt(row).leftOut;
    return std::binary_search(leftOut.begin(), leftOut.end(),
                              SourceLine{version, lineNumber(row, paneOf(version)) - 1});
}

qsizetype MergeDocument::rowOf(qsizetype part, SourceLine line) const
{
    const RowRange rows = rowsOfPart(part);
    for (qsizetype row = rows.first; row < rows.first + rows.count; ++row) {
        if (lineNumber(row, paneOf(line.source)) == line.line + 1)
            return row;
    }
    return -1;
}

RowLook MergeDocument::look(qsizetype row, PaneIndex pane) const
{
    if (pane == paneOfResult)
        return lookOfResult(row);
    if (partAt(row).kind == ChunkKind::Unchanged)
        return {};
    const auto source = MergeSource(pane.number());
    return source == MergeSource::Base ? lookOfBase(row) : lookOfVersion(row, source);
}

RowLook MergeDocument::lookOfVersion(qsizetype row, MergeSource version) const
{
    RowLook look;
    if (!differsFromBase(row, version))
        return look;
    const bool isOpen = partAt(row).isOpen();
    look.background = isOpen ? DiffColour::Modified : colourOf(version);
    look.strong = isOpen ? DiffColour::ModifiedStrong : strongColourOf(version);
    const MergeRow &lines = m_rows.rows.at(row);
    if (isLeftOut(row, version))
        look.sign = u'!';
    else if (lines.lines[std::size_t(version)] >= 1)
        look.sign = lines.lines[std::size_t(MergeSource::Base)] >= 1 ? u'~' : u'+';
    return look;
}

RowLook MergeDocument::lookOfBase(qsizetype row) const
{
    const bool onLeft = differsFromBase(row, MergeSource::Left);
    const bool onRight = differsFromBase(row, MergeSource::Right);
    const MergeRow &lines = m_rows.rows.at(row);
    RowLook look;
    if ((!onLeft && !onRight) || lines.lines[std::size_t(MergeSource::Base)] < 1)
        return look;
    look.background = partAt(row).isOpen() ? DiffColour::Modified : DiffColour::Unimportant;
    if (onLeft != onRight && !partAt(row).isOpen())
        look.strong = strongColourOf(onLeft ? MergeSource::Left : MergeSource::Right);
    const bool isGone =
        lines.lines[std::size_t(MergeSource::Left)] < 1 || lines.lines[std::size_t(MergeSource::Right)] < 1;
    look.sign = isGone ? u'-' : u'~';
    return look;
}

RowLook MergeDocument::lookOfResult(qsizetype row) const
{
    const qsizetype index = partOfRow(row);
    const MergePart &part = (*m_parts)[std::size_t(index)];
    const qint32 number = lineNumber(row, paneOfResult);
    RowLook look;
    if (number < 1) {
        if (part.isOpen()) {
            look.filler = DiffColour::Modified;
            look.sign = u'?';
            if (row == rowsOfPart(index).first)
                look.fillerText = Velmora::tr("Open conflict: take the left, the base or the right, or write here");
        }
        return look;
    }
    const LineRun run = static_cast<const EditSnapshot &>(source(paneOfResult)).runs(number - 1, 1).front();
    const std::optional<SourceLine> origin = m_merged->originOf(run, 0);
    constexpr QChar letters[] = {u'L', u'B', u'R'};
    look.isSignFaint = part.isPlain();
    if (part.isPlain()) {
        look.sign = u'B';
    } else if (!origin) {
        look.sign = u'H';
        look.background = DiffColour::Unimportant;
    } else if (part.kind == ChunkKind::Both && !part.isByPerson) {
        look.sign = u'=';
        look.background = DiffColour::Unimportant;
    } else {
        look.sign = letters[std::size_t(origin->source)];
        if (origin->source != MergeSource::Base)
            look.background = colourOf(origin->source);
    }
    return look;
}

QString MergeDocument::describeRow(qsizetype row) const
{
    const MergePart &part = partAt(row);
    return part.isPlain() ? partText(part) : Velmora::tr("%1, %2").arg(partText(part), choiceText(part));
}

QString MergeDocument::describeBlock(const ShownRows &shown, qsizetype block) const
{
    return Velmora::tr("Change %1 of %2: %3")
        .arg(QString::number(block + 1), QString::number(shown.blockCount()), describeRow(shown.block(block).first));
}

} // namespace velmora

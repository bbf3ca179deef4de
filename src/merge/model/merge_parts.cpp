#include "merge/model/merge_parts.h"

#include "merge/model/line_by_line.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace velmora {

namespace {

bool isByHandOfNothing(const MergePart &part)
{
    return part.kind == ChunkKind::Unchanged && part.choice == MergeChoice::ByHand;
}

/// The lines [from, from + count) of a part that is the same in all texts.
MergePart cut(const MergePart &part, qsizetype from, qsizetype count)
{
    MergePart piece = part;
    for (LineRange &lines : piece.lines)
        lines = {lines.first + from, count};
    piece.resultCount = count;
    return piece;
}

MergePart byHand(MergePart part, qsizetype resultCount)
{
    part.choice = MergeChoice::ByHand;
    part.isByPerson = true;
    part.resultCount = resultCount;
    return part;
}

bool isEmpty(const MergePart &part)
{
    const auto isNothing = [](const LineRange &lines) { return lines.count == 0; };
    return part.resultCount == 0 && std::all_of(part.lines.begin(), part.lines.end(), isNothing);
}

/// Appends a part; edits of neighbouring lines that were the same in all texts are one.
void add(std::vector<MergePart> &parts, const MergePart &part)
{
    if (isEmpty(part))
        return;
    if (parts.empty() || !isByHandOfNothing(parts.back()) || !isByHandOfNothing(part)) {
        parts.push_back(part);
        return;
    }
    for (std::size_t k = 0; k < mergeSourceCount; ++k)
        parts.back().lines[k].count += part.lines[k].count;
    parts.back().resultCount += part.resultCount;
}

bool isConflict(const MergePart &part)
{
    return part.kind == ChunkKind::Conflict;
}

/// A part and its lines of the result after a decision.
struct Decided {
    MergePart part;
    std::vector<LineRun> lines;
};

MergePart decided(MergePart part, MergeChoice choice)
{
    part.choice = part.kind == ChunkKind::Unchanged ? MergeChoice::Base : choice;
    part.isByPerson = part.kind != ChunkKind::Unchanged;
    part.resultCount = 0;
    part.leftOut.clear();
    for (const MergeSource source : sourcesOf(part.choice))
        part.resultCount += part.of(source).count;
    return part;
}

std::vector<LineRun> taken(const MergeTexts &texts, const MergePart &part)
{
    std::vector<LineRun> lines;
    for (const MergeSource source : sourcesOf(part.choice))
        texts.append(lines, source, part.of(source));
    return lines;
}

qsizetype lineCount(const std::vector<LineRun> &runs)
{
    return std::accumulate(runs.begin(), runs.end(), qsizetype(0),
                           [](qsizetype count, const LineRun &run) { return count + run.count; });
}

/// Nothing for a part that stays in conflict.
std::optional<Decided> decide(const MergeTexts &texts, const MergePart &part, MergeChoice choice)
{
    if (choice != MergeChoice::LineByLine || part.kind == ChunkKind::Unchanged) {
        const MergePart after = decided(part, choice);
        return Decided{after, taken(texts, after)};
    }
    LineByLine merged = mergeLineByLine(texts, part);
    if (merged.hasConflict)
        return std::nullopt;
    MergePart after = decided(part, choice);
    after.resultCount = lineCount(merged.lines);
    after.leftOut = {merged.leftOut.begin(), merged.leftOut.end()};
    std::sort(after.leftOut.begin(), after.leftOut.end());
    return Decided{after, std::move(merged.lines)};
}

/// What was the last line may have no end yet; it is put together anew with those that follow.
void takeLastLineAlong(MergePlan &plan, const MergeTexts &texts, const EditSnapshot &result)
{
    if (plan.firstLine != result.count() || plan.firstLine == 0)
        return;
    --plan.firstLine;
    ++plan.removedLines;
    texts.append(plan.lines, result.runs(plan.firstLine, 1));
}

/// The lines behind a plan's stay, so that the last one of these needs an end.
void endLastLine(MergePlan &plan, const MergeTexts &texts, const EditSnapshot &result)
{
    const qsizetype behind = plan.firstLine + plan.removedLines;
    if (behind == result.count() || plan.lines.empty())
        return;
    const std::size_t before = plan.lines.size();
    texts.append(plan.lines, result.runs(behind, 1));
    plan.lines.resize(std::max(before, plan.lines.size() - 1));
}

} // namespace

MergeParts::MergeParts(const std::vector<MergePart> &parts)
{
    splice(0, 0, parts);
}

qsizetype MergeParts::partOfLine(qsizetype resultLine) const
{
    const auto behind = std::upper_bound(m_starts.begin(), m_starts.end() - 1, resultLine);
    return qsizetype(behind - m_starts.begin()) - 1;
}

qsizetype MergeParts::conflicts() const
{
    return std::count_if(m_parts.begin(), m_parts.end(), isConflict);
}

qsizetype MergeParts::openConflicts() const
{
    return std::count_if(m_parts.begin(), m_parts.end(), [](const MergePart &part) { return part.isOpen(); });
}

qsizetype MergeParts::nextConflict(qsizetype part, bool forward, bool openOnly) const
{
    const qsizetype step = forward ? 1 : -1;
    for (qsizetype k = part < 0 && !forward ? count() - 1 : part + step; k >= 0 && k < count(); k += step) {
        if (openOnly ? at(k).isOpen() : isConflict(at(k)))
            return k;
    }
    return -1;
}

// Decisions -----------------------------------------------------------------------------------------------------------

MergePlan MergeParts::plan(const MergeTexts &texts, const EditSnapshot &result, const std::vector<qsizetype> &chosen,
                           MergeChoice choice) const
{
    MergePlan plan;
    plan.firstPart = chosen.front();
    plan.firstLine = resultStart(chosen.front());
    plan.removedLines = resultStart(chosen.back() + 1) - plan.firstLine;
    takeLastLineAlong(plan, texts, result);
    auto next = chosen.begin();
    for (qsizetype part = chosen.front(); part <= chosen.back(); ++part) {
        const bool isChosen = part == *next;
        if (isChosen)
            ++next;
        std::optional<Decided> after = isChosen ? decide(texts, at(part), choice) : std::nullopt;
        if (!after)
            after = Decided{at(part), result.runs(resultStart(part), at(part).resultCount)};
        texts.append(plan.lines, after->lines);
        plan.parts.push_back(after->part);
    }
    endLastLine(plan, texts, result);
    return plan;
}

MergePlan MergeParts::planToPutIn(const MergeTexts &texts, const EditSnapshot &result, qsizetype part, SourceLine line,
                                  qsizetype resultLine) const
{
    MergePlan plan{resultLine, 0, {}, part, {at(part)}};
    MergePart &after = plan.parts.front();
    after.leftOut.removeOne(line);
    after.isByPerson = true;
    ++after.resultCount;
    takeLastLineAlong(plan, texts, result);
    texts.append(plan.lines, line.source, {line.line, 1});
    endLastLine(plan, texts, result);
    return plan;
}

// Following the text --------------------------------------------------------------------------------------------------

PartsChange MergeParts::follow(const LineChange &change, quint64 step, qsizetype near)
{
    const std::optional<MergePlan> plan = std::exchange(m_expected, std::nullopt);
    if (plan) {
        const qsizetype end = plan->firstPart + qsizetype(plan->parts.size());
        remember({step, plan->firstPart, slice(plan->firstPart, end), plan->parts});
        return splice(plan->firstPart, end - plan->firstPart, plan->parts);
    }
    if (m_done < m_steps.size() && m_steps[m_done].number == step) {
        const Step &redone = m_steps[m_done++];
        return splice(redone.first, qsizetype(redone.before.size()), redone.after);
    }
    const quint64 before = m_done > 1 ? m_steps[m_done - 2].number : 0;
    if (m_done > 0 && before == step) {
        const Step &undone = m_steps[--m_done];
        return splice(undone.first, qsizetype(undone.after.size()), undone.before);
    }
    Step edit = edited(change, near);
    edit.number = step;
    const PartsChange done{edit.first, qsizetype(edit.before.size()), qsizetype(edit.after.size())};
    const std::vector<MergePart> after = edit.after;
    remember(std::move(edit));
    return splice(done.first, done.removed, after);
}

qsizetype MergeParts::receiver(qsizetype line, qsizetype near) const
{
    const auto isAt = [this, line](qsizetype part) {
        return part >= 0 && part < count() && resultStart(part) <= line && line <= resultStart(part + 1);
    };
    if (isAt(near))
        return near;
    // Between two lines there may be parts without any: an open conflict waits for lines more than others do.
    qsizetype found = -1;
    for (qsizetype part = std::max<qsizetype>(partOfLine(line), 0); isAt(part); --part) {
        if (at(part).isOpen())
            return part;
        found = part;
    }
    return found;
}

MergeParts::Step MergeParts::edited(const LineChange &change, qsizetype near) const
{
    Step step;
    if (count() == 0) {
        add(step.after, byHand({}, change.inserted));
        return step;
    }
    const bool replaces = change.removed > 0;
    qsizetype first = replaces ? partOfLine(change.first) : receiver(change.first, near);
    const qsizetype last = replaces ? partOfLine(change.first + change.removed - 1) : first;
    qsizetype end = last + 1;
    // Edits of neighbouring lines join.
    const bool joinsBefore = first > 0 && isByHandOfNothing(at(first - 1)) && at(first).kind == ChunkKind::Unchanged &&
                             change.first == resultStart(first);
    const bool joinsBehind = end < count() && isByHandOfNothing(at(end)) && at(last).kind == ChunkKind::Unchanged &&
                             change.first + change.removed == resultStart(end);
    if (joinsBefore)
        add(step.after, at(--first));
    for (qsizetype part = first + (joinsBefore ? 1 : 0); part <= last; ++part) {
        const MergePart &old = at(part);
        const qsizetype start = resultStart(part);
        const bool isReceiver = part == first + (joinsBefore ? 1 : 0);
        // An open conflict between lines that are removed was not looked at: it stays open.
        if (replaces && old.resultCount == 0 && !isReceiver) {
            add(step.after, old);
            continue;
        }
        const qsizetype from = std::max<qsizetype>(change.first - start, 0);
        const qsizetype to = std::min(change.first + change.removed - start, old.resultCount);
        const qsizetype came = isReceiver ? change.inserted : 0;
        if (old.isPlain()) {
            add(step.after, cut(old, 0, from));
            add(step.after, byHand(cut(old, from, to - from), came));
            add(step.after, cut(old, to, old.resultCount - to));
        } else {
            add(step.after, byHand(old, old.resultCount - (to - from) + came));
        }
    }
    if (joinsBehind)
        add(step.after, at(end++));
    step.first = first;
    step.before = slice(first, end);
    return step;
}

std::vector<MergePart> MergeParts::slice(qsizetype first, qsizetype end) const
{
    return {m_parts.begin() + first, m_parts.begin() + end};
}

/// Before the parts are changed: `step` continues the latest one when it has its number.
void MergeParts::remember(Step step)
{
    m_steps.resize(m_done);
    if (m_done == 0 || m_steps.back().number != step.number) {
        m_steps.push_back(std::move(step));
        ++m_done;
        return;
    }
    Step &latest = m_steps.back();
    const qsizetype latestEnd = latest.first + qsizetype(latest.after.size());
    const qsizetype stepEnd = step.first + qsizetype(step.before.size());
    const qsizetype first = std::min(latest.first, step.first);
    const qsizetype end = std::max(latestEnd, stepEnd);
    const auto around = [&](qsizetype from, qsizetype to, const std::vector<MergePart> &middle) {
        std::vector<MergePart> parts = slice(first, from);
        parts.insert(parts.end(), middle.begin(), middle.end());
        const std::vector<MergePart> behind = slice(to, end);
        parts.insert(parts.end(), behind.begin(), behind.end());
        return parts;
    };
    std::vector<MergePart> before = around(latest.first, latestEnd, latest.before);
    latest.after = around(step.first, stepEnd, step.after);
    latest.before = std::move(before);
    latest.first = first;
}

PartsChange MergeParts::splice(qsizetype first, qsizetype removed, const std::vector<MergePart> &with)
{
    const auto at = m_parts.erase(m_parts.begin() + first, m_parts.begin() + first + removed);
    m_parts.insert(at, with.begin(), with.end());
    m_starts.resize(m_parts.size() + 1);
    for (std::size_t part = std::size_t(first); part < m_parts.size(); ++part)
        m_starts[part + 1] = m_starts[part] + m_parts[part].resultCount;
    return {first, removed, qsizetype(with.size())};
}

} // namespace velmora

#include "session/pane/edit_buffer.h"

#include "session/pane/utf8_units.h"

#include <QList>
#include <QStringView>

#include <algorithm>

namespace velmora {

namespace {

qsizetype lineCount(const std::vector<LineRun> &runs)
{
    qsizetype count = 0;
    for (const LineRun &run : runs)
        count += run.count;
    return count;
}

void append(std::vector<LineRun> &runs, const LineRun &run)
{
    if (run.count == 0)
        return;
    if (!runs.empty() && runs.back().text == run.text && runs.back().first + runs.back().count == run.first)
        runs.back().count += run.count;
    else
        runs.push_back(run);
}

std::vector<LineRun> joined(const std::vector<LineRun> &runs)
{
    std::vector<LineRun> result;
    for (const LineRun &run : runs)
        append(result, run);
    return result;
}

std::vector<LineRun> allOf(const TextLines &text)
{
    return {{std::make_shared<const TextLines>(text), 0, text.count()}};
}

bool endsLine(LineEnd end)
{
    return end == LineEnd::Lf || end == LineEnd::CrLf;
}

QByteArray toBytes(std::string_view text)
{
    return {text.data(), qsizetype(text.size())};
}

std::vector<QByteArray> splitLines(const QString &text)
{
    QString uniform = text;
    uniform.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    std::vector<QByteArray> lines;
    for (const QStringView line : QStringView(uniform).split(u'\n'))
        lines.push_back(line.toUtf8());
    return lines;
}

} // namespace

// A state of the text -----------------------------------------------------------------------------------------------

EditSnapshot::EditSnapshot(std::vector<LineRun> runs) : m_runs(std::move(runs))
{
    m_starts.reserve(m_runs.size() + 1);
    qsizetype line = 0;
    for (const LineRun &run : m_runs) {
        m_starts.push_back(line);
        line += run.count;
    }
    m_starts.push_back(line);
}

EditSnapshot::Place EditSnapshot::find(qsizetype line) const
{
    const auto behind = std::upper_bound(m_starts.begin(), m_starts.end(), line);
    const auto index = std::size_t(behind - m_starts.begin()) - 1;
    return {m_runs[index].text.get(), m_runs[index].first + line - m_starts[index]};
}

std::string_view EditSnapshot::bytes(qsizetype line) const
{
    const Place place = find(line);
    return place.text->line(place.line);
}

LineEnd EditSnapshot::lineEnd(qsizetype line) const
{
    const Place place = find(line);
    return place.text->lineEnd(place.line);
}

std::vector<LineRun> EditSnapshot::runs(qsizetype first, qsizetype count) const
{
    std::vector<LineRun> found;
    const qsizetype end = first + count;
    auto index = std::size_t(std::upper_bound(m_starts.begin(), m_starts.end(), first) - m_starts.begin());
    for (index = index > 0 ? index - 1 : 0; index < m_runs.size() && m_starts[index] < end; ++index) {
        const LineRun &run = m_runs[index];
        const qsizetype from = std::max(first, m_starts[index]);
        const qsizetype to = std::min(end, m_starts[index] + run.count);
        append(found, {run.text, run.first + from - m_starts[index], to - from});
    }
    return found;
}

TextLines EditSnapshot::toLines() const
{
    if (m_runs.size() == 1 && m_runs.front().count == m_runs.front().text->count())
        return *m_runs.front().text;
    TextLinesBuilder builder;
    qsizetype size = 0;
    for (const LineRun &run : m_runs) {
        for (qsizetype line = run.first; line < run.first + run.count; ++line)
            size += qsizetype(run.text->line(line).size()) + 2;
    }
    builder.reserve(size, count());
    for (const LineRun &run : m_runs) {
        for (qsizetype line = run.first; line < run.first + run.count; ++line)
            builder.append(run.text->line(line), run.text->lineEnd(line));
    }
    return builder.take();
}

bool EditSnapshot::holdsSameAs(const TextLines &text) const
{
    if (count() != text.count())
        return false;
    qsizetype line = 0;
    for (const LineRun &run : m_runs) {
        for (qsizetype own = run.first; own < run.first + run.count; ++own, ++line) {
            if (run.text->line(own) != text.line(line) || run.text->lineEnd(own) != text.lineEnd(line))
                return false;
        }
    }
    return true;
}

// Editing -----------------------------------------------------------------------------------------------------------

EditBuffer::EditBuffer(const TextLines &text) : EditBuffer(allOf(text)) {}

EditBuffer::EditBuffer(const std::vector<LineRun> &runs)
    : m_snapshot(std::make_shared<const EditSnapshot>(joined(runs)))
{}

bool EditBuffer::isBehindLastEnd(EditPosition position) const
{
    return position.line >= count() && (count() == 0 || endsLine(m_snapshot->lineEnd(count() - 1)));
}

std::string_view EditBuffer::bytesAt(qsizetype line) const
{
    return line < count() ? m_snapshot->bytes(line) : std::string_view();
}

EditBuffer::Spot EditBuffer::spotAt(EditPosition position) const
{
    if (position.line < 0)
        return {};
    if (isBehindLastEnd(position))
        return {{count(), 0}, 0};
    const qsizetype line = std::min(position.line, count() - 1);
    const std::string_view bytes = m_snapshot->bytes(line);
    const auto end = qsizetype(bytes.size());
    const qsizetype byte = line == position.line ? byteOfUnit(bytes, position.unit) : end;
    if (byte < end)
        return {{line, std::max<qsizetype>(position.unit, 0)}, byte};
    const qsizetype units = utf16Length(bytes);
    return {{line, line == position.line ? std::min(position.unit, units) : units}, end};
}

LineEnd EditBuffer::usualEnd(qsizetype line) const
{
    // The last line may have none: the one before it tells, then the first one.
    for (const qsizetype near : {line, line - 1, qsizetype(0)}) {
        if (near >= 0 && near < count() && endsLine(m_snapshot->lineEnd(near)))
            return m_snapshot->lineEnd(near);
    }
    return LineEnd::Lf;
}

LineChange EditBuffer::replace(EditPosition start, EditPosition end, const QString &text, Merge merge)
{
    const Spot from = spotAt(std::min(start, end));
    const Spot until = start == end ? from : spotAt(std::max(start, end));
    const EditPosition first = from.at;
    const EditPosition last = until.at;
    const std::string_view firstLine = bytesAt(first.line);
    const std::string_view lastLine = bytesAt(last.line);
    std::vector<QByteArray> parts = splitLines(text);
    EditPosition after{first.line + qsizetype(parts.size()) - 1,
                       utf16Length({parts.back().constData(), std::size_t(parts.back().size())})};
    if (parts.size() == 1)
        after.unit += first.unit;
    // A line may be of many megabytes: it is copied once, into an array that has room for its end, too.
    constexpr qsizetype longestEnd = 2;
    const qsizetype tail = qsizetype(lastLine.size()) - until.byte;
    QByteArray whole;
    whole.reserve(from.byte + parts.front().size() + (parts.size() == 1 ? tail + longestEnd : 0));
    whole.append(firstLine.data(), from.byte).append(parts.front());
    parts.front() = std::move(whole);
    parts.back().append(lastLine.data() + until.byte, tail);

    const LineEnd usual = usualEnd(first.line);
    std::vector<NewLine> lines;
    lines.reserve(parts.size());
    for (QByteArray &part : parts)
        lines.push_back({std::move(part), usual});
    const bool reachesEnd = last.line == count();
    lines.back().end = reachesEnd ? LineEnd::None : m_snapshot->lineEnd(last.line);
    if (reachesEnd && lines.back().utf8.isEmpty())
        lines.pop_back();
    const Merge merged = parts.size() == 1 && first.line == last.line ? merge : Merge::Never;
    const qsizetype behind = reachesEnd ? count() : last.line + 1;
    return change(first.line, behind - first.line, std::move(lines), end, after, merged);
}

QString EditBuffer::textBetween(EditPosition start, EditPosition end) const
{
    QString text;
    for (qsizetype line = start.line; line <= end.line; ++line) {
        const QString whole = textOfUtf8(bytesAt(line));
        const qsizetype first = line == start.line ? start.unit : 0;
        const qsizetype last = line == end.line ? end.unit : whole.size();
        text += QStringView(whole).mid(first, last - first);
        if (line < end.line)
            text += u'\n';
    }
    return text;
}

EditBuffer::Moved EditBuffer::move(EditPosition start, EditPosition end, EditPosition to)
{
    const EditPosition from = clamped(start);
    const EditPosition until = clamped(end);
    EditPosition target = clamped(to);
    const QString text = textBetween(from, until);
    const std::shared_ptr<const EditSnapshot> before = m_snapshot;
    const qsizetype first = std::min(from.line, target.line);
    const qsizetype removed = std::min(std::max(until.line, target.line) + 1, count()) - first;

    replace(from, until, QString());
    if (target > until) {
        // What stood behind the text has moved up to its start.
        target.unit += target.line == until.line ? from.unit - until.unit : 0;
        target.line -= until.line - from.line;
    }
    const LineChange inserted = replace(target, target, text);

    const qsizetype insertedLines = removed + count() - before->count();
    m_steps.pop_back();
    m_steps.back() = {
        first,        before->runs(first, removed), m_snapshot->runs(first, insertedLines), end, inserted.caret,
        Merge::Never, m_steps.back().number};
    --m_done;
    return {{first, removed, insertedLines, inserted.caret}, target};
}

LineChange EditBuffer::insertLines(qsizetype line, const QString &text)
{
    const qsizetype at = std::clamp<qsizetype>(line, 0, count());
    std::vector<QByteArray> parts = splitLines(text);
    if (parts.size() > 1 && parts.back().isEmpty())
        parts.pop_back();
    const LineEnd usual = usualEnd(at);
    std::vector<NewLine> lines;
    lines.reserve(parts.size());
    for (QByteArray &part : parts)
        lines.push_back({std::move(part), usual});
    const NewLine &last = lines.back();
    const EditPosition after{at + qsizetype(lines.size()) - 1,
                             utf16Length({last.utf8.constData(), std::size_t(last.utf8.size())})};
    if (at == count() && at > 0 && !endsLine(m_snapshot->lineEnd(at - 1))) {
        // What was the last line is no longer: it hands its missing end on.
        lines.back().end = m_snapshot->lineEnd(at - 1);
        lines.insert(lines.begin(), {toBytes(m_snapshot->bytes(at - 1)), usual});
        return change(at - 1, 1, std::move(lines), {at, 0}, after, Merge::Never);
    }
    return change(at, 0, std::move(lines), {at, 0}, after, Merge::Never);
}

LineChange EditBuffer::copyLines(qsizetype first, qsizetype removed, const EditSnapshot &source, qsizetype from,
                                 qsizetype fromCount)
{
    const LineEnd usual = usualEnd(first);
    std::vector<NewLine> lines;
    for (qsizetype k = 0; k < fromCount; ++k) {
        const std::string_view text = source.bytes(from + k);
        const bool sameText = k < removed && m_snapshot->bytes(first + k) == text;
        lines.push_back({toBytes(text), sameText || count() == 0 ? source.lineEnd(from + k) : usual});
    }
    const bool reachesEnd = first + removed == count();
    if (reachesEnd && !lines.empty()) {
        const bool isSourceEnd = from + fromCount == source.count();
        const LineEnd end = isSourceEnd   ? source.lineEnd(source.count() - 1)
                            : removed > 0 ? m_snapshot->lineEnd(count() - 1)
                                          : usual;
        if (!endsLine(end))
            lines.back().end = end;
        else if (!endsLine(lines.back().end))
            lines.back().end = usual;
    }
    for (std::size_t k = 0; k < lines.size(); ++k) {
        if (!endsLine(lines[k].end) && !(reachesEnd && k + 1 == lines.size()))
            lines[k].end = usual;
    }
    const EditPosition caret{first, 0};
    if (removed == 0 && reachesEnd && first > 0 && !endsLine(m_snapshot->lineEnd(first - 1)) && !lines.empty()) {
        lines.insert(lines.begin(), {toBytes(m_snapshot->bytes(first - 1)), usual});
        return change(first - 1, 1, std::move(lines), caret, caret, Merge::Never);
    }
    return change(first, removed, std::move(lines), caret, caret, Merge::Never);
}

LineChange EditBuffer::change(qsizetype first, qsizetype removed, std::vector<NewLine> lines, EditPosition before,
                              EditPosition after, Merge merge)
{
    TextLinesBuilder builder;
    if (lines.size() == 1) {
        builder.appendFirst(std::move(lines.front().utf8), lines.front().end);
    } else {
        qsizetype size = 0;
        for (const NewLine &line : lines)
            size += line.utf8.size() + 2;
        builder.reserve(size, qsizetype(lines.size()));
        for (const NewLine &line : lines)
            builder.append({line.utf8.constData(), std::size_t(line.utf8.size())}, line.end);
    }
    return put(first, removed, allOf(builder.take()), before, after, merge);
}

LineChange EditBuffer::replaceLines(qsizetype first, qsizetype removed, const TextLines &with, EditPosition caret)
{
    return put(first, removed, allOf(with), caret, caret, Merge::Never);
}

LineChange EditBuffer::replaceLines(qsizetype first, qsizetype removed, const std::vector<LineRun> &with,
                                    EditPosition caret)
{
    return put(first, removed, with, caret, caret, Merge::Never);
}

LineChange EditBuffer::put(qsizetype first, qsizetype removed, const std::vector<LineRun> &with, EditPosition before,
                           EditPosition after, Merge merge)
{
    Step step;
    step.first = first;
    step.removed = m_snapshot->runs(first, removed);
    step.inserted = joined(with);
    step.before = before;
    step.after = after;
    step.merge = merge;
    splice(first, removed, step.inserted);
    const LineChange change{first, removed, lineCount(step.inserted), after};
    remember(std::move(step));
    return change;
}

void EditBuffer::splice(qsizetype first, qsizetype removed, const std::vector<LineRun> &inserted)
{
    std::vector<LineRun> runs = m_snapshot->runs(0, first);
    for (const LineRun &run : inserted)
        append(runs, run);
    for (const LineRun &run : m_snapshot->runs(first + removed, count() - first - removed))
        append(runs, run);
    m_snapshot = std::make_shared<const EditSnapshot>(std::move(runs));
}

void EditBuffer::remember(Step step)
{
    for (std::size_t *kept : {&m_clean, &m_saving}) {
        if (*kept > m_done)
            *kept = nowhere;
    }
    m_steps.resize(m_done);
    const bool merges = step.merge != Merge::Never && m_done > 0 && m_clean != m_done && m_saving != m_done &&
                        m_steps.back().merge == step.merge && m_steps.back().after == step.before &&
                        m_steps.back().first == step.first;
    if (merges) {
        m_steps.back().inserted = std::move(step.inserted);
        m_steps.back().after = step.after;
        return;
    }
    step.number = ++m_lastNumber;
    m_steps.push_back(std::move(step));
    ++m_done;
}

LineChange EditBuffer::undo()
{
    const Step &step = m_steps[--m_done];
    const qsizetype inserted = lineCount(step.inserted);
    splice(step.first, inserted, step.removed);
    return {step.first, inserted, lineCount(step.removed), step.before};
}

LineChange EditBuffer::redo()
{
    const Step &step = m_steps[m_done++];
    const qsizetype removed = lineCount(step.removed);
    splice(step.first, removed, step.inserted);
    return {step.first, removed, lineCount(step.inserted), step.after};
}

} // namespace velmora

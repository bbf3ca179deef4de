#include "text/engine/line_marks.h"

#include <algorithm>
#include <vector>

namespace velmora {

namespace {

// Longer gaps between marks are read as text that stayed.
constexpr qint32 widestGap = 2;

/// What of a line counts, and where each unit of it stands in the line.
struct CountingText {
    QString text;
    std::vector<qint32> places;
};

CountingText countingText(QStringView line, const KeyRules &rules)
{
    qsizetype begin = 0;
    qsizetype end = line.size();
    while (rules.dropLeading && begin < end && line[begin].isSpace())
        ++begin;
    while (rules.dropTrailing && begin < end && line[end - 1].isSpace())
        --end;
    CountingText counting;
    for (qsizetype at = begin; at < end; ++at) {
        const bool isSpace = line[at].isSpace();
        if (rules.collapse && isSpace && at > begin && line[at - 1].isSpace())
            continue;
        const QChar letter = rules.foldCase ? line[at].toLower() : line[at];
        counting.text.append(rules.collapse && isSpace ? QChar(u' ') : letter);
        counting.places.push_back(qint32(at));
    }
    return counting;
}

bool mayBeIgnored(QChar unit, const KeyRules &rules)
{
    if (unit.isSpace())
        return rules.dropLeading || rules.dropTrailing || rules.collapse;
    return rules.foldCase && unit.isLetter();
}

/// A class for each unit of the line: whether it is marked, and whether it counts.
enum class Unit : quint8 { Plain, Minor, Counts };

/// Matching the lines as they are and matching what counts of them may pair different ones of several equal characters:
/// what counts is told by the second, and the first adds only what may be ignored.
std::vector<Unit> classify(QStringView own, const QList<CharRange> &changes, QStringView other, const KeyRules &rules,
                           const CancelFlag &cancel)
{
    std::vector<Unit> units(size_t(own.size()), Unit::Plain);
    for (const CharRange &range : changes) {
        for (qint32 at = range.start; at < range.start + range.length; ++at)
            units[size_t(at)] = mayBeIgnored(own[at], rules) ? Unit::Minor : Unit::Plain;
    }
    const CountingText counting = countingText(own, rules);
    for (const CharRange &range : intraLineChanges(countingText(other, rules).text, counting.text, cancel)) {
        for (qint32 at = range.start; at < range.start + range.length; ++at)
            units[size_t(counting.places[size_t(at)])] = Unit::Counts;
    }
    return units;
}

QList<LineMark> runsOf(const std::vector<Unit> &units)
{
    QList<LineMark> marks;
    for (size_t at = 0; at < units.size(); ++at) {
        if (units[at] == Unit::Plain)
            continue;
        if (at > 0 && units[at - 1] == units[at])
            ++marks.last().length;
        else
            marks.append({qint32(at), 1, units[at] == Unit::Minor});
    }
    return marks;
}

bool isPartOfWord(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.isLetterOrNumber() || unit == u'_'; });
}

QList<LineMark> joinedToWords(const QList<LineMark> &marks, QStringView line)
{
    QList<LineMark> joined;
    for (const LineMark &mark : marks) {
        const bool joins = !joined.isEmpty() && joined.last().minor == mark.minor &&
                           mark.start - joined.last().end() <= widestGap &&
                           isPartOfWord(line.mid(joined.last().end() - 1, mark.start - joined.last().end() + 2));
        if (joins)
            joined.last().length = mark.end() - joined.last().start;
        else
            joined.append(mark);
    }
    return joined;
}

} // namespace

QList<LineMark> lineMarks(QStringView own, const QList<CharRange> &changes, QStringView other, const KeyRules &rules,
                          const CancelFlag &cancel)
{
    const auto mayBeMinor = [&](const CharRange &range) {
        const QStringView changed = own.mid(range.start, range.length);
        return std::any_of(changed.begin(), changed.end(), [&](QChar unit) { return mayBeIgnored(unit, rules); });
    };
    QList<LineMark> marks;
    if (std::any_of(changes.begin(), changes.end(), mayBeMinor)) {
        marks = runsOf(classify(own, changes, other, rules, cancel));
    } else {
        for (const CharRange &range : changes)
            marks.append({range.start, range.length, false});
    }
    return cancel.isCancelled() ? QList<LineMark>() : joinedToWords(marks, own);
}

} // namespace velmora

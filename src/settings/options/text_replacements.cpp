#include "settings/options/text_replacements.h"

#include <QByteArrayMatcher>

#include <algorithm>
#include <vector>

namespace velmora {

namespace {

/// Bytes that may be written between two looks at the cancel flag, lines aside.
constexpr qsizetype cancelInterval = 1024 * 1024;
constexpr qsizetype stepsPerLine = 256;

struct Utf8Rule {
    QByteArrayMatcher find;
    QByteArray with;
};

/// Where replacing ends: thirty rules that each double a text would otherwise take all memory there is.
qsizetype largestResult(qsizetype size)
{
    constexpr qsizetype always = 64 * 1024 * 1024;
    constexpr qsizetype timesAsLarge = 8;
    return std::min(std::max(always, size * timesAsLarge), TextLines::maximumSize);
}

/// Applies `rule` to `line`, with `buffer` for the result. False when that would have more than `room` bytes.
bool applyRule(const Utf8Rule &rule, QByteArray &line, QByteArray &buffer, qsizetype room)
{
    qsizetype at = rule.find.indexIn(line);
    if (at < 0)
        return true;
    buffer.resize(0);
    qsizetype begin = 0;
    for (; at >= 0; at = rule.find.indexIn(line, begin)) {
        if (buffer.size() + (at - begin) + rule.with.size() > room)
            return false;
        buffer.append(line.constData() + begin, at - begin).append(rule.with);
        begin = at + rule.find.pattern().size();
    }
    buffer.append(line.constData() + begin, line.size() - begin);
    line.swap(buffer);
    return line.size() <= room;
}

/// The rules that can have an effect.
std::vector<Utf8Rule> utf8Rules(const QStringList &find, const QStringList &with)
{
    std::vector<Utf8Rule> rules;
    for (qsizetype index = 0; index < find.size(); ++index) {
        if (!find[index].isEmpty() && find[index].isValidUtf16())
            rules.push_back({QByteArrayMatcher(find[index].toUtf8()), with.value(index).toUtf8()});
    }
    return rules;
}

/// What ends a line that a rule may have left with a carriage return at its own end. That one belongs to the line, so
/// another has to stand behind it.
LineEnd endBehind(const QByteArray &line, LineEnd end)
{
    if (!line.endsWith('\r'))
        return end;
    return end == LineEnd::Lf || end == LineEnd::CrLf ? LineEnd::CrLf : LineEnd::Cr;
}

} // namespace

std::optional<TextLines> applyReplacementRules(const TextLines &lines, const QStringList &find, const QStringList &with,
                                               const CancelFlag &cancel)
{
    // In valid UTF-8 a character is found as bytes exactly where it is found as a character.
    const std::vector<Utf8Rule> rules = utf8Rules(find, with);
    if (rules.empty())
        return lines;

    TextLinesBuilder builder;
    builder.reserve(qsizetype(lines.bytes().size()), lines.count());
    QByteArray changed;
    QByteArray buffer;
    qsizetype room = largestResult(qsizetype(lines.bytes().size()));
    qsizetype untilLook = 0;
    const auto isCancelled = [&](qsizetype steps) {
        untilLook -= steps;
        if (untilLook >= 0)
            return false;
        untilLook = cancelInterval;
        return cancel.isCancelled();
    };
    for (qsizetype index = 0; index < lines.count(); ++index) {
        const std::string_view line = lines.line(index);
        changed.resize(0);
        changed.append(line.data(), qsizetype(line.size()));
        for (const Utf8Rule &rule : rules) {
            if (isCancelled(changed.size() + stepsPerLine))
                return builder.take();
            if (!applyRule(rule, changed, buffer, room))
                return std::nullopt;
        }
        room -= changed.size() + 2; // with the longest of ends
        if (room < 0)
            return std::nullopt;
        builder.append({changed.constData(), size_t(changed.size())}, endBehind(changed, lines.lineEnd(index)));
    }
    return builder.take();
}

} // namespace velmora

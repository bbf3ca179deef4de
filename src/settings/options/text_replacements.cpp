#include "settings/options/text_replacements.h"

#include <stdexcept>
#include <vector>

namespace velmora {

namespace {

constexpr qsizetype cancelInterval = 4096;

struct Utf8Rule {
    QByteArray find;
    QByteArray with;
};

/// The rules that can have an effect.
std::vector<Utf8Rule> utf8Rules(const QStringList &find, const QStringList &with)
{
    std::vector<Utf8Rule> rules;
    for (qsizetype index = 0; index < find.size(); ++index) {
        if (!find[index].isEmpty() && find[index].isValidUtf16())
            rules.push_back({find[index].toUtf8(), with.value(index).toUtf8()});
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

TextLines applyReplacementRules(const TextLines &lines, const QStringList &find, const QStringList &with,
                                const CancelFlag &cancel)
{
    // In valid UTF-8 a character is found as bytes exactly where it is found as a character.
    const std::vector<Utf8Rule> rules = utf8Rules(find, with);
    if (rules.empty())
        return lines;

    TextLinesBuilder builder;
    builder.reserve(qsizetype(lines.bytes().size()), lines.count());
    QByteArray changed;
    qsizetype size = 0;
    for (qsizetype index = 0; index < lines.count(); ++index) {
        if (index % cancelInterval == 0 && cancel.isCancelled())
            break;
        const std::string_view line = lines.line(index);
        changed.resize(0);
        changed.append(line.data(), qsizetype(line.size()));
        for (const Utf8Rule &rule : rules)
            changed.replace(rule.find, rule.with);
        size += changed.size() + 2; // with the longest of ends
        if (size > TextLines::maximumSize)
            throw std::length_error("replaced text");
        builder.append({changed.constData(), size_t(changed.size())}, endBehind(changed, lines.lineEnd(index)));
    }
    return builder.take();
}

} // namespace velmora

#include "text/replacement_rules.h"

#include <QByteArray>

#include <stdexcept>

namespace velmora {

namespace {

struct Rule {
    QByteArray find;
    QByteArray with;
};

std::vector<Rule> effectiveRules(const QStringList &find, const QStringList &with)
{
    std::vector<Rule> rules;
    for (qsizetype k = 0; k < find.size(); ++k) {
        if (find.at(k).isEmpty())
            continue;
        QString replacement = k < with.size() ? with.at(k) : QString();
        replacement.replace(u'\n', QChar(QChar::LineSeparator));
        rules.push_back({find.at(k).toUtf8(), replacement.toUtf8()});
    }
    return rules;
}

} // namespace

TextLines applyReplacements(const TextLines &lines, const QStringList &find, const QStringList &with,
                            const CancelFlag &cancel)
{
    const std::vector<Rule> rules = effectiveRules(find, with);
    if (rules.empty())
        return lines;
    QByteArray result;
    result.reserve(qsizetype(lines.bytes().size()));
    QByteArray line;
    for (qsizetype index = 0; index < lines.count() && !cancel.isCancelled(); ++index) {
        const std::string_view before = lines.line(index);
        line.replace(0, line.size(), QByteArrayView(before.data(), qsizetype(before.size())));
        for (const Rule &rule : rules)
            line.replace(rule.find, rule.with);
        // Ended by both characters, a line keeps a carriage return that a rule has put at its end.
        result.append(line).append("\r\n");
        if (result.size() > TextLines::maximumSize)
            throw std::length_error("replaced text");
    }
    return TextLines::split(result, 0, cancel);
}

} // namespace velmora

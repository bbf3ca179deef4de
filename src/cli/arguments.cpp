#include "cli/arguments.h"

#include <QFileInfo>

#include <algorithm>
#include <string_view>

namespace velmora::cli {

namespace {

/// The lines beside an option: its help, then its choices in two columns.
QByteArrayList linesFor(const OptionSpec &spec)
{
    QByteArrayList lines = *spec.help ? QByteArray(spec.help).split('\n') : QByteArrayList();
    qsizetype width = 0;
    for (const Choice &choice : spec.choices)
        width = std::max(width, qsizetype(qstrlen(choice.name)));
    for (const Choice &choice : spec.choices)
        lines.append(QByteArray(choice.name).leftJustified(width + 2) + choice.help);
    return lines;
}

} // namespace

Arguments Arguments::parse(const QStringList &arguments, std::span<const OptionSpec> specs)
{
    Arguments parsed;
    for (qsizetype index = 0; index < arguments.size() && parsed.m_error.isEmpty(); ++index) {
        const QString &argument = arguments[index];
        if (argument == QLatin1String("--")) {
            parsed.m_paths += arguments.mid(index + 1);
            break;
        }
        if (argument.startsWith(u'-') && argument.size() > 1)
            parsed.takeOption(argument, arguments, index, specs);
        else
            parsed.m_paths.append(argument);
    }
    return parsed;
}

void Arguments::takeOption(const QString &argument, const QStringList &arguments, qsizetype &index,
                           std::span<const OptionSpec> specs)
{
    const qsizetype equals = argument.indexOf(u'=');
    const QString name = equals < 0 ? argument : argument.first(equals);
    const auto isNamed = [&name](const OptionSpec &spec) {
        return name.startsWith(QLatin1String("--")) && name.mid(2) == QLatin1String(spec.name);
    };
    const auto spec = std::find_if(specs.begin(), specs.end(), isNamed);
    if (spec == specs.end()) {
        m_error = QStringLiteral("unknown option \"%1\"").arg(name);
    } else if (!spec->value) {
        if (equals >= 0)
            m_error = QStringLiteral("option \"%1\" takes no value").arg(name);
        m_given.push_back({&*spec, {}});
    } else if (equals >= 0) {
        takeValue(*spec, argument.mid(equals + 1));
    } else if (index + 1 < arguments.size()) {
        takeValue(*spec, arguments[++index]);
    } else {
        m_error = QStringLiteral("option \"%1\" needs a value").arg(name);
    }
}

void Arguments::takeValue(const OptionSpec &spec, const QString &value)
{
    const bool isKnown = spec.choices.empty() || spec.takesOthers ||
                         std::any_of(spec.choices.begin(), spec.choices.end(),
                                     [&value](const Choice &choice) { return value == QLatin1String(choice.name); });
    if (!isKnown)
        m_error = QStringLiteral("unknown %1 \"%2\"").arg(QLatin1String(spec.name), value);
    m_given.push_back({&spec, value});
}

const Arguments::Given *Arguments::find(const char *name) const
{
    const auto isNamed = [name](const Given &given) { return std::string_view(given.spec->name) == name; };
    const auto given = std::find_if(m_given.rbegin(), m_given.rend(), isNamed);
    return given == m_given.rend() ? nullptr : &*given;
}

bool Arguments::has(const char *name) const
{
    return find(name) != nullptr;
}

std::optional<QString> Arguments::value(const char *name) const
{
    const Given *given = find(name);
    return given ? std::optional(given->value) : std::nullopt;
}

QStringList Arguments::values(const char *name) const
{
    QStringList values;
    for (const Given &given : m_given) {
        if (std::string_view(given.spec->name) == name)
            values.append(given.value);
    }
    return values;
}

QString folderFault(const QString &path)
{
    const QFileInfo entry(path);
    if (entry.isDir())
        return {};
    return (entry.exists() ? QStringLiteral("%1: is not a folder") : QStringLiteral("%1: there is no such folder"))
        .arg(path);
}

QByteArray optionHead(const OptionSpec &spec)
{
    const QByteArray name = QByteArray("--") + spec.name;
    return spec.value ? name + ' ' + spec.value : name;
}

QByteArray describeOptions(std::span<const OptionSpec> specs)
{
    qsizetype width = 0;
    for (const OptionSpec &spec : specs)
        width = std::max(width, optionHead(spec).size() + 4);

    QByteArray text;
    for (const OptionSpec &spec : specs) {
        QByteArray column = "  " + optionHead(spec);
        for (const QByteArray &line : linesFor(spec)) {
            text += column.leftJustified(width) + line + '\n';
            column.clear();
        }
    }
    return text;
}

} // namespace velmora::cli

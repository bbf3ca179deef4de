#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <span>
#include <vector>

namespace velmora::cli {

/// One option that a command takes.
struct OptionSpec {
    const char *name;  ///< without its dashes
    const char *value; ///< what its value is called in the help; null for an option without a value
    const char *help;  ///< lines, separated by line feeds
};

/// The arguments of one command, sorted.
class Arguments {
public:
    /// Sorts `arguments` by `specs`. Values follow as "--name value" or "--name=value"; "--" ends the options, and "-"
    /// is a path. Where an option is given twice the last one counts.
    [[nodiscard]] static Arguments parse(const QStringList &arguments, std::span<const OptionSpec> specs);

    /// What is wrong with them, empty when nothing is.
    [[nodiscard]] const QString &error() const noexcept { return m_error; }
    [[nodiscard]] const QStringList &paths() const noexcept { return m_paths; }
    [[nodiscard]] bool has(const char *name) const;
    /// The value of an option, nothing when it was not given.
    [[nodiscard]] std::optional<QString> value(const char *name) const;
    /// The values of an option that may be given several times, in their order.
    [[nodiscard]] QStringList values(const char *name) const;

private:
    struct Given {
        const OptionSpec *spec;
        QString value;
    };

    [[nodiscard]] const Given *find(const char *name) const;
    void takeOption(const QString &argument, const QStringList &arguments, qsizetype &index,
                    std::span<const OptionSpec> specs);

    std::vector<Given> m_given;
    QStringList m_paths;
    QString m_error;
};

/// The options as two columns of a help text.
[[nodiscard]] QByteArray describeOptions(std::span<const OptionSpec> specs);

} // namespace velmora::cli

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <span>
#include <vector>

namespace velmora::cli {

/// One of the values that an option can have.
struct Choice {
    const char *name;
    const char *help; ///< one line
};

/// One option that a command takes.
struct OptionSpec {
    const char *name;                     ///< without its dashes
    const char *value;                    ///< what its value is called; null for none, "FILE" for that of a file
    const char *help;                     ///< lines, separated by line feeds; may be empty beside choices
    std::span<const Choice> choices = {}; ///< the values that there are; empty where anything goes
    bool takesOthers = false;             ///< the choices are not all
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
    void takeValue(const OptionSpec &spec, const QString &value);

    std::vector<Given> m_given;
    QStringList m_paths;
    QString m_error;
};

/// What is wrong with an argument that is to be a folder of the disk; empty when nothing is.
[[nodiscard]] QString folderFault(const QString &path);

/// How an option is written: "--name VALUE".
[[nodiscard]] QByteArray optionHead(const OptionSpec &spec);

/// The options as two columns of a help text.
[[nodiscard]] QByteArray describeOptions(std::span<const OptionSpec> specs);

} // namespace velmora::cli

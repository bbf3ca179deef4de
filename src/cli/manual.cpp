#include "cli/manual.h"

#include "cli/command.h"
#include "core/manual_page.h"

namespace velmora::cli {

namespace {

/// What stands for values in synopses and heads of options: the words in capitals.
void addPlaceholders(const QByteArray &text, QByteArrayList &placeholders)
{
    QByteArray word;
    for (const char letter : text + ' ') {
        if (letter >= 'A' && letter <= 'Z') {
            word += letter;
        } else if (!word.isEmpty()) {
            if (word.size() > 1 && !placeholders.contains(word))
                placeholders.append(word);
            word.clear();
        }
    }
}

QByteArrayList placeholders()
{
    QByteArrayList found{"COMMAND"};
    for (const Command &command : commands()) {
        addPlaceholders(command.synopsis, found);
        for (const OptionSpec &option : allOptions(command))
            addPlaceholders(optionHead(option).mid(2), found);
    }
    return found;
}

void describe(ManualPage &page, const OptionSpec &option)
{
    page.term(optionHead(option), *option.help ? option.help : "One of:");
    if (option.choices.empty())
        return;
    page.indent();
    for (const Choice &choice : option.choices)
        page.term(choice.name, choice.help);
    page.outdent();
}

void describe(ManualPage &page, const Command &command)
{
    page.section("COMMAND " + QByteArray(command.name).toUpper());
    page.paragraph(QByteArray(programName) + ' ' + command.name + ' ' + command.synopsis);
    page.paragraph(command.details);
    for (const OptionSpec &option : allOptions(command))
        describe(page, option);
}

/// Words of one language in a list of the other's.
QByteArray shellWords(const QByteArrayList &words)
{
    return '\'' + words.join(' ') + '\'';
}

/// One branch of the script: `pattern` and what is offered there.
QByteArray branch(const QByteArray &pattern, const QByteArrayList &words)
{
    return "    " + pattern + ") words=" + shellWords(words) + " ;;\n";
}

} // namespace

QByteArray manualPage()
{
    ManualPage page(programName, "compare texts, folders and snapshots from the command line", VELMORA_VERSION,
                    placeholders());
    page.section("SYNOPSIS");
    for (const Command &command : commands())
        page.line(QByteArray(programName) + ' ' + command.name + ' ' + command.synopsis);
    page.line(QByteArray(programName) + " [COMMAND] --help");
    page.line(QByteArray(programName) + " --version");
    page.section("DESCRIPTION");
    page.paragraph("Compares as the program velmora does, without a window. The first argument names the command; a "
                   "value follows its option as the next argument or behind an equals sign; -- ends the options.");
    for (const Command &command : commands())
        describe(page, command);
    page.section("EXIT STATUS");
    QByteArray number = "0";
    for (const char *status : exitStatuses()) {
        page.term(number, status);
        ++number[0];
    }
    for (const Command &command : commands()) {
        if (command.exitStatus)
            page.term(QByteArray("of ") + command.name, command.exitStatus);
    }
    page.section("EXAMPLES");
    for (const Command &command : commands()) {
        for (const Example &example : command.examples)
            page.example(example.text, example.line);
    }
    page.seeAlso({"velmora", "diff", "patch"});
    return page.text();
}

QByteArray bashCompletion()
{
    QByteArrayList names;
    QByteArray values;
    QByteArray options;
    for (const Command &command : commands()) {
        names.append(command.name);
        QByteArrayList own;
        for (const OptionSpec &option : allOptions(command)) {
            const QByteArray name = QByteArray("--") + option.name;
            own.append(name);
            if (!option.value)
                continue;
            QByteArrayList words;
            for (const Choice &choice : option.choices)
                words.append(choice.name);
            values += branch(shellWords({command.name, name}), words);
        }
        options += branch(QByteArray("'") + command.name + " '-*", own);
    }
    names += {"--help", "--version"};
    // Bash takes an equals sign for a word of its own. Where nothing is offered it completes the names of files.
    return QByteArray("_velmora_cli()\n{\n"
                      "    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words=\n"
                      "    [[ $current == = ]] && current= || { [[ $before == = ]] && "
                      "before=${COMP_WORDS[COMP_CWORD - 2]}; }\n"
                      "    COMPREPLY=()\n"
                      "    if ((COMP_CWORD == 1)); then\n"
                      "        words=") +
           shellWords(names) + "\n    else\n    case \"${COMP_WORDS[1]} $before\" in\n" + values +
           "    *) case \"${COMP_WORDS[1]} $current\" in\n" + options + "    esac ;;\n    esac\n    fi\n" +
           "    [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n}\n" +
           "complete -o default -F _velmora_cli velmora-cli\n";
}

} // namespace velmora::cli

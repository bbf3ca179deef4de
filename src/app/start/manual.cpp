#include "app/start/manual.h"

#include "app/help/about.h"
#include "app/start/command_line.h"
#include "core/manual_page.h"

namespace velmora {

namespace {

void describeSwitches(ManualPage &page)
{
    page.section("OPTIONS");
    for (const CommandSwitch &known : commandSwitches()) {
        const QByteArray value = known.value ? QByteArray(" ") + known.value : QByteArray();
        page.term(QByteArray("--") + known.name + value, known.description);
    }
    page.term("--help", "Show a summary of the options.");
    page.term("--version", "Show the version.");
    page.paragraph("A value may also follow its option with an equals sign. Of several modes the last one counts; a "
                   "mode that is not built yet opens a tab that says so.");
    page.paragraph("Help and version are shown at once, without a display and whether or not a window is open. "
                   "Options that nobody knows and surplus paths are told on standard error and passed over.");
}

} // namespace

QByteArray manualPage()
{
    ManualPage page("velmora", "compare files and folders side by side", applicationVersion().toLatin1(),
                    {"OPTION", "FILE", "left", "right", "base", "path", "file", "code", "mode"});
    page.section("SYNOPSIS");
    page.line("velmora [OPTION]... [left [right]]");
    page.line("velmora [OPTION]... --merge left right base");
    page.line("velmora FILE.kvsession...");
    page.section("DESCRIPTION");
    page.paragraph("Opens a window with a tab for each comparison. With two paths it compares them at once: two "
                   "folders as folders, anything else as texts, unless an option says how. A session file opens the "
                   "comparison that was saved in it; when that leads to another machine, a question comes first.");
    page.paragraph("One window serves a user: a further start hands its arguments to the window that is open already "
                   "and brings it to the front. It ends when that window has read the files, so that whoever made "
                   "them may remove them then. A start on another display, or with other settings ($HOME, "
                   "$XDG_CONFIG_HOME), opens a window of its own.");
    page.paragraph(
        "With --wait it ends when the tabs are closed that it has opened, whichever window they are in, with "
        "status 0. After a merge the status is 0 only when the result was saved and nothing in it was left "
        "open, 1 otherwise, and so it is when the window went down. When no window is open, one is opened "
        "that closes with the last of these tabs.");
    describeSwitches(page);
    page.section("FILES");
    page.term("~/.config/Tarnwick/Tarnwick.conf", "Language, theme and the history of sessions.");
    page.term("~/.config/Ostrafen/Ostrafen.conf", "Settings of the sessions.");
    page.section("EXAMPLES");
    page.example("Compare two folders in a dark window:", "velmora --folder --theme dark old new");
    page.example("See the changes of a Git repository:", "git difftool --no-prompt --extcmd \"velmora --wait\"");
    page.example("Let git use it for difftool and mergetool:", "velmora-cli git-setup --global");
    page.seeAlso({"velmora-cli", "git-difftool"});
    return page.text();
}

} // namespace velmora

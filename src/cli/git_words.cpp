#include "cli/git_words.h"

#include "core/visible_name.h"

#include <array>

namespace velmora::cli {

QString gitFaultText(const GitFault &fault)
{
    static constexpr std::array texts{
        "",
        "git is not on the search path, or cannot be started",
        "no Git repository holds this path",
        "the repository belongs to somebody else",
        "the repository does not know this",
        "this state of the repository has no such folder",
        "the repository has no work tree",
        "the two have no commit in common",
        "cannot be read",
        "too many files, or too much output",
        "git did not come to an end",
        "git failed",
        "stopped",
    };
    QString text = QLatin1String(texts[std::size_t(fault.kind)]);
    if (!fault.about.isEmpty())
        text.prepend(visibleName(fault.about) + QLatin1String(": "));
    return fault.detail.isEmpty() ? text : text + QLatin1String(": ") + visibleName(fault.detail.simplified());
}

} // namespace velmora::cli

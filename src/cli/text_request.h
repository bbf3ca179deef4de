#pragma once

#include "cli/text_input.h"
#include "settings/options/text_session_options.h"

#include <QString>

#include <optional>

namespace velmora::cli {

class Arguments;

/// What the arguments of the text command ask for, apart from the output.
struct TextRequest {
    TextInput left;
    TextInput right;
    TextSessionOptions options;
    bool forceText = false;
    bool calledByGit = false;               ///< as its program for differences, with arguments of its own making
    bool marksReport = false;               ///< an HTML report with marks and links is asked for
    std::optional<qsizetype> reportContext; ///< the equal rows around differences in it; all without

    /// Fills paths, options and encodings from `arguments`, reading the file that holds options. Returns what is wrong
    /// with them, nothing when they are fine.
    [[nodiscard]] QString take(const Arguments &arguments);

private:
    [[nodiscard]] QString takePaths(const Arguments &arguments);
    void takeGitPaths(const QStringList &paths);
    [[nodiscard]] QString takeOptionsFile(const QString &path);
    [[nodiscard]] QString takePreset(const QString &name);
    [[nodiscard]] QString takeImportance(const QString &path);
    [[nodiscard]] QString takeReplacements(const Arguments &arguments);
    [[nodiscard]] QString takeContext(const Arguments &arguments);
    [[nodiscard]] QString takeEncodings(const Arguments &arguments);
};

} // namespace velmora::cli

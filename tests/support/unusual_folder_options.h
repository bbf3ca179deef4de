#pragma once

#include "settings/options/folder_session_options.h"
#include "support/files.h"

namespace velmora::test {

/// Options of which no field has its default value.
inline FolderSessionOptions unusualFolderOptions()
{
    FolderSessionOptions options;
    options.leftReadOnly = options.rightReadOnly = options.showHidden = true;
    options.includeFiles = words("*.cpp|a;b|ü");
    options.excludeFiles = {word(" *.o "), QString()};
    options.includeFolders = words("src[");
    options.excludeFolders = words(".git|a/b");
    options.otherExclude = words("~*|[");
    options.excludeOsFiles = options.showLogPanel = options.showFilterBar = false;
    options.alignOverrides = {{word("*.c"), word("*.cpp")}, {QString(), word("x")}};
    options.compareBasis = 2;
    options.timeToleranceSec = 90;
    options.fileFormats = {{word("Notes"), word("*.md;*.txt"), true}, {word("Logs"), word("*.log"), false}};
    return options;
}

} // namespace velmora::test

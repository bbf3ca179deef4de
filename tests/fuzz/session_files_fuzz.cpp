#include "app/session_files.h"

#include <QJsonDocument>

#include <cstdlib>

using namespace velmora;

/// Whatever object a session or workspace file holds: what was made of it is written and read again as the same.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return 0;
    const SessionRecord record = sessionFromJson(document.object());
    if (sessionToJson(sessionFromJson(sessionToJson(record))) != sessionToJson(record))
        std::abort();
    const Workspace workspace = workspaceFromJson(document.object());
    const QJsonObject written = workspaceToJson(workspace);
    if (workspaceToJson(workspaceFromJson(written)) != written || frontTab(workspace) >= workspace.openTabs.size())
        std::abort();
    return 0;
}

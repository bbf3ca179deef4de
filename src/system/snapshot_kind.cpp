#include "system/snapshot_kind.h"

#include "platform/environment_names.h"
#include "session/translate.h"

namespace velmora {

SnapshotKind environmentSnapshots()
{
    return {
        .id = QLatin1String("env"),
        .heading = QT_TRANSLATE_NOOP("Velmora", "Environment variables compare"),
        .leftLabel = QT_TRANSLATE_NOOP("Velmora", "Left (.kvenv or current environment):"),
        .rightLabel = QT_TRANSLATE_NOOP("Velmora", "Right (.kvenv or current environment):"),
        .liveText = QT_TRANSLATE_NOOP("Velmora", "[Current environment]"),
        .placeholder = QT_TRANSLATE_NOOP("Velmora", "Leave empty for current process environment"),
        .keyColumn = QT_TRANSLATE_NOOP("Velmora", "Variable"),
        .hint = QT_TRANSLATE_NOOP("Velmora", "Capture or load both sides, then click Compare."),
        .fileFilter = QT_TRANSLATE_NOOP("Velmora", "Environment snapshot (*.kvenv)"),
        .suggestedFile = "environment.kvenv",
        .saveHint = QT_TRANSLATE_NOOP(
            "Velmora", "Variables may hold passwords and keys: the file is readable by its owner only, where the "
                       "system can do that"),
        .capturing = QT_TRANSLATE_NOOP("Velmora", "Reading the environment..."),
        .captured = QT_TRANSLATE_NOOP("Velmora", "Captured %1 variable(s)"),
        .finished = QT_TRANSLATE_NOOP("Velmora", "Compare finished (%1 item(s))"),
        .wrongShape = QT_TRANSLATE_NOOP("Velmora", "Invalid environment snapshot format"),
        .cannotWrite = QT_TRANSLATE_NOOP("Velmora", "Cannot write: %1"),
        .form = SnapshotForm::TextObject,
        .readers = SnapshotReaders::OwnerOnly,
        .match = environmentNamesIgnoreCase() ? KeyMatch::IgnoringCase : KeyMatch::Exact,
        .emptyIsLive = true,
        .capture = [](const CancelFlag &, Progress &) { return SnapshotCapture{captureEnvironment()}; },
    };
}

SnapshotKind serviceSnapshots()
{
    return {
        .id = QLatin1String("service"),
        .heading = QT_TRANSLATE_NOOP("Velmora", "Services compare"),
        .leftLabel = QT_TRANSLATE_NOOP("Velmora", "Left (.kvsvc):"),
        .rightLabel = QT_TRANSLATE_NOOP("Velmora", "Right(.kvsvc):"),
        .liveText = QT_TRANSLATE_NOOP("Velmora", "[Current services]"),
        .keyColumn = QT_TRANSLATE_NOOP("Velmora", "Service name"),
        .hint = QT_TRANSLATE_NOOP("Velmora",
                                  "Capture or load Windows service snapshots, then compare (requires PowerShell)."),
        .fileFilter = QT_TRANSLATE_NOOP("Velmora", "Service snapshot (*.kvsvc)"),
        .suggestedFile = "services.kvsvc",
        .saveHint = QT_TRANSLATE_NOOP("Velmora", "The names, states and start modes of the services"),
        .capturing = QT_TRANSLATE_NOOP("Velmora", "Asking PowerShell for the services: %1 of at most %2 seconds"),
        .captured = QT_TRANSLATE_NOOP("Velmora", "Captured %1 service(s)"),
        .finished = QT_TRANSLATE_NOOP("Velmora", "Services compare finished (%1 item(s))"),
        .wrongShape = QT_TRANSLATE_NOOP("Velmora", "Invalid service snapshot format"),
        .cannotWrite = QT_TRANSLATE_NOOP("Velmora", "Cannot write: %1"),
        .form = SnapshotForm::ServiceArray,
        .capture = [](const CancelFlag &cancel, Progress &progress) { return captureServices({}, cancel, progress); },
    };
}

SnapshotKind startupSnapshots()
{
    return {
        .id = QLatin1String("startup"),
        .heading = QT_TRANSLATE_NOOP("Velmora", "Startup items compare"),
        .leftLabel = QT_TRANSLATE_NOOP("Velmora", "Left (.kvstartup):"),
        .rightLabel = QT_TRANSLATE_NOOP("Velmora", "Right(.kvstartup):"),
        .liveText = QT_TRANSLATE_NOOP("Velmora", "[Current startup]"),
        .keyColumn = QT_TRANSLATE_NOOP("Velmora", "Item"),
        .hint = QT_TRANSLATE_NOOP(
            "Velmora", "Captures Registry Run keys and shortcuts/scripts in the user Startup folder (Windows)."),
        .fileFilter = QT_TRANSLATE_NOOP("Velmora", "Startup snapshot (*.kvstartup)"),
        .suggestedFile = "startup.kvstartup",
        .saveHint = QT_TRANSLATE_NOOP("Velmora", "The registry values and files that start with the system"),
        .capturing = QT_TRANSLATE_NOOP("Velmora", "Reading the startup items..."),
        .captured = QT_TRANSLATE_NOOP("Velmora", "Captured %1 item(s)"),
        .finished = QT_TRANSLATE_NOOP("Velmora", "Compare finished (%1 item(s))"),
        // The file has the form of an environment: one object of texts.
        .wrongShape = QT_TRANSLATE_NOOP("Velmora", "Invalid environment snapshot format"),
        .cannotWrite = QT_TRANSLATE_NOOP("Velmora", "Cannot write file"),
        .form = SnapshotForm::TextObject,
        .capture = [](const CancelFlag &,
                      Progress &) { return SnapshotCapture{captureStartup(StartupSources::ofThisSystem())}; },
    };
}

} // namespace velmora

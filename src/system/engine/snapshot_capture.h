#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "system/engine/snapshot.h"

#include <QByteArray>

#include <chrono>

namespace velmora {

/// Why the state of this system could not be captured.
enum class CaptureFault : quint8 {
    None,
    NoProgram,   ///< the program that knows it is not on the search path
    CannotStart, ///< it could not be started; `detail`: the system's own words
    TimedOut,    ///< it was killed after its time
    NotJson,     ///< what it wrote is no list; `detail`: what it wrote to the error stream, if anything
    Stopped,     ///< the cancel flag was set
};

struct SnapshotCapture {
    Snapshot snapshot; ///< empty where there is a fault
    CaptureFault fault = CaptureFault::None;
    QString detail = {};

    [[nodiscard]] bool ok() const noexcept { return fault == CaptureFault::None; }
};

/// The variables of this process.
[[nodiscard]] Snapshot captureEnvironment();

/// How the services are asked for.
struct ServiceQuery {
    QString searchPath = qEnvironmentVariable("PATH"); ///< where "powershell.exe" is looked for
    std::chrono::milliseconds limit = std::chrono::milliseconds(120000);
};

/// The services of this Windows system, by running PowerShell on the calling thread, which must be a worker.
[[nodiscard]] SnapshotCapture captureServices(const ServiceQuery &query, const CancelFlag &cancel, Progress &progress);

/// The services in what PowerShell wrote: an array of objects with "Name", "State", "StartMode" and "DisplayName", or a
/// single one. Members that are numbers, as enumerations are written by some versions, are taken as text; an element
/// without a name is passed over.
[[nodiscard]] SnapshotCapture parseServiceList(const QByteArray &output);

/// Where the items that start with the system are kept.
struct StartupSources {
    QString currentUserKey; ///< below HKEY_CURRENT_USER
    QString localMachineKey;
    QString userFolder;
    QString commonFolder; ///< empty where the system has none

    [[nodiscard]] static StartupSources ofThisSystem();
};

/// The items that start with the system, keyed by their source: "HKCU\Run\NAME", "HKLM\Run\NAME", "Startup\FILE" and
/// "CommonStartup\FILE". A source that is not there contributes nothing.
[[nodiscard]] Snapshot captureStartup(const StartupSources &sources);

} // namespace velmora

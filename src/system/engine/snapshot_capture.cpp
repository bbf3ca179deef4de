#include "system/engine/snapshot_capture.h"

#include "core/child_process.h"
#include "platform/program_output.h"
#include "platform/startup_entries.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QStringDecoder>

namespace velmora {

namespace {

constexpr qsizetype longestDetail = 500;

/// PowerShell writes to a pipe in the code page of the console, which is the system's old one unless a person has
/// chosen UTF-8 for it, and never says which. UTF-8 has rules that hardly any text in another code page keeps by
/// chance, so what keeps them is UTF-8, with or without a mark.
QString outputText(const QByteArray &output)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(output);
    return utf8.hasError() ? decodeProgramOutput(output) : text;
}

QString memberText(const QJsonObject &object, QLatin1String name)
{
    const QJsonValue member = object.value(name);
    return member.isString() ? member.toString() : member.toVariant().toString();
}

SnapshotCapture faulty(CaptureFault fault, const QString &detail = {})
{
    return {{}, fault, detail};
}

} // namespace

Snapshot captureEnvironment()
{
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    Snapshot snapshot;
    for (const QString &name : environment.keys())
        snapshot.insert(name, {environment.value(name)});
    return snapshot;
}

SnapshotCapture captureServices(const ServiceQuery &query, const CancelFlag &cancel, Progress &progress)
{
    const QString program = findProgram(QStringLiteral("powershell.exe"), query.searchPath);
    if (program.isEmpty())
        return faulty(CaptureFault::NoProgram);
    const ChildRun run =
        runChild({program,
                  {QStringLiteral("-NoProfile"), QStringLiteral("-Command"),
                   QStringLiteral("Get-CimInstance Win32_Service | Select-Object Name, State, StartMode, DisplayName "
                                  "| ConvertTo-Json -Compress")},
                  query.limit},
                 cancel, progress);
    switch (run.end) {
    case ChildEnd::CannotStart:
        return faulty(CaptureFault::CannotStart, run.reason);
    case ChildEnd::TimedOut:
        return faulty(CaptureFault::TimedOut);
    case ChildEnd::Stopped:
        return faulty(CaptureFault::Stopped);
    case ChildEnd::TooMuchOutput:
        return faulty(CaptureFault::NotJson);
    case ChildEnd::Crashed: // what it wrote before tells
    case ChildEnd::Finished:
        break;
    }
    SnapshotCapture capture = parseServiceList(run.output);
    if (!capture.ok())
        capture.detail = outputText(run.errors).simplified().left(longestDetail);
    return capture;
}

SnapshotCapture parseServiceList(const QByteArray &output)
{
    const QJsonDocument document = QJsonDocument::fromJson(outputText(output).toUtf8());
    if (document.isNull())
        return faulty(CaptureFault::NotJson);
    const QJsonArray services = document.isObject() ? QJsonArray{document.object()} : document.array();
    SnapshotCapture capture;
    for (const QJsonValue &element : services) {
        if (!element.isObject())
            return faulty(CaptureFault::NotJson);
        const QJsonObject service = element.toObject();
        const QString name = memberText(service, QLatin1String("Name"));
        if (name.isEmpty())
            continue;
        capture.snapshot.insert(name, serviceItem(memberText(service, QLatin1String("DisplayName")),
                                                  memberText(service, QLatin1String("State")),
                                                  memberText(service, QLatin1String("StartMode"))));
    }
    return capture;
}

StartupSources StartupSources::ofThisSystem()
{
    const QString runKey = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Run");
    return {runKey, runKey,
            QDir::home().filePath(QStringLiteral("AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Startup")),
            commonStartupFolder()};
}

Snapshot captureStartup(const StartupSources &sources)
{
    Snapshot snapshot;
    const auto takeRegistry = [&snapshot](RegistryRoot root, const QString &key, QLatin1String prefix) {
        for (const StartupEntry &entry : registryValues(root, key))
            snapshot.insert(prefix + entry.name, {entry.value});
    };
    const auto takeFolder = [&snapshot](const QString &folder, QLatin1String prefix) {
        if (folder.isEmpty())
            return;
        for (const StartupEntry &entry : visibleFiles(folder))
            snapshot.insert(prefix + entry.name, {entry.value});
    };
    takeRegistry(RegistryRoot::CurrentUser, sources.currentUserKey, QLatin1String("HKCU\\Run\\"));
    takeRegistry(RegistryRoot::LocalMachine, sources.localMachineKey, QLatin1String("HKLM\\Run\\"));
    takeFolder(sources.userFolder, QLatin1String("Startup\\"));
    takeFolder(sources.commonFolder, QLatin1String("CommonStartup\\"));
    return snapshot;
}

} // namespace velmora

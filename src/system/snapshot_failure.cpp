#include "system/snapshot_failure.h"

#include "session/shown_path.h"
#include "session/translate.h"

namespace velmora {

namespace {

QString shapeDetail(const SideResult &result, SnapshotForm form)
{
    switch (result.loadFault) {
    case SnapshotFault::TooLarge:
        return Velmora::tr("The file is larger than any snapshot.");
    case SnapshotFault::NotJson:
        return Velmora::tr("This is no JSON: %1").arg(result.detail);
    case SnapshotFault::WrongRoot:
        return form == SnapshotForm::TextObject ? Velmora::tr("An object with a text for each item was expected.")
                                                : Velmora::tr("A list of services was expected.");
    case SnapshotFault::NotText:
        return Velmora::tr("\"%1\" is no text.").arg(result.detail);
    case SnapshotFault::NoName:
        return Velmora::tr("There is a service without a name.");
    case SnapshotFault::None:
    case SnapshotFault::CannotOpen:
        break;
    }
    return {};
}

SnapshotFailure captureFailure(const SideResult &result)
{
    const QString noList = Velmora::tr("Cannot parse service list JSON");
    switch (result.captureFault) {
    case CaptureFault::NoProgram:
        return {noList, Velmora::tr("powershell.exe is not on the search path.")};
    case CaptureFault::CannotStart:
        return {noList, Velmora::tr("powershell.exe cannot be started: %1").arg(result.detail)};
    case CaptureFault::NotJson:
        return {noList,
                result.detail.isEmpty() ? Velmora::tr("powershell.exe wrote no list of services.") : result.detail};
    case CaptureFault::TimedOut:
        return {Velmora::tr("PowerShell timed out"), {}};
    case CaptureFault::None:
    case CaptureFault::Stopped:
        break;
    }
    return {};
}

} // namespace

SnapshotFailure describeFailure(const SideResult &result, const SnapshotKind &kind, const QString &place)
{
    if (result.loadFault == SnapshotFault::CannotOpen)
        return {Velmora::tr("Cannot open: %1").arg(shownPath(place)), result.detail};
    if (result.loadFault != SnapshotFault::None)
        return {Velmora::tr(kind.wrongShape), shapeDetail(result, kind.form)};
    return captureFailure(result);
}

QString capturingText(const SnapshotKind &kind, const ProgressState &state)
{
    const QString text = Velmora::tr(kind.capturing);
    constexpr int perSecond = 1000;
    return text.contains(QLatin1String("%2")) ? text.arg(state.done / perSecond).arg(state.total / perSecond) : text;
}

} // namespace velmora

#include "session/frame/run_report.h"

#include "session/shown_path.h"

namespace velmora {

void reportReading(StatusLine &status, const ProgressState &state)
{
    if (!state.item.isEmpty())
        status.showMessage(Velmora::tr("Reading %1").arg(shownPath(state.item)));
    status.showProgress(state);
}

} // namespace velmora

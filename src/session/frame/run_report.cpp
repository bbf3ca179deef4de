#include "session/frame/run_report.h"

#include <QDir>

namespace velmora {

void reportReading(StatusLine &status, const ProgressState &state)
{
    if (!state.item.isEmpty())
        status.showMessage(Velmora::tr("Reading %1").arg(QDir::toNativeSeparators(state.item)));
    status.showProgress(state);
}

} // namespace velmora

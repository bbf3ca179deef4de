#include "session/frame/report_saver.h"

#include "core/safe_file.h"
#include "session/fault_text.h"
#include "session/translate.h"

namespace velmora {

void ReportSaver::write(const QString &path, Writer writer)
{
    m_orders.append({path, std::move(writer)});
    if (!m_runner.isRunning())
        startNext();
}

void ReportSaver::startNext()
{
    if (m_orders.isEmpty())
        return;
    m_runner.start(
        [order = m_orders.first()](const CancelFlag &cancel, Progress &) {
            return saveFile(order.path, [&](QIODevice &device) { return order.writer(device, cancel); });
        },
        [this](RunOutcome<SaveResult> &&outcome) {
            const QString path = m_orders.takeFirst().path;
            startNext();
            if (outcome.value && outcome.value->ok())
                Q_EMIT written(path);
            else
                Q_EMIT failed(path, outcome.value ? outcome.value->error
                                                  : faultText(outcome.fault, Velmora::tr("Not enough memory")));
        });
}

} // namespace velmora

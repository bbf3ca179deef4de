#include "session/frame/report_saver.h"

#include "core/safe_file.h"
#include "session/dialogs.h"
#include "session/fault_text.h"
#include "session/session_host.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QDir>
#include <QWidget>

namespace velmora {

ReportSaver::ReportSaver(SessionHost &host, QWidget &window, const QString &title)
    : m_host(host), m_window(window), m_title(title)
{}

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
                tellWritten(path);
            else
                tellFailure(path, outcome.value ? outcome.value->error
                                                : faultText(outcome.fault, Velmora::tr("Not enough memory")));
        });
}

void ReportSaver::tellWritten(const QString &path)
{
    constexpr int shownFor = 5000;
    m_host.showStatus(Velmora::tr("Report written: %1").arg(QDir::toNativeSeparators(path)), shownFor);
}

void ReportSaver::tellFailure(const QString &path, const QString &reason)
{
    const QString message = Velmora::tr("Cannot write file: %1").arg(shownPath(path));
    Q_EMIT failed(message);
    Dialogs::instance().tell(&m_window, Dialogs::Tone::Warning, m_title,
                             reason.isEmpty() ? message : message + u'\n' + reason);
}

} // namespace velmora

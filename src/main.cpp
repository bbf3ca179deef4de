#include "app/start/start_up.h"
#include "core/workers.h"
#include "platform/process_end.h"
#include "platform/standard_streams.h"
#include "platform/thread_end.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    velmora::orderEndOfThreads();
    const QStringList arguments = QStringList{QString()} + velmora::programArguments(argc, argv);
    if (velmora::inquires(arguments)) {
        const QCoreApplication application(argc, argv);
        if (const std::optional<int> status = velmora::answerOnConsole(arguments))
            return *status;
    }
    const QApplication application(argc, argv);
    const int status = velmora::runApplication();
    // The window is gone; what it had begun, as a file that is being saved, comes to its end.
    if (!velmora::joinWorkers(velmora::workersPatience))
        velmora::endProcessNow(status);
    return status;
}

#include "app/start_up.h"
#include "core/workers.h"
#include "platform/process_end.h"
#include "platform/thread_end.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    velmora::orderEndOfThreads();
    const QApplication application(argc, argv);
    const int status = velmora::runApplication();
    // The window is gone; what it had begun, as a file that is being saved, comes to its end.
    if (!velmora::joinWorkers(velmora::workersPatience))
        velmora::endProcessNow(status);
    return status;
}

#include "app/start_up.h"
#include "platform/thread_end.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    velmora::orderEndOfThreads();
    const QApplication application(argc, argv);
    return velmora::runApplication();
}

#include "app/start_up.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    return velmora::runApplication();
}

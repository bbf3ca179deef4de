#include "cli/command_line.h"
#include "platform/standard_streams.h"
#include "platform/thread_end.h"

#include <QFile>

#include <cstdlib>

/// No application object: nothing here needs one, and a short comparison would spend half of its time on making it.
int main(int argc, char *argv[])
{
    velmora::orderEndOfThreads();
    velmora::makeStandardStreamsBinary();
    QFile input;
    QFile output;
    QFile errors;
    // The descriptors themselves: the C library's buffers would keep a full disk secret until the program has ended.
    const QIODevice::OpenMode writing = QIODevice::WriteOnly | QIODevice::Unbuffered;
    if (!input.open(0, QIODevice::ReadOnly | QIODevice::Unbuffered) || !output.open(1, writing) ||
        !errors.open(2, writing))
        return velmora::cli::Trouble;
    const int status = velmora::cli::run(velmora::programArguments(argc, argv), {input, output, errors});
    // Nothing is left to be written, and the libraries' farewells would take a twentieth of the time of a short run.
    std::_Exit(status);
}

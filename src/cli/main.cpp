#include "cli/command_line.h"
#include "cli/own_streams.h"
#include "platform/standard_streams.h"

#include <cstdlib>

/// No application object: nothing here needs one, and a short comparison would spend half of its time on making it.
int main(int argc, char *argv[])
{
    velmora::cli::OwnStreams own;
    if (!own.areOpen())
        return velmora::cli::Trouble;
    const int status = velmora::cli::run(velmora::programArguments(argc, argv), own.streams());
    // Nothing is left to be written, and the libraries' farewells would take a twentieth of the time of a short run.
    std::_Exit(status);
}

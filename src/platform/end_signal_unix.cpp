#include "platform/end_signal.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace velmora {

namespace {

constexpr std::array endSignals{SIGTERM, SIGHUP, SIGINT};

// Of a pipe: a handler may do little more than write to it.
std::array<int, 2> told{-1, -1};

extern "C" void tellOfSignal(int number)
{
    const int before = errno;
    const auto byte = static_cast<unsigned char>(number);
    [[maybe_unused]] const auto written = write(told[1], &byte, 1);
    errno = before;
}

void waitForSignal(void (*act)())
{
    unsigned char number = 0;
    ssize_t got = 0;
    do
        got = read(told[0], &number, 1);
    while (got < 0 && errno == EINTR);
    if (got != 1)
        return;
    act();
    // The handler stood for one signal only; this is the one it was for, with what the system does then.
    kill(getpid(), number);
}

void keepFromPrograms(int descriptor)
{
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

} // namespace

void beforeEndBySignal(void (*act)())
{
    if (pipe(told.data()) != 0)
        return;
    keepFromPrograms(told[0]);
    keepFromPrograms(told[1]);
    std::thread(waitForSignal, act).detach();
    for (const int number : endSignals) {
        struct sigaction present {};
        sigaction(number, nullptr, &present);
        if (present.sa_handler == SIG_IGN)
            continue; // as nohup has it
        struct sigaction handler {};
        handler.sa_handler = tellOfSignal;
        handler.sa_flags = static_cast<int>(SA_RESETHAND);
        sigemptyset(&handler.sa_mask);
        sigaction(number, &handler, nullptr);
    }
}

} // namespace velmora

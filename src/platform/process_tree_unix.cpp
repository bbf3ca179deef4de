#include "platform/process_tree.h"

#include <QProcess>

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace velmora {

struct ProcessTree::System {
    pid_t group = 0;
};

ProcessTree::ProcessTree(QProcess &process, qint64 mostMemory)
    : m_process(process), m_system(std::make_unique<System>())
{
    // Between fork and exec: nothing but calls of the system.
    process.setChildProcessModifier([mostMemory] {
        ::setpgid(0, 0);
#ifdef Q_OS_LINUX
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
        if (mostMemory > 0) {
            const rlimit limit{rlim_t(mostMemory), rlim_t(mostMemory)};
            (void)::setrlimit(RLIMIT_DATA, &limit);
        }
    });
}

ProcessTree::~ProcessTree() = default;

void ProcessTree::takeStarted()
{
    // Its number is that of the group, and stays the group's as long as anybody is in it.
    m_system->group = pid_t(m_process.processId());
}

void ProcessTree::kill()
{
    if (m_system->group > 0)
        ::kill(-m_system->group, SIGKILL);
    m_process.kill();
}

} // namespace velmora

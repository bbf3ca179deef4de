#include "platform/process_tree.h"

#include <QProcess>

#include <csignal>

#include <unistd.h>

namespace velmora {

struct ProcessTree::System {
    pid_t group = 0;
};

ProcessTree::ProcessTree(QProcess &process) : m_process(process), m_system(std::make_unique<System>())
{
    process.setChildProcessModifier([] { ::setpgid(0, 0); });
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

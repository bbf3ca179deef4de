#include "platform/process_tree.h"

#include <QProcess>

#include <windows.h>

namespace velmora {

struct ProcessTree::System {
    HANDLE job = nullptr;
};

ProcessTree::ProcessTree(QProcess &process, qint64 mostMemory)
    : m_process(process), m_system(std::make_unique<System>())
{
    m_system->job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (mostMemory > 0) {
        limits.BasicLimitInformation.LimitFlags |= JOB_OBJECT_LIMIT_PROCESS_MEMORY;
        limits.ProcessMemoryLimit = SIZE_T(mostMemory);
    }
    SetInformationJobObject(m_system->job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
}

ProcessTree::~ProcessTree()
{
    if (m_system->job)
        CloseHandle(m_system->job);
}

void ProcessTree::takeStarted()
{
    const HANDLE process = OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE, FALSE, DWORD(m_process.processId()));
    if (!process)
        return;
    // Where it fails, as for a job within a job on an old system, the child alone is killed.
    AssignProcessToJobObject(m_system->job, process);
    CloseHandle(process);
}

void ProcessTree::kill()
{
    TerminateJobObject(m_system->job, 1);
    m_process.kill();
}

} // namespace velmora

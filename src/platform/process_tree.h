#pragma once

#include <QtGlobal>

#include <memory>

class QProcess;

namespace velmora {

/// A child process with all that it starts, so that it can be stopped whole: "git" runs "ssh", "scp" does too, and what
/// is left of them would hold on to the pipes and the network.
///
/// Used on the thread of `process`, which outlives it.
class ProcessTree {
public:
    /// To be called before `process` is started. It is killed when the thread or the program that started it ends.
    /// \param mostMemory bytes that each process may use for itself, beside what it maps of files; 0 for any number
    explicit ProcessTree(QProcess &process, qint64 mostMemory = 0);
    ~ProcessTree();
    ProcessTree(const ProcessTree &) = delete;
    ProcessTree &operator=(const ProcessTree &) = delete;

    /// To be called as soon as it has been started.
    void takeStarted();
    /// Kills the child and whatever it has started that did not leave it by its own will. Returns at once.
    void kill();

private:
    struct System;
    QProcess &m_process;
    std::unique_ptr<System> m_system;
};

} // namespace velmora

#include "core/child_talk.h"

#include "core/child_setup.h"
#include "platform/process_tree.h"

#include <QElapsedTimer>
#include <QProcess>

namespace velmora {

struct ChildTalk::Running {
    explicit Running(const ChildCall &call) : limit(call.limit), tree(process, call.mostMemory)
    {
        setUpChild(process, call);
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start();
        if (process.waitForStarted(int(limit.count())))
            tree.takeStarted();
    }

    std::chrono::milliseconds limit;
    QProcess process;
    ProcessTree tree;
};

ChildTalk::ChildTalk(const ChildCall &call) : m_running(std::make_unique<Running>(call)) {}

ChildTalk::~ChildTalk()
{
    constexpr int dyingTime = 5000;
    if (!isRunning())
        return;
    m_running->tree.kill();
    m_running->process.waitForFinished(dyingTime);
}

bool ChildTalk::isRunning() const
{
    return m_running->process.state() == QProcess::Running;
}

bool ChildTalk::ask(QByteArrayView question)
{
    QProcess &process = m_running->process;
    return isRunning() && process.write(question.data(), question.size()) == question.size() &&
           process.waitForBytesWritten(int(m_running->limit.count()));
}

bool ChildTalk::waitFor(qint64 bytes, const CancelFlag &cancel)
{
    constexpr int lookEvery = 50;
    QProcess &process = m_running->process;
    QElapsedTimer time;
    time.start();
    while (process.bytesAvailable() < bytes) {
        if (cancel.isCancelled() || time.hasExpired(m_running->limit.count()))
            return false;
        if (process.waitForReadyRead(lookEvery))
            continue;
        // A program that has closed its end is waited for no more, though it may take a while to go.
        const bool isGone = !isRunning() || process.waitForFinished(1);
        if (isGone && process.bytesAvailable() < bytes)
            return false;
    }
    return true;
}

QByteArray ChildTalk::read(qint64 most, const CancelFlag &cancel)
{
    return waitFor(1, cancel) ? m_running->process.read(most) : QByteArray();
}

QByteArray ChildTalk::readLine(qint64 most, const CancelFlag &cancel)
{
    QProcess &process = m_running->process;
    while (!process.canReadLine()) {
        if (process.bytesAvailable() > most || !waitFor(process.bytesAvailable() + 1, cancel))
            return {};
    }
    QByteArray line = process.readLine(most + 2); // the end of the line and the zero byte that Qt puts behind
    if (!line.endsWith('\n'))
        return {};
    line.chop(1);
    return line;
}

} // namespace velmora

#pragma once

#include "core/cancel_flag.h"
#include "core/child_process.h"

#include <QByteArray>
#include <QByteArrayView>

#include <memory>

namespace velmora {

/// A program that answers one question after the other, run as `runChild` does. Used and destroyed on one thread, which
/// needs no event loop; the program is killed, with what it has started, when this object goes.
class ChildTalk {
public:
    /// Starts it. `call.limit` is how long any answer may keep one waiting; what the program writes to its error stream
    /// is lost, and the limit of its output and the input of the call do not count.
    explicit ChildTalk(const ChildCall &call);
    ~ChildTalk();
    ChildTalk(const ChildTalk &) = delete;
    ChildTalk &operator=(const ChildTalk &) = delete;

    [[nodiscard]] bool isRunning() const;
    /// False when it could not be handed over.
    [[nodiscard]] bool ask(QByteArrayView question);
    /// What has come of an answer, as soon as there is any, at most `most` bytes. Empty when nothing comes any more:
    /// the program has ended, the time is over or `cancel` is set.
    [[nodiscard]] QByteArray read(qint64 most, const CancelFlag &cancel);
    /// A line without its end; empty as `read`, and when it is longer than `most` bytes.
    [[nodiscard]] QByteArray readLine(qint64 most, const CancelFlag &cancel);

private:
    struct Running;

    /// Waits until so many bytes can be read.
    [[nodiscard]] bool waitFor(qint64 bytes, const CancelFlag &cancel);

    std::unique_ptr<Running> m_running;
};

} // namespace velmora

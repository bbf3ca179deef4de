#pragma once

#include "core/child_process.h"
#include "core/child_talk.h"

#include <QByteArray>
#include <QByteArrayView>

#include <functional>
#include <memory>

namespace velmora {

/// A program that answers the questions of any thread, one after the other: where those who ask meet the thread that
/// the program belongs to. It is started at the first question, and again when it has failed.
class ChildDesk {
public:
    explicit ChildDesk(ChildCall call);
    /// Nobody may be asking any more.
    ~ChildDesk();
    ChildDesk(const ChildDesk &) = delete;
    ChildDesk &operator=(const ChildDesk &) = delete;

    /// Takes the bytes of an answer as they come; false when no more are wanted.
    using Sink = std::function<bool(QByteArrayView)>;

    /// How an answer ended.
    enum class Answer : quint8 {
        Whole,
        Refused, ///< there is none, and the program waits for the next question
        Broken,  ///< the program is in no state for another question
    };
    /// Hands a piece of an answer on; false when no more are wanted.
    using Giver = std::function<bool(QByteArray &&)>;
    /// Asks the program and gives its answer on; called on the thread of the program. `isNew`: nobody has asked it yet.
    using Question = std::function<Answer(ChildTalk &talk, bool isNew, const Giver &give)>;

    /// True when the answer was whole and the sink took all of it. For a worker; the sink is called on its thread.
    [[nodiscard]] bool ask(Question question, const Sink &sink);

private:
    class Meeting;

    std::unique_ptr<Meeting> m_meeting;
};

} // namespace velmora

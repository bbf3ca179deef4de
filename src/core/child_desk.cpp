#include "core/child_desk.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace velmora {

namespace {

struct Piece {
    QByteArray bytes;
    bool isLast = false;
    bool isWhole = false; ///< of the last: nothing is missing
};

bool taken(const QByteArray &bytes, const ChildDesk::Sink &sink, std::exception_ptr &thrown)
{
    try {
        return sink(bytes);
    } catch (...) {
        thrown = std::current_exception();
        return false;
    }
}

} // namespace

class ChildDesk::Meeting {
public:
    explicit Meeting(ChildCall call) : m_call(std::move(call)) {}
    ~Meeting()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_closes = true;
        }
        m_changed.notify_all();
        if (m_server.joinable())
            m_server.join();
    }

    bool ask(Question &&question, const Sink &sink)
    {
        const std::lock_guard turn(m_turn);
        if (m_call.program.isEmpty())
            return false;
        if (!m_server.joinable())
            m_server = std::thread([this] { serve(); });
        std::unique_lock lock(m_mutex);
        m_isWanted = true;
        m_question = std::move(question);
        m_changed.notify_all();
        std::exception_ptr thrown; // the answer is taken to its end all the same
        for (;;) {
            m_changed.wait(lock, [this] { return m_piece.has_value(); });
            const Piece piece = *std::exchange(m_piece, std::nullopt);
            m_changed.notify_all();
            if (piece.isLast) {
                if (thrown)
                    std::rethrow_exception(thrown);
                return m_isWanted && piece.isWhole;
            }
            if (!m_isWanted)
                continue;
            lock.unlock();
            const bool takes = taken(piece.bytes, sink, thrown);
            lock.lock();
            m_isWanted = takes;
        }
    }

private:
    void serve()
    {
        std::unique_ptr<ChildTalk> talk;
        for (;;) {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return m_closes || m_question.has_value(); });
            if (m_closes)
                return;
            const Question question = *std::exchange(m_question, std::nullopt);
            lock.unlock();
            const bool isNew = !talk;
            if (isNew)
                talk = std::make_unique<ChildTalk>(m_call);
            const Answer answer = question(*talk, isNew, [this](QByteArray &&bytes) {
                return give({std::move(bytes), false, false});
            });
            give({{}, true, answer == Answer::Whole});
            if (answer == Answer::Broken)
                talk.reset();
        }
    }

    /// One piece lies on the desk at a time.
    bool give(Piece &&piece)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_piece.has_value(); });
        m_piece = std::move(piece);
        m_changed.notify_all();
        return m_isWanted;
    }

    const ChildCall m_call;
    std::mutex m_turn;
    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_changed;
    std::optional<Question> m_question;
    std::optional<Piece> m_piece;
    bool m_isWanted = true;
    bool m_closes = false;
    std::thread m_server;
};

ChildDesk::ChildDesk(ChildCall call) : m_meeting(std::make_unique<Meeting>(std::move(call))) {}

ChildDesk::~ChildDesk() = default;

bool ChildDesk::ask(Question question, const Sink &sink)
{
    return m_meeting->ask(std::move(question), sink);
}

} // namespace velmora

#include "vfs/git/git_objects.h"

#include "core/child_talk.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace velmora {

namespace {

/// A disk that wakes up answers within that; a filter or network that git would wait for is off.
constexpr std::chrono::seconds answerLimit{120};
constexpr qint64 pieceSize = qint64(256) * 1024;

struct Question {
    QByteArray name;
    qint64 size = 0;
    CancelFlag cancel;
};

struct Piece {
    QByteArray bytes;
    bool isLast = false;
    bool isWhole = false; ///< of the last: nothing is missing
};

using Giver = std::function<bool(Piece &&)>; ///< false: no more is wanted

/// Asks git and gives the answer on. False when git is in no state for another question.
bool answer(ChildTalk &git, const Question &question, const Giver &give)
{
    constexpr qint64 mostHead = 200;
    const bool isAsked = git.ask(question.name + '\n');
    const QByteArray head = isAsked ? git.readLine(mostHead, question.cancel) : QByteArray();
    if (head != question.name + " blob " + QByteArray::number(question.size)) {
        give({{}, true, false});
        return head == question.name + " missing"; // of anything else the content would follow
    }
    qint64 left = question.size;
    for (bool isWanted = true; left > 0 && isWanted;) {
        QByteArray bytes = git.read(qMin(left, pieceSize), question.cancel);
        if (bytes.isEmpty())
            break;
        left -= bytes.size();
        isWanted = give({std::move(bytes), false, false});
    }
    const bool isWhole = left == 0 && git.read(1, question.cancel) == "\n";
    give({{}, true, isWhole});
    return isWhole;
}

} // namespace

/// Where those who ask meet the thread that git belongs to: a process is used on one thread only.
class GitObjects::Desk {
public:
    explicit Desk(ChildCall call) : m_call(std::move(call)) {}
    ~Desk()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_closes = true;
        }
        m_changed.notify_all();
        if (m_server.joinable())
            m_server.join();
    }

    bool ask(const Question &question, const Sink &sink)
    {
        const std::lock_guard turn(m_turn);
        if (m_call.program.isEmpty())
            return false;
        if (!m_server.joinable())
            m_server = std::thread([this] { serve(); });
        std::unique_lock lock(m_mutex);
        m_isWanted = true;
        m_question = question;
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
    static bool taken(const QByteArray &bytes, const Sink &sink, std::exception_ptr &thrown)
    {
        try {
            return sink(bytes);
        } catch (...) {
            thrown = std::current_exception();
            return false;
        }
    }

    void serve()
    {
        std::unique_ptr<ChildTalk> git;
        for (;;) {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return m_closes || m_question.has_value(); });
            if (m_closes)
                return;
            const Question question = *std::exchange(m_question, std::nullopt);
            lock.unlock();
            if (!git)
                git = std::make_unique<ChildTalk>(m_call);
            if (!answer(*git, question, [this](Piece &&piece) { return give(std::move(piece)); }))
                git.reset();
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

GitObjects::GitObjects(const GitCaller &caller, const QMap<QString, QString> &variables)
{
    GitCallExtras extras;
    extras.variables = variables;
    ChildCall call = caller.childCall({QStringLiteral("cat-file"), QStringLiteral("--batch")}, extras);
    call.limit = answerLimit;
    m_desk = std::make_unique<Desk>(std::move(call));
}

GitObjects::~GitObjects() = default;

bool GitObjects::read(const QByteArray &name, qint64 size, const Sink &sink, const CancelFlag &cancel) const
{
    return m_desk->ask({name, size, cancel}, sink);
}

} // namespace velmora

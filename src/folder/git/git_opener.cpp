#include "folder/git/git_opener.h"

#include "folder/actions/git_fault_text.h"
#include "folder/git/git_words.h"
#include "session/passing_copies.h"
#include "session/session_record.h"
#include "session/translate.h"
#include "vfs/git/git_content.h"

namespace velmora {

GitOpener::GitOpener(SessionHost &host, QObject *parent) : QObject(parent), m_host(host) {}

void GitOpener::open(const std::shared_ptr<const GitComparison> &comparison, const GitChange &change,
                     const QString &kind)
{
    m_runner.start(
        [comparison, change, kind, test = m_host.kindTest(), folder = m_copies.path()](const CancelFlag &cancel,
                                                                                       Progress &) {
            Answer answer{kind, {}, {}};
            for (const Side side : bothSides) {
                if (change.paths[side].isEmpty() || answer.fault.isError())
                    continue;
                GitLaidOut laidOut = layOutChange(*comparison, change, side, folder, cancel);
                answer.paths[side] = laidOut.path;
                answer.fault = laidOut.fault;
            }
            if (kind.isEmpty() && !answer.fault.isError())
                answer.kind = test(answer.paths);
            return answer;
        },
        [this, comparison, change](RunOutcome<Answer> &&outcome) {
            if (outcome.end != RunEnd::Done)
                return;
            if (outcome.value->fault.isError()) {
                Q_EMIT failed(gitFaultText(outcome.value->fault));
                return;
            }
            for (const Side side : bothSides)
                noteCopy(outcome.value->paths[side],
                         gitSideShown(comparison->states[side].side) + u':' + change.paths[side]);
            m_host.openSession(outcome.value->kind, {outcome.value->paths.left, outcome.value->paths.right, {}});
        });
}

} // namespace velmora

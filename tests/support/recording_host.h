#pragma once

#include "session/session_host.h"
#include "session/session_record.h"

#include <QList>
#include <QStringList>

namespace velmora::test {

/// A window that remembers what a session asks of it.
class RecordingHost final : public SessionHost {
public:
    explicit RecordingHost(RecoveryStore *recoveryStore = nullptr) : store(recoveryStore) {}

    void openSession(const QString &kind, const SessionPaths &paths) override { opened.append({kind, paths}); }
    [[nodiscard]] bool isBuilt(const QString &kind) const override { return !unbuilt.contains(kind); }
    void showStatus(const QString &message, int) override { messages.append(message); }
    RecoveryStore *recovery() override { return store; }

    QList<std::pair<QString, SessionPaths>> opened;
    QStringList messages;
    QStringList unbuilt; ///< kinds that do nothing yet
    RecoveryStore *store = nullptr;
};

} // namespace velmora::test

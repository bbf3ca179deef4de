#pragma once

#include "session/session_host.h"
#include "session/session_record.h"

#include <QFile>
#include <QList>
#include <QStringList>

#include <array>

namespace velmora::test {

/// A window that remembers what a session asks of it.
class RecordingHost final : public SessionHost {
public:
    explicit RecordingHost(RecoveryStore *recoveryStore = nullptr) : store(recoveryStore) {}

    void openSession(const QString &kind, const SessionPaths &paths) override { opened.append({kind, paths}); }
    void openMerge(const SessionPaths &paths, const QString &output) override
    {
        SessionHost::openMerge(paths, output);
        outputs.append(output);
    }
    [[nodiscard]] QString kindFor(Purpose purpose) const override
    {
        return QString::fromLatin1(std::array{"text", "binary", "folder", "sync", "merge"}[std::size_t(purpose)]);
    }
    /// Files that begin with a zero byte are no texts.
    [[nodiscard]] KindTest kindTest() const override
    {
        return [](const Sides<QString> &files) {
            QFile file(files.left.isEmpty() ? files.right : files.left);
            const bool isText = !file.open(QIODevice::ReadOnly) || !file.read(1).startsWith('\0');
            return isText ? QStringLiteral("text") : QStringLiteral("binary");
        };
    }
    void showStatus(const QString &message, int) override { messages.append(message); }
    RecoveryStore *recovery() override { return store; }

    QList<std::pair<QString, SessionPaths>> opened;
    QStringList outputs; ///< of the merges among them
    QStringList messages;
    RecoveryStore *store = nullptr;
};

} // namespace velmora::test

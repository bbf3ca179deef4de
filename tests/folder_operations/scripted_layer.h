#pragma once

#include "platform/file_layer.h"

#include <QStringList>

#include <atomic>
#include <functional>

namespace velmora::test {

/// The real file system with a script: before each call that could fail, the script is asked whether it does. A copy
/// that fails has written something by then.
class ScriptedLayer final : public FileLayer {
public:
    /// The number of the call, from 1, and the name of the function. An error makes the call fail without being made.
    using Script = std::function<FileError(int number, QLatin1String call)>;

    explicit ScriptedLayer(Script script) : m_script(std::move(script)) {}

    std::unique_ptr<FolderHandle> openRoot(const QString &path, FileError &error) override;
    bool isForThreads() const override { return m_isForThreads; }
    bool canSettle() const override { return FileLayer::native().canSettle(); }
    NodeResult statInBin(const QString &binPath) override { return FileLayer::native().statInBin(binPath); }
    FileError restore(const QString &binPath, FolderHandle &to, const QString &name,
                      const NodeTest &isExpected) override;

    /// From now on handles may be used on several threads; the script is responsible for what it does there.
    void setForThreads() { m_isForThreads = true; }

    /// From now on nobody is told where in the recycle bin an entry went.
    void hideBin() { m_tellsBin = false; }
    [[nodiscard]] bool tellsBin() const { return m_tellsBin; }

    /// The folders that have been given their attributes, in that order.
    QStringList finished;

    [[nodiscard]] int calls() const { return m_calls; }
    [[nodiscard]] FileError ask(QLatin1String call) { return m_script(++m_calls, call); }

private:
    Script m_script;
    std::atomic<int> m_calls = 0;
    bool m_isForThreads = false;
    bool m_tellsBin = true;
};

/// A script in which all but the finished copies would have to change the volume.
[[nodiscard]] ScriptedLayer::Script betweenVolumes();

} // namespace velmora::test

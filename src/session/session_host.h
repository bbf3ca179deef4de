#pragma once

#include "core/sides.h"

#include <QString>

#include <functional>

namespace velmora {

class RecoveryStore;
struct SessionPaths;

/// What a session may ask of the window that holds it. Sessions know neither the window nor each other.
class SessionHost {
public:
    SessionHost() = default;
    SessionHost(const SessionHost &) = delete;
    SessionHost &operator=(const SessionHost &) = delete;
    virtual ~SessionHost() = default;

    /// Opens a session of `kind` on `paths` in a new tab and starts it. An unknown kind becomes "folder" when both
    /// sides are folders, and "text" otherwise.
    virtual void openSession(const QString &kind, const SessionPaths &paths) = 0;

    /// Opens a merge of three texts in a new tab and starts it; the result is to be saved to `output`. Of a version
    /// that is missing the path is empty.
    virtual void openMerge(const SessionPaths &paths, const QString & /*output*/)
    {
        openSession(kindFor(Purpose::MergeTexts), paths);
    }

    /// What sessions ask for without knowing which kinds there are.
    enum class Purpose : quint8 { CompareTexts, CompareBytes, CompareFolders, SyncFolders, MergeTexts };
    /// The kind of sessions for that; empty when there is none.
    [[nodiscard]] virtual QString kindFor(Purpose /*purpose*/) const { return {}; }

    /// Tells the kind of sessions for two files, of which one may be missing, that suits what is in them. For workers:
    /// it reads the files, and owns what it needs. Without an answer `openSession` finds one.
    using KindTest = std::function<QString(const Sides<QString> &files)>;
    [[nodiscard]] virtual KindTest kindTest() const
    {
        return [](const Sides<QString> &) { return QString(); };
    }

    /// Shows `message` in the status bar, for `milliseconds` or, when 0, until the next one.
    virtual void showStatus(const QString &message, int milliseconds = 0) = 0;

    /// Shows what the colours and signs of folder comparisons mean.
    virtual void showLegend() {}

    /// Where unsaved work is kept in case the program ends without asking; null when it is not.
    [[nodiscard]] virtual RecoveryStore *recovery() { return nullptr; }
};

} // namespace velmora

#pragma once

#include "folder/engine/folder_jobs.h"

#include <QObject>
#include <QStringList>

class QWidget;

namespace velmora {

class FolderComparison;

/// Comparing contents in a folder session: asks what is meant, reads the folders that nobody has opened yet, and says
/// how it has gone.
class ContentsRun final : public QObject {
    Q_OBJECT
public:
    /// Both outlive the object; dialogs belong to `window`.
    ContentsRun(FolderComparison &comparison, QWidget &window);

    /// Asks how the entries of these nodes are to be compared, and does it when that is wanted. Everything is meant
    /// when there are none.
    void ask(const QList<qint32> &nodes);
    /// Compares what has these names, and what is in it.
    void start(const QStringList &names, CompareMethod method);
    /// Reads the files that are shown and unread.
    void readUnread();
    /// Drops what waits for folders to be read.
    void forget() { m_waiting.clear(); }

Q_SIGNALS:
    void started(velmora::CompareMethod method);
    void logLine(const QString &line);
    void statusChanged(const QString &text);
    void cancelled();

private:
    void take(const ContentsResult &result, bool cancelled);

    FolderComparison &m_comparison;
    QWidget &m_window;
    CompareMethod m_method = CompareMethod::Binary;
    bool m_showsResults = false;
    int m_unmatched = 0;   ///< files on one side only, of what is being compared
    QStringList m_waiting; ///< names that wait for their folders to be read before their contents are compared
};

/// What a method is called in the log and the status line.
[[nodiscard]] QString methodWord(CompareMethod method);

} // namespace velmora

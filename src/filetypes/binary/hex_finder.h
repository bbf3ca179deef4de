#pragma once

#include "core/runner.h"

#include <QByteArray>
#include <QObject>

#include <optional>

namespace velmora {

class HexFindBar;
class HexScene;

/// Finds what the bar asks for in the side that the caret is in, on a worker, from the caret on and then from the other
/// end of the file.
class HexFinder final : public QObject {
    Q_OBJECT
public:
    /// Both outlive it.
    HexFinder(HexFindBar &bar, HexScene &scene, QObject *parent);

    void findNext() { find(true); }
    void findPrevious() { find(false); }

    [[nodiscard]] bool isSearching() const { return m_runner.isRunning(); }
    void cancel() { m_runner.cancel(); }

Q_SIGNALS:
    /// Something was found, and is selected.
    void found();

private:
    struct Match {
        std::optional<qint64> offset;
        bool isBehindEnd = false; ///< it was found by starting over
    };

    void find(bool forwards);
    void takeMatch(RunOutcome<Match> &&outcome, qsizetype length);

    HexFindBar &m_bar;
    HexScene &m_scene;
    Runner m_runner;
};

} // namespace velmora

#pragma once

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include <algorithm>
#include <functional>

/// Turns the event loop until nothing is left to do, and notes the longest turn in milliseconds.
inline double longestTurn(const std::function<void()> &step, const std::function<bool()> &isDone)
{
    QElapsedTimer turn;
    qint64 longest = 0;
    turn.start();
    step();
    int idle = 0;
    while (idle < 3) {
        QCoreApplication::sendPostedEvents();
        const bool busy = QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
        longest = std::max(longest, turn.nsecsElapsed());
        turn.restart();
        idle = busy || !isDone() ? 0 : idle + 1;
    }
    return double(longest) / 1e6;
}

#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>

#include <chrono>

namespace velmora {

/// The program file `name` in the first folder of `searchPath` (as the environment variable PATH has it) that holds it;
/// empty when none does. Relative folders are passed over, the current one above all: a program that lies beside an
/// opened file is never taken.
[[nodiscard]] QString findProgram(const QString &name, const QString &searchPath);

/// A program to be run.
struct ChildCall {
    QString program;                 ///< absolute path
    QStringList arguments;           ///< each reaches the program as it is: there is no shell
    std::chrono::milliseconds limit; ///< then it is killed
    qint64 mostOutput = qint64(64) * 1024 * 1024;
    QString folder = {};                   ///< where it runs; empty: where the program lies
    QMap<QString, QString> variables = {}; ///< on top of those of this process
    QStringList without = {};              ///< variables of this process that it does not get
    QByteArray input = {};                 ///< what it can read
    qint64 mostMemory = 0;                 ///< bytes that it may use beside what it maps of files; 0: any number
};

enum class ChildEnd : quint8 { Finished, CannotStart, Crashed, TimedOut, TooMuchOutput, Stopped };

struct ChildRun {
    ChildEnd end = ChildEnd::Finished;
    int exitCode = 0;  ///< of one that finished
    QByteArray output; ///< what it wrote until it ended, as it is
    QByteArray errors; ///< the beginning of what it wrote to the error stream
    QString reason;    ///< why it could not be started, in the system's own words
};

/// Runs a program without a shell and without a window of its own, and waits until it has ended. For a worker thread.
/// It is killed, with the programs that it has started, when `cancel` is set, when its time is over or when it writes
/// too much; and when this process ends. Progress counts the milliseconds of the limit.
[[nodiscard]] ChildRun runChild(const ChildCall &call, const CancelFlag &cancel, Progress &progress);

} // namespace velmora

#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"

#include <QByteArray>
#include <QStringList>

#include <chrono>

namespace velmora {

/// The program file `name` in the first folder of `searchPath` (as the environment variable PATH has it) that holds it;
/// empty when none does. Relative folders are passed over, the current one above all: a program that lies beside an
/// opened file is never taken.
[[nodiscard]] QString findProgram(const QString &name, const QString &searchPath);

struct ProgramCall {
    QString program; ///< absolute path
    QStringList arguments;
    std::chrono::milliseconds limit; ///< then it is killed
    qint64 mostOutput = qint64(64) * 1024 * 1024;
};

enum class ProgramEnd : quint8 { Finished, CannotStart, TimedOut, TooMuchOutput, Stopped };

struct ProgramRun {
    ProgramEnd end = ProgramEnd::Finished;
    int exitCode = 0;
    QByteArray output; ///< what it wrote until it ended, as it is
    QByteArray errors; ///< the beginning of what it wrote to the error stream
    QString reason;    ///< why it could not be started, in the system's own words
};

/// Runs a program without a shell, without a window of its own and without input, and waits until it has ended. For a
/// worker thread. It is killed when `cancel` is set, when its time is over or when it writes too much. Progress counts
/// the milliseconds of the limit.
[[nodiscard]] ProgramRun runProgram(const ProgramCall &call, const CancelFlag &cancel, Progress &progress);

} // namespace velmora

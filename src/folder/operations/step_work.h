#pragma once

#include "folder/operations/step_runner.h"

namespace velmora {

/// A step with what its places hold right now.
struct StepRunner::Work {
    qsizetype index;
    const OperationStep &step;
    ReachedPlace from;
    ReachedPlace to;
    NodeState source;
    NodeState target;
    std::unique_ptr<FileSource> opened; ///< the source, when it was opened ahead; `from` is not held then
    bool targetExists = false;
    bool isJournalled = false;
    bool isSwapped = false;   ///< and could not be swapped back: what has the temporary name is a person's
    bool isFirstHalf = false; ///< of a move between volumes: for now it is a copy
};

} // namespace velmora

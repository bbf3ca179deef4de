#pragma once

#include "folder/operations/step_result.h"

namespace velmora {

/// A copy that is to be made beside its target. The folders are held open by the caller.
struct CopyOrder {
    const OperationStep &step;
    FolderHandle *from;                 ///< may be null where `opened` is set and nothing is verified
    QString name;                       ///< of the source in `from`
    std::unique_ptr<FileSource> opened; ///< the source, when it is open already
    const NodeState &source;
    FolderHandle &to;
    QString newName;            ///< of the copy in `to`
    bool replacesOther = false; ///< the old contents of the target are about to go
};

/// Makes finished copies beside their targets: complete, as the plan saw the source, with its time and permissions.
/// Used by one thread; the plan must outlive it.
class BesideCopy {
public:
    /// `tick` is told of bytes that have been copied and answers whether to go on. `verifiesContent`: each copy is read
    /// again and compared with its source.
    BesideCopy(const OperationPlan &plan, FileLayer &files, bool verifiesContent, FileSink::Tick tick);

    /// A copy that failed is removed again.
    [[nodiscard]] StepResult make(CopyOrder order) const;

private:
    [[nodiscard]] StepResult copyContents(CopyOrder &order) const;
    [[nodiscard]] StepResult fill(FileSink &sink, FileSource &source, const CopyOrder &order) const;
    [[nodiscard]] StepResult verify(const CopyOrder &order) const;

    StepProblems m_problems;
    FileLayer &m_files;
    bool m_verifiesContent;
    FileSink::Tick m_tick;
};

} // namespace velmora

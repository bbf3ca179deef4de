#include "folder/operations/beside_copy.h"

#include "folder/operations/copy_entry.h"

#include <cstring>

namespace velmora {

BesideCopy::BesideCopy(const OperationPlan &plan, FileLayer &files, bool verifiesContent, FileSink::Tick tick)
    : m_problems(plan), m_files(files), m_verifiesContent(verifiesContent), m_tick(std::move(tick))
{}

StepResult BesideCopy::make(CopyOrder order) const
{
    if (order.source.kind == NodeKind::Special || order.source.kind == NodeKind::Folder)
        return m_problems.failed(OperationErrorCode::Unsupported, order.step.from);
    StepResult result;
    if (order.source.kind == NodeKind::Link) {
        const FileError error = copyEntry(*order.from, order.name, order.source, order.to, order.newName, m_tick);
        if (error.isError())
            result = m_problems.failedAtTarget(order.step.to, error);
    } else {
        result = copyContents(order);
    }
    if (!result.isDone())
        (void)order.to.removeFile(order.newName);
    return result;
}

StepResult BesideCopy::copyContents(CopyOrder &order) const
{
    FileError error;
    const std::unique_ptr<FileSource> source =
        order.opened ? std::move(order.opened) : order.from->openFile(order.name, error);
    if (!source)
        return m_problems.failedAtSource(order.step.from, error);
    std::unique_ptr<FileSink> sink = order.to.createFile(order.newName, error);
    if (!sink)
        return m_problems.failedAtTarget(order.step.to, error);
    StepResult result = fill(*sink, *source, order);
    sink.reset();
    if (!result.isDone() || !m_verifiesContent)
        return result;
    StepResult verified = verify(order);
    verified.problems = result.problems + verified.problems;
    return verified;
}

StepResult BesideCopy::fill(FileSink &sink, FileSource &source, const CopyOrder &order) const
{
    const OperationStep &step = order.step;
    const NodeResult before = source.state();
    if (before.error.isError() || !step.fromSeen.isStill(before.node))
        return m_problems.failed(OperationErrorCode::SourceChanged, step.from, before.error);
    FileError error = sink.copyFrom(source, m_tick);
    if (error.isError())
        return m_problems.failedAtTarget(step.to, error);
    const NodeResult after = source.state();
    if (after.error.isError() || !step.fromSeen.isStill(after.node))
        return m_problems.failed(OperationErrorCode::SourceChanged, step.from, after.error);
    const NodeResult written = sink.state();
    if (written.error.isError() || written.node.size != after.node.size)
        return m_problems.failed(OperationErrorCode::NotTheSame, step.to, written.error);
    StepResult result;
    error = sink.keepAttributes(after.node);
    if (error.isError())
        m_problems.warn(result, OperationErrorCode::AttributesLost, step.to, error);
    // A new file may wait for all others, a replaced one not: its old contents are about to go.
    if (order.replacesOther || !m_files.canSettle()) {
        error = sink.flush();
        if (error.isError())
            return m_problems.failedAtTarget(step.to, error);
    }
    return result;
}

StepResult BesideCopy::verify(const CopyOrder &order) const
{
    FileError error;
    const std::unique_ptr<FileSource> source = order.from->openFile(order.name, error);
    if (!source)
        return m_problems.failedAtSource(order.step.from, error);
    const std::unique_ptr<FileSource> copy = order.to.openFile(order.newName, error);
    if (!copy)
        return m_problems.failedAtTarget(order.step.to, error);
    constexpr qint64 blockSize = 256 << 10;
    std::vector<char> left(static_cast<std::size_t>(blockSize));
    std::vector<char> right(static_cast<std::size_t>(blockSize));
    for (;;) {
        const FilePiece expected = source->read(left.data(), blockSize);
        const FilePiece found = copy->read(right.data(), blockSize);
        if (expected.failed)
            return m_problems.failed(OperationErrorCode::NotReadable, order.step.from);
        if (expected != found || std::memcmp(left.data(), right.data(), std::size_t(found.length)) != 0)
            return m_problems.failed(OperationErrorCode::NotTheSame, order.step.to);
        if (!m_tick(0))
            return m_problems.failed(OperationErrorCode::Cancelled, order.step.from);
        if (found.length < blockSize)
            return {};
    }
}

} // namespace velmora

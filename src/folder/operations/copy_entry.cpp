#include "folder/operations/copy_entry.h"

namespace velmora {

namespace {

FileError copyLink(FolderHandle &from, const QString &name, const NodeState &node, FolderHandle &to,
                   const QString &newName)
{
    QString target;
    FileError error = from.linkTarget(name, target);
    if (!error.isError())
        error = to.makeLink(newName, target, node.leadsToFolder);
    if (!error.isError())
        (void)to.keepAttributes(newName, node); // not every system dates links
    return error;
}

} // namespace

FileError copyEntry(FolderHandle &from, const QString &name, const NodeState &node, FolderHandle &to,
                    const QString &newName, const FileSink::Tick &tick)
{
    if (node.kind == NodeKind::Link)
        return copyLink(from, name, node, to, newName);
    FileError error;
    const std::unique_ptr<FileSource> source = from.openFile(name, error);
    if (!source)
        return error;
    const std::unique_ptr<FileSink> sink = to.createFile(newName, error);
    if (!sink)
        return error;
    error = sink->copyFrom(*source, tick);
    if (!error.isError())
        error = sink->keepAttributes(node);
    if (error.kind == FileErrorKind::Unsupported)
        error = {};
    if (!error.isError() && sink->state().node.size != node.size)
        error = {FileErrorKind::ReadFailed, {}};
    return error;
}

} // namespace velmora

#include "folder/operations/text_conflicts.h"

#include "core/output_buffer.h"
#include "core/path_names.h"
#include "core/text_file.h"
#include "merge/engine/chunk_merge.h"
#include "merge/engine/merge_writer.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <optional>

namespace velmora {

namespace {

/// A merge of more takes long, and is hardly of texts.
constexpr qint64 longestText = 16 * 1024 * 1024;

using Texts = MergeVersions<QByteArray>;

bool mayBeTexts(const FolderMergeFile &file)
{
    return file.status == FolderMergeStatus::Conflict &&
           std::all_of(allMergeVersions.begin(), allMergeVersions.end(), [&file](MergeVersion version) {
               return file.sizes[version] >= 0 && file.sizes[version] <= longestText;
           });
}

/// Nothing when one of them cannot be read, or is no text.
std::optional<Texts> readTexts(const MergeVersions<QString> &paths, const CancelFlag &cancel)
{
    Texts texts;
    for (const MergeVersion version : allMergeVersions) {
        FileContents contents = readFile(paths[version], cancel);
        if (!contents.ok() || contents.bytes.size() > longestText || contents.bytes.contains('\0'))
            return std::nullopt;
        texts[version] = std::move(contents.bytes);
    }
    return texts;
}

/// A new file with the merged text; false when there are conflicts in it or it cannot be written.
bool writeMerged(const Texts &texts, const QString &path, const CancelFlag &cancel, Progress &progress)
{
    const TextLines base = TextLines::split(texts.base);
    const TextLines left = TextLines::split(texts.left);
    const TextLines right = TextLines::split(texts.right);
    const ChunkMerge merge = mergeChunks(base, left, right, {}, cancel, progress);
    if (cancel.isCancelled() || !merge.isClean())
        return false;
    QFile file(path);
    if (!QDir().mkpath(parentPath(path)) || !file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    OutputBuffer output(file);
    writeMerge(output, merge.chunks, {base, left, right}, {});
    const bool isWritten = output.finish() && file.flush();
    if (!isWritten)
        file.remove();
    return isWritten;
}

void keepPermissions(const MergeVersions<QString> &paths, const QString &merged)
{
    const QFile::Permissions left = QFile::permissions(paths.left);
    const bool isChangedOnLeft = left != QFile::permissions(paths.base);
    QFile::setPermissions(merged, isChangedOnLeft ? left : QFile::permissions(paths.right));
}

} // namespace

TextConflicts mergeTextConflicts(const MergeVersions<QString> &folders, const QList<FolderMergeFile> &files,
                                 const QString &into, const CancelFlag &cancel, Progress &progress)
{
    TextConflicts result;
    const qint64 total = std::count_if(files.begin(), files.end(), mayBeTexts);
    qint64 done = 0;
    Progress silent;
    for (qsizetype i = 0; i < files.size() && !cancel.isCancelled(); ++i) {
        const FolderMergeFile &file = files.at(i);
        if (!mayBeTexts(file))
            continue;
        MergeVersions<QString> paths;
        for (const MergeVersion version : allMergeVersions)
            paths[version] = joinedPath(folders[version], file.path);
        progress.report(int(FolderPhase::Comparing), done++, total, paths.left);
        const std::optional<Texts> texts = readTexts(paths, cancel);
        result.texts += texts ? 1 : 0;
        const QString merged = joinedPath(into, file.path);
        if (texts && writeMerged(*texts, merged, cancel, silent)) {
            keepPermissions(paths, merged);
            result.clean.push_back(i);
        }
    }
    return result;
}

} // namespace velmora

#include "vfs/git/git_hashing.h"

#include "core/crew.h"
#include "vfs/blob_name.h"

#include <QSet>

#include <algorithm>
#include <atomic>

namespace velmora {

namespace {

constexpr qint64 longestTurned = qint64(64) * 1024 * 1024; ///< longer texts stay as they are

QByteArray wholeOf(OpenFile &file)
{
    const qint64 size = file.size().value_or(longestTurned);
    if (size >= longestTurned)
        return {};
    QByteArray bytes(size, Qt::Uninitialized);
    const FilePiece piece = file.readAt(0, bytes.data(), size);
    return piece.length == size ? bytes : QByteArray();
}

/// Names the contents of files one after the other, for one thread.
class Namer {
public:
    Namer(ContentIdentity::Algorithm algorithm, LineEnds ends, const CancelFlag &cancel)
        : m_algorithm(algorithm), m_ends(ends), m_cancel(cancel), m_opener(FileAccess::native().makeOpener())
    {}

    /// Empty when the file cannot be read.
    QByteArray name(const UnnamedFile &unnamed)
    {
        const std::unique_ptr<OpenFile> file = m_opener->open(unnamed.path, OpenHint::ListedAsFile);
        const std::optional<ContentIdentity> found =
            file ? blobName(*file, m_algorithm, m_cancel) : std::optional<ContentIdentity>();
        if (!found)
            return {};
        QByteArray name = found->value.toHex();
        if (m_ends == LineEnds::TurnedWhenAdded && !unnamed.expected.isEmpty() && name != unnamed.expected &&
            turnedName(*file) == unnamed.expected)
            return unnamed.expected;
        return name;
    }

private:
    /// What the name is once git has turned the ends of lines; empty for what it would leave alone.
    QByteArray turnedName(OpenFile &file) const
    {
        QByteArray bytes = wholeOf(file);
        if (!bytes.contains("\r\n") || bytes.contains('\0'))
            return {};
        return blobNameOf(bytes.replace("\r\n", "\n"), m_algorithm);
    }

    ContentIdentity::Algorithm m_algorithm;
    LineEnds m_ends;
    const CancelFlag &m_cancel;
    std::unique_ptr<FileOpener> m_opener;
};

/// Those of the names that neither the repository nor the scratch has.
GitFault findMissing(const QSet<QByteArray> &names, const GitRepository &repository, const GitScratch &scratch,
                     const CancelFlag &cancel, QSet<QByteArray> &missing)
{
    GitCallExtras extras;
    extras.variables = scratch.variables();
    for (const QByteArray &name : names)
        extras.input += name + '\n';
    if (extras.input.isEmpty())
        return {};
    const GitReply reply = repository.caller().call(
        {QStringLiteral("cat-file"), QStringLiteral("--batch-check=%(objectname)")}, cancel, extras);
    for (const QByteArray &line : reply.output.split('\n')) {
        if (line.endsWith(" missing"))
            missing.insert(line.first(line.indexOf(' ')));
    }
    return reply.fault;
}

} // namespace

GitFault nameContents(std::vector<GitFile> &files, const std::vector<UnnamedFile> &unnamed,
                      const GitRepository &repository, const GitScratch &scratch, LineEnds ends,
                      const CancelFlag &cancel, Progress &progress)
{
    std::atomic<std::size_t> next = 0;
    const auto report = [&] {
        progress.report(0, qint64(std::min(next.load(), unnamed.size())), qint64(unnamed.size()));
    };
    const int threads = std::min(crewSize(), int(unnamed.size() / 8 + 1));
    runCrew(
        threads,
        [&](int worker) {
            Namer namer(repository.algorithm, ends, cancel);
            for (std::size_t at = next++; at < unnamed.size() && !cancel.isCancelled(); at = next++) {
                files[unnamed[at].number].entry.name = namer.name(unnamed[at]);
                if (worker == 0)
                    report();
            }
        },
        report);
    if (cancel.isCancelled())
        return {GitFaultKind::Stopped, {}, {}};
    QSet<QByteArray> unknown;
    for (const UnnamedFile &one : unnamed) {
        const QByteArray &name = files[one.number].entry.name;
        if (name.isEmpty())
            return {GitFaultKind::UnreadableFile, one.path, {}};
        if (name != one.expected)
            unknown.insert(name);
    }
    QSet<QByteArray> missing;
    if (GitFault fault = findMissing(unknown, repository, scratch, cancel, missing); fault.isError())
        return fault;
    const std::unique_ptr<FileOpener> opener = FileAccess::native().makeOpener();
    for (const UnnamedFile &one : unnamed) {
        if (!missing.contains(files[one.number].entry.name))
            continue;
        const std::unique_ptr<OpenFile> file = opener->open(one.path, OpenHint::ListedAsFile);
        const std::optional<QByteArray> name = file ? scratch.objects().write(*file, cancel) : std::nullopt;
        if (cancel.isCancelled())
            return {GitFaultKind::Stopped, {}, {}};
        if (!name)
            return {GitFaultKind::UnreadableFile, one.path, {}};
        files[one.number].entry.name = *name;
    }
    return {};
}

} // namespace velmora

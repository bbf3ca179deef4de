#include "vfs/remote/remote_files.h"

#include "vfs/remote/remote_place.h"

#include <algorithm>

namespace velmora {

namespace {

/// A host that reads a whole file for its checksum says nothing meanwhile.
constexpr std::chrono::seconds answerLimit{300};
constexpr qint64 longestLine = 4096;
constexpr const char *greeting = "velmora-files";

/// Questions are two lines: what is wanted, first block, number of blocks, bytes and size; and the name, escaped. dd
/// tells when a file cannot be read, and what is missing of the bytes then is made up, so that the next answer is
/// found. What `many` is asked takes any number of lines.
constexpr const char *script = R"sh(exec 4>&1
echo velmora-files
while IFS=' ' read -r what block blocks bytes size && IFS= read -r line; do
  case $what in sha256 | blobs) many "$what" "$line"; continue ;; esac
  name=$(printf '%bx' "$line"); name=${name%x}
  test -f "$name" && now=$(wc -c 2>/dev/null <"$name") && test "$((now))" -eq "$size" || { echo no; continue; }
  case $what in
  piece)
    echo yes
    end=$( { { dd if="$name" bs=65536 skip="$block" count="$blocks" 2>/dev/null && echo whole >&3; cat /dev/zero; } |
      head -c "$bytes" >&4; } 3>&1 2>/dev/null)
    now=$(wc -c 2>/dev/null <"$name")
    echo "$end $((now))" ;;
  *)
    sum=$( { { printf 'blob %s\0' "$size"; cat "$name" || echo '!' >&3; } | sha1sum; } 3>&1 2>/dev/null)
    case $sum in *'!'*) sum=- ;; esac
    echo "is ${sum%% *}" ;;
  esac
done)sh";

QString commandIn(const QString &folder)
{
    return shellCommand(
        QStringLiteral("unset CDPATH flag; cd %1 || exit 1\nLC_ALL=C; export LC_ALL\n%2%3")
            .arg(shellQuoted(commandFolder(folder)), QLatin1String(remoteDigestFunction()), QLatin1String(script)));
}

/// As the %b of printf takes it, and "./" before it: no name begins with "-".
QByteArray escaped(const QByteArray &name)
{
    QByteArray text = "./" + name;
    text.replace('\\', "\\\\");
    text.replace('\n', "\\n");
    return text;
}

/// What a login writes before the host answers is passed over.
bool isReady(ChildTalk &talk, const CancelFlag &cancel)
{
    constexpr int mostLines = 1000;
    for (int line = 0; line < mostLines && talk.isRunning(); ++line) {
        if (talk.readLine(longestLine, cancel) == greeting)
            return true;
        if (cancel.isCancelled())
            return false;
    }
    return false;
}

/// The first line of the answer; empty where none comes.
QByteArray headOf(ChildTalk &talk, bool isNew, const QByteArray &question, const CancelFlag &cancel)
{
    if ((isNew && !isReady(talk, cancel)) || !talk.ask(question))
        return {};
    return talk.readLine(longestLine, cancel);
}

} // namespace

RemoteFiles::RemoteFiles(const SshTarget &target) : m_desk(sshCall(target, commandIn(target.place.folder), answerLimit))
{}

bool RemoteFiles::readPiece(const File &file, qint64 offset, const Sink &sink, const CancelFlag &cancel) const
{
    constexpr qint64 blockSize = 65536; // of the script
    static_assert(pieceSize % blockSize == 0);
    const qint64 bytes = std::clamp<qint64>(file.size - offset, 0, pieceSize);
    if (bytes == 0)
        return true;
    const QByteArray question = "piece " + QByteArray::number(offset / blockSize) + ' ' +
                                QByteArray::number((bytes + blockSize - 1) / blockSize) + ' ' +
                                QByteArray::number(bytes) + ' ' + QByteArray::number(file.size) + '\n' +
                                escaped(file.name) + '\n';
    const auto answer = [&](ChildTalk &talk, bool isNew, const ChildDesk::Giver &give) {
        const QByteArray head = headOf(talk, isNew, question, cancel);
        if (head != "yes")
            return head == "no" ? ChildDesk::Answer::Refused : ChildDesk::Answer::Broken;
        for (qint64 left = bytes; left > 0;) {
            QByteArray piece = talk.read(left, cancel);
            left -= piece.size();
            if (piece.isEmpty() || !give(std::move(piece)))
                return ChildDesk::Answer::Broken;
        }
        const QByteArray end = talk.readLine(longestLine, cancel);
        if (end == "whole " + QByteArray::number(file.size))
            return ChildDesk::Answer::Whole;
        return end.isEmpty() ? ChildDesk::Answer::Broken : ChildDesk::Answer::Refused;
    };
    return m_desk.ask(answer, sink);
}

std::optional<QByteArray> RemoteFiles::blobName(const File &file, const CancelFlag &cancel) const
{
    constexpr qsizetype digits = 40;
    const QByteArray question = "sum 0 0 0 " + QByteArray::number(file.size) + '\n' + escaped(file.name) + '\n';
    QByteArray name;
    const auto answer = [&](ChildTalk &talk, bool isNew, const ChildDesk::Giver &give) {
        QByteArray head = headOf(talk, isNew, question, cancel);
        if (head == "no")
            return ChildDesk::Answer::Refused;
        if (!head.startsWith("is "))
            return ChildDesk::Answer::Broken;
        return give(head.sliced(3)) ? ChildDesk::Answer::Whole : ChildDesk::Answer::Refused;
    };
    const auto take = [&name](QByteArrayView text) {
        name = QByteArray::fromHex(text.toByteArray());
        return text.size() == digits && name.size() == digits / 2;
    };
    return m_desk.ask(answer, take) ? std::optional(name) : std::nullopt;
}

std::vector<QByteArray> RemoteFiles::digests(std::span<const File> files, RemoteDigest digest,
                                             const CancelFlag &cancel) const
{
    using Taken = RemoteDigestTalk::Taken;
    RemoteDigestTalk asked(files, digest);
    if (asked.asksForNone() || !m_asksForMany)
        return asked.digests();
    bool isAnswered = false;
    const auto answer = [&](ChildTalk &talk, bool isNew, const ChildDesk::Giver &) {
        if ((isNew && !isReady(talk, cancel)) || !talk.ask(asked.question()))
            return ChildDesk::Answer::Broken;
        for (;;) {
            const QByteArray line = talk.readLine(RemoteDigestTalk::longestLine, cancel);
            const Taken taken = line.isEmpty() ? Taken::Odd : asked.take(line);
            isAnswered = taken == Taken::End;
            if (taken != Taken::Line)
                return taken == Taken::Odd ? ChildDesk::Answer::Broken : ChildDesk::Answer::Whole;
        }
    };
    (void)m_desk.ask(answer, {});
    if (!isAnswered && !cancel.isCancelled())
        m_asksForMany = false;
    return isAnswered ? asked.digests() : std::vector<QByteArray>(files.size());
}

} // namespace velmora

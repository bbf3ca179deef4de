#include "vfs/remote/remote_digests.h"

#include <algorithm>

namespace velmora {

namespace {

/// All names are taken, even when nobody wants them any more, or else they would be the next questions.
/// stat says sizes as GNU and busybox have them, or else as the systems of the BSD family do. Each batch of xargs is
/// one more shell, whose arguments are the names. The bytes of a name of Git begin with the size of the file: perl
/// computes many by itself; without it two programs are started for each, and "!" voids what comes of a file that
/// cannot be read to its end.
constexpr const char *function = R"sh(many() {
  if test -z "$flag"; then
    flag=-f form='s%z %N'
    stat -L -c %s . >/dev/null 2>&1 && flag=-c form='s%s %n'
    tool=none
    command -v shasum >/dev/null 2>&1 && tool='shasum -a 256'
    command -v sha256sum >/dev/null 2>&1 && tool=sha256sum
    code='foreach my $n (@ARGV) {
  open(my $f, "<:raw", $n) or next;
  my $d = Digest::SHA->new(1);
  $d->add("blob ", -s $f, "\0");
  eval { $d->addfile($f); 1 } and print $d->hexdigest, "  $n\n";
}'
    perl=no
    perl -MDigest::SHA -e 1 >/dev/null 2>&1 && perl=yes
    export flag form tool code
  fi
  case $1-$perl in
  blobs-yes)
    work='stat -L "$flag" "$form" "$@"; perl -MDigest::SHA -e "$code" "$@"; stat -L "$flag" "$form" "$@"' ;;
  sha256-*)
    work='stat -L "$flag" "$form" "$@"; $tool "$@"; stat -L "$flag" "$form" "$@"' ;;
  *)
    work='stat -L "$flag" "$form" "$@" | while IFS= read -r told; do
  size=${told%% *}; printf "%s\n" "$told"
  { printf "blob %s\0" "${size#s}"; cat "${told#* }" || echo "!" >&3; } | sha1sum
done 3>&1; stat -L "$flag" "$form" "$@"' ;;
  esac
  { trap '' PIPE
    while test -n "$2"; do
      test -f "$2" && printf '%s\0' "$2"
      IFS= read -r name || break
      set -- "$1" "$name"
    done 2>/dev/null; } | xargs -0 sh -c "test \$# -gt 0 || exit 0
$work
exit 0" sh 2>/dev/null
  if test "$1 $tool" = 'sha256 none'; then echo lack; else echo end; fi
}
)sh";

/// Such a name is a line and nothing else, and no program writes it in another way.
bool isPlain(const QByteArray &name)
{
    constexpr qsizetype longest = 4000;
    return name.size() <= longest &&
           std::none_of(name.begin(), name.end(), [](char c) { return c == '\n' || c == '\r' || c == '\\'; });
}

} // namespace

const char *remoteDigestFunction()
{
    return function;
}

RemoteDigestTalk::RemoteDigestTalk(std::span<const RemoteFileName> files, RemoteDigest digest) : m_digest(digest)
{
    m_answers.resize(files.size());
    for (std::size_t i = 0; i < files.size(); ++i) {
        m_answers[i].size = files[i].size;
        const QByteArray name = "./" + files[i].name;
        if (!isPlain(name) || m_places.contains(name))
            continue;
        m_places.insert(name, qsizetype(i));
        m_names.append(name);
    }
    constexpr qint64 linesOfEach = 4;
    m_linesLeft = m_names.size() * linesOfEach + 1;
}

QByteArray RemoteDigestTalk::question() const
{
    QByteArray text = m_digest == RemoteDigest::Sha256 ? "sha256\n" : "blobs\n";
    for (const QByteArray &name : m_names)
        text += name + '\n';
    return text + '\n';
}

RemoteDigestTalk::Taken RemoteDigestTalk::take(QByteArrayView line)
{
    if (line == QByteArrayView("end"))
        return Taken::End;
    if (line == QByteArrayView("lack"))
        return Taken::Lack;
    if (--m_linesLeft < 0)
        return Taken::Odd;
    if (line == QByteArrayView("!")) {
        if (m_current >= 0)
            m_answers[std::size_t(m_current)].isBad = true;
        return Taken::Line;
    }
    return line.startsWith('s') ? takeSize(line.sliced(1)) : takeDigest(line);
}

RemoteDigestTalk::Taken RemoteDigestTalk::takeSize(QByteArrayView line)
{
    const qsizetype blank = line.indexOf(' ');
    m_current = blank < 0 ? -1 : m_places.value(line.sliced(blank + 1).toByteArray(), -1);
    if (m_current < 0)
        return Taken::Odd;
    Answer &answer = m_answers[std::size_t(m_current)];
    ++answer.sizes;
    answer.isBad = answer.isBad || line.first(blank) != QByteArray::number(answer.size);
    return Taken::Line;
}

/// Two blanks, or one and a sign, stand between a digest and the name; "-" is what was read last.
RemoteDigestTalk::Taken RemoteDigestTalk::takeDigest(QByteArrayView line)
{
    const bool isOfBytes = m_digest == RemoteDigest::Sha256;
    const qsizetype bytes = isOfBytes ? 32 : 20;
    const qsizetype digits = 2 * bytes;
    if (line.size() < digits + 3 || line[digits] != ' ')
        return Taken::Odd;
    const QByteArray name = line.sliced(digits + 2).toByteArray();
    const qsizetype place = !isOfBytes && name == "-" ? m_current : m_places.value(name, -1);
    const QByteArray value = QByteArray::fromHex(line.first(digits).toByteArray());
    if (place < 0 || value.size() != bytes)
        return Taken::Odd;
    Answer &answer = m_answers[std::size_t(place)];
    answer.isBad = answer.isBad || !answer.value.isEmpty();
    answer.value = value;
    return Taken::Line;
}

std::vector<QByteArray> RemoteDigestTalk::digests() const
{
    constexpr int toldTwice = 2;
    std::vector<QByteArray> values;
    values.reserve(m_answers.size());
    for (const Answer &answer : m_answers)
        values.push_back(answer.isBad || answer.sizes != toldTwice ? QByteArray() : answer.value);
    return values;
}

} // namespace velmora

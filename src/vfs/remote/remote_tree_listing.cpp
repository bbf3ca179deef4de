#include "vfs/remote/remote_tree_listing.h"

#include "vfs/remote/remote_place.h"

#include <QByteArrayView>
#include <QList>

#include <algorithm>
#include <optional>
#include <utility>

namespace velmora {

namespace {

constexpr QByteArrayView findMark("velmora-tree-1\n");
constexpr QByteArrayView statMark("velmora-tree-2\n");

/// The command that lists; the folder is the one that it runs in.
constexpr const char *script = R"sh(if test "$(find . -maxdepth 0 -readable -printf x 2>/dev/null)" = x; then
  printf 'velmora-tree-1\n'
  find . -mindepth 1 -type d '(' ! -readable -o ! -executable ')' -printf 'u %s %T@\0%P\0\0' -prune \
    -o -printf '%y %s %T@\0%P\0%l\0' 2>/dev/null
elif stat -c %n . >/dev/null 2>&1; then
  printf 'velmora-tree-2\n'
  find . -exec stat -c '%f %s %Y %n' {} + 2>/dev/null
else
  printf 'velmora-tree-2\n'
  find . -exec stat -f '%Xp %z %m %N' {} + 2>/dev/null
fi
printf 'end %s' "$?")sh";

std::optional<qint64> numberOf(QByteArrayView digits)
{
    constexpr qsizetype longest = 18; // fits into 64 bits
    if (digits.isEmpty() || digits.size() > longest ||
        !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    return digits.toLongLong();
}

/// "1700000000.1239999990": milliseconds, the rest of the fraction left out as listings here do.
qint64 timeOf(QByteArrayView text)
{
    constexpr qint64 most = qint64(1) << 40; // seconds; beyond no date is one
    const qsizetype dot = text.indexOf('.');
    const QByteArrayView whole = dot < 0 ? text : text.first(dot);
    const bool isBefore = whole.startsWith('-');
    const auto seconds = numberOf(isBefore ? whole.sliced(1) : whole);
    if (!seconds || *seconds > most)
        return 0;
    const QByteArray fraction =
        (dot < 0 ? QByteArray() : text.sliced(dot + 1).first(qMin<qsizetype>(3, text.size() - dot - 1)).toByteArray());
    const qint64 milliseconds = numberOf(fraction.leftJustified(3, '0')).value_or(0);
    return (isBefore ? -*seconds : *seconds) * 1000 + milliseconds;
}

struct Words {
    QByteArrayView first, second, third, rest;
};

/// Three words with a blank behind each, and what comes then.
std::optional<Words> wordsOf(QByteArrayView line)
{
    Words words;
    for (QByteArrayView *word : {&words.first, &words.second, &words.third}) {
        const qsizetype end = line.indexOf(' ');
        *word = line.first(end < 0 ? line.size() : end);
        if (end < 0 && word != &words.third)
            return std::nullopt;
        line = line.sliced(end < 0 ? line.size() : end + 1);
    }
    words.rest = line;
    return words;
}

ArchiveEntryKind kindOf(char type)
{
    switch (type) {
    case 'f':
        return ArchiveEntryKind::File;
    case 'd':
    case 'u':
        return ArchiveEntryKind::Folder;
    case 'l':
        return ArchiveEntryKind::Link;
    default:
        return ArchiveEntryKind::Special;
    }
}

ArchiveEntryKind kindOfMode(quint32 mode)
{
    constexpr quint32 typeMask = 0170000;
    constexpr quint32 folder = 0040000;
    constexpr quint32 file = 0100000;
    constexpr quint32 link = 0120000;
    const quint32 type = mode & typeMask;
    if (type == file)
        return ArchiveEntryKind::File;
    if (type == folder)
        return ArchiveEntryKind::Folder;
    return type == link ? ArchiveEntryKind::Link : ArchiveEntryKind::Special;
}

class Parser {
public:
    Parser(QByteArrayView text, qint64 most) : m_rest(text), m_most(most) {}

    RemoteTreeListing finish() { return std::move(m_listing); }

    void takeFound()
    {
        while (!isFull()) {
            const std::optional<QByteArrayView> head = next('\0');
            if (!head) {
                m_listing.isWhole = m_rest == QByteArrayView("end 0");
                return;
            }
            const auto path = next('\0');
            const auto target = next('\0');
            const std::optional<Words> words = wordsOf(*head);
            const auto size = words ? numberOf(words->second) : std::nullopt;
            if (!path || !target || !size || words->first.size() != 1)
                return;
            ArchiveEntry entry;
            entry.kind = kindOf(words->first.front());
            entry.cannotList = words->first.front() == 'u';
            entry.target = target->toByteArray();
            add(std::move(entry), *path, *size, timeOf(words->third));
        }
    }

    void takeLines()
    {
        bool isBroken = false;
        while (!isFull()) {
            const std::optional<QByteArrayView> line = next('\n');
            if (!line)
                break;
            const std::optional<Words> words = wordsOf(*line);
            const auto size = words ? numberOf(words->second) : std::nullopt;
            bool isMode = false;
            const quint32 mode = words ? words->first.toUInt(&isMode, 16) : 0;
            if (!isMode || !size || !words->rest.startsWith('.')) {
                // The rest of a name: what comes before it was not all.
                if (!isBroken && !m_listing.entries.empty())
                    m_listing.entries.pop_back();
                m_listing.unlisted += isBroken ? 0 : 1;
                isBroken = true;
                continue;
            }
            isBroken = false;
            if (words->rest.size() <= 2) // the folder itself
                continue;
            ArchiveEntry entry;
            entry.kind = kindOfMode(mode);
            entry.mode = mode & 0777U;
            add(std::move(entry), words->rest.sliced(2), *size, timeOf(words->third));
        }
        m_listing.isWhole = m_rest == QByteArrayView("end 0");
    }

private:
    [[nodiscard]] bool isFull() const { return qint64(m_listing.entries.size()) > m_most; }

    /// Up to `end`, which is taken away; nothing when there is no more.
    std::optional<QByteArrayView> next(char end)
    {
        const qsizetype at = m_rest.indexOf(end);
        if (at < 0)
            return std::nullopt;
        const QByteArrayView text = m_rest.first(at);
        m_rest = m_rest.sliced(at + 1);
        return text;
    }

    void add(ArchiveEntry &&entry, QByteArrayView path, qint64 size, qint64 timeMs)
    {
        entry.name = path.toByteArray();
        if (entry.kind == ArchiveEntryKind::Folder)
            entry.name += '/';
        entry.size = entry.kind == ArchiveEntryKind::File ? size : 0;
        entry.modifiedMs = timeMs;
        entry.position = qint64(m_listing.entries.size());
        m_listing.entries.push_back(std::move(entry));
    }

    QByteArrayView m_rest;
    qint64 m_most;
    RemoteTreeListing m_listing;
};

} // namespace

QString treeCommand(const QString &folder)
{
    const QString quoted = shellQuoted(commandFolder(folder));
    return shellCommand(
        QStringLiteral(
            "unset CDPATH; test -d %1 || { test -e %1 && exit %4; exit %2; }; cd %1 && test -r . || exit %3\n"
            "LC_ALL=C; export LC_ALL\n%5")
            .arg(quoted, QString::number(noFolderStatus), QString::number(noAccessStatus),
                 QString::number(otherThanFolderStatus), QLatin1String(script)));
}

RemoteTreeListing parseTreeListing(const QByteArray &output, qint64 most)
{
    const QByteArrayView text(output);
    const qsizetype found = text.indexOf(findMark);
    const qsizetype lines = text.indexOf(statMark);
    if (found < 0 && lines < 0)
        return {};
    const bool isFound = found >= 0 && (lines < 0 || found < lines);
    Parser parser(text.sliced((isFound ? found : lines) + findMark.size()), most);
    if (isFound)
        parser.takeFound();
    else
        parser.takeLines();
    RemoteTreeListing listing = parser.finish();
    listing.isMarked = true;
    return listing;
}

} // namespace velmora

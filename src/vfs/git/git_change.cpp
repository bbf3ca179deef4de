#include "vfs/git/git_change.h"

#include "platform/file_access.h"

#include <QHash>

#include <algorithm>
#include <string_view>

namespace velmora {

namespace {

constexpr std::string_view letters = " MADRCT"; ///< by `GitStatus`

QString pathOf(const QByteArray &bytes)
{
    return nameFromNative({bytes.constData(), std::size_t(bytes.size())});
}

/// Takes a text apart that ends each piece with a zero byte.
class Pieces {
public:
    explicit Pieces(const QByteArray &text) : m_text(text) {}

    [[nodiscard]] bool atEnd() const { return m_at >= m_text.size(); }
    bool next(QByteArray &piece)
    {
        const qsizetype end = m_text.indexOf('\0', m_at);
        if (end < 0)
            return false;
        piece = m_text.sliced(m_at, end - m_at);
        m_at = end + 1;
        return true;
    }

private:
    const QByteArray &m_text;
    qsizetype m_at = 0;
};

/// ":100644 100755 <name> <name> R087".
bool readHead(const QByteArray &head, GitChange &change)
{
    const QList<QByteArray> parts = head.mid(1).split(' ');
    if (!head.startsWith(':') || parts.size() != 5 || parts.at(4).isEmpty())
        return false;
    bool leftOk = false;
    bool rightOk = false;
    change.entries.left = {parts.at(0).toUInt(&leftOk, 8), parts.at(2)};
    change.entries.right = {parts.at(1).toUInt(&rightOk, 8), parts.at(3)};
    const std::size_t letter = letters.find(parts.at(4).front());
    change.status = letter == std::string_view::npos ? GitStatus::Modified : GitStatus(letter);
    change.likeness = parts.at(4).mid(1).toInt();
    return leftOk && rightOk && letter != std::string_view::npos && letter != 0;
}

bool hasTwoNames(GitStatus status)
{
    return status == GitStatus::Renamed || status == GitStatus::Copied;
}

std::optional<GitLines> linesOf(const QByteArray &added, const QByteArray &removed, bool &ok)
{
    if (added == "-" && removed == "-")
        return std::nullopt;
    bool addedOk = false;
    bool removedOk = false;
    const GitLines lines{added.toLongLong(&addedOk), removed.toLongLong(&removedOk)};
    ok = addedOk && removedOk;
    return lines;
}

} // namespace

char gitStatusLetter(GitStatus status)
{
    return letters[std::size_t(status)];
}

std::optional<std::vector<GitChange>> parseRawChanges(const QByteArray &raw)
{
    std::vector<GitChange> changes;
    for (Pieces pieces(raw); !pieces.atEnd();) {
        GitChange change;
        QByteArray head;
        QByteArray path;
        if (!pieces.next(head) || !readHead(head, change) || !pieces.next(path))
            return std::nullopt;
        change.paths.left = pathOf(path);
        change.paths.right = change.paths.left;
        if (change.status == GitStatus::Added)
            change.paths.left.clear();
        if (change.status == GitStatus::Deleted)
            change.paths.right.clear();
        if (hasTwoNames(change.status)) {
            if (!pieces.next(path))
                return std::nullopt;
            change.paths.right = pathOf(path);
        }
        changes.push_back(std::move(change));
    }
    return changes;
}

bool takeLineCounts(const QByteArray &counts, std::vector<GitChange> &changes)
{
    QHash<QString, std::size_t> places;
    for (std::size_t i = 0; i < changes.size(); ++i)
        places.insert(changes[i].path(), i);
    for (Pieces pieces(counts); !pieces.atEnd();) {
        QByteArray line;
        if (!pieces.next(line))
            return false;
        const QList<QByteArray> head =
            line.first(std::max<qsizetype>(0, line.indexOf('\t', line.indexOf('\t') + 1))).split('\t');
        QByteArray path = line.mid(line.indexOf('\t', line.indexOf('\t') + 1) + 1);
        QByteArray from;
        if (head.size() != 2 || (path.isEmpty() && !(pieces.next(from) && pieces.next(path))))
            return false;
        bool ok = true;
        const std::optional<GitLines> lines = linesOf(head.at(0), head.at(1), ok);
        const auto place = places.constFind(pathOf(path));
        if (!ok)
            return false;
        if (place != places.constEnd())
            changes[*place].lines = lines;
    }
    return true;
}

std::optional<std::vector<GitFile>> parseTreeListing(const QByteArray &listing)
{
    std::vector<GitFile> files;
    for (Pieces pieces(listing); !pieces.atEnd();) {
        QByteArray line;
        if (!pieces.next(line))
            return std::nullopt;
        const qsizetype tab = line.indexOf('\t');
        const QList<QByteArray> head = line.first(std::max<qsizetype>(tab, 0)).split(' ');
        bool ok = false;
        const quint32 mode = head.value(0).toUInt(&ok, 8);
        if (head.size() != 3 || !ok)
            return std::nullopt;
        files.push_back({pathOf(line.mid(tab + 1)), {mode, head.at(2)}});
    }
    return files;
}

bool leadsElsewhere(const QString &path)
{
    for (const QStringView part : QStringView(path).tokenize(u'/')) {
        if (part.isEmpty() || part == u"." || part == u".." || part.contains(u'\\') ||
            part.compare(u".git", Qt::CaseInsensitive) == 0 ||
            part.compare(u"git~1", Qt::CaseInsensitive) == 0) // what Windows calls it, too
            return true;
    }
    return false;
}

} // namespace velmora

#include "vfs/git/git_index.h"

namespace velmora {

namespace {

/// Reads a listing from its beginning on; every step says whether the listing was as expected.
class Reader {
public:
    explicit Reader(const QByteArray &text) : m_text(text) {}

    [[nodiscard]] bool atEnd() const { return m_at >= m_text.size(); }

    /// What stands before the next `end`, which is passed.
    bool until(char end, QByteArrayView &piece)
    {
        const qsizetype found = m_text.indexOf(end, m_at);
        if (found < 0)
            return false;
        piece = QByteArrayView(m_text).sliced(m_at, found - m_at);
        m_at = found + 1;
        return true;
    }

private:
    const QByteArray &m_text;
    qsizetype m_at = 0;
};

/// The number between `name` and whatever follows it in a line.
bool numberBehind(QByteArrayView line, QByteArrayView name, int base, quint64 &number)
{
    const qsizetype at = line.indexOf(name);
    if (at < 0)
        return false;
    QByteArrayView digits = line.sliced(at + name.size());
    const auto isDigit = [base](char one) {
        return (one >= '0' && one <= '9') || (base == 16 && one >= 'a' && one <= 'f');
    };
    qsizetype length = 0;
    while (length < digits.size() && isDigit(digits[length]))
        ++length;
    bool ok = false;
    number = digits.first(length).toByteArray().toULongLong(&ok, base);
    return ok;
}

/// "100644 <name> 0" before the tabulator.
bool readHead(QByteArrayView head, GitIndexEntry &entry)
{
    const QList<QByteArray> parts = head.toByteArray().split(' ');
    bool modeOk = false;
    bool stageOk = false;
    entry.entry.mode = parts.value(0).toUInt(&modeOk, 8);
    entry.entry.name = parts.value(1);
    entry.stage = parts.value(2).toInt(&stageOk);
    return parts.size() == 3 && modeOk && stageOk;
}

bool readFacts(Reader &reader, GitIndexEntry &entry)
{
    QByteArrayView line;
    quint64 seconds = 0;
    quint64 flags = 0;
    quint64 size = 0;
    quint64 nanoseconds = 0;
    constexpr quint64 assumedUnchanged = 0x8000;
    constexpr quint64 notCheckedOut = 0x40000000;
    const bool ok = reader.until('\n', line) && line.startsWith("  ctime: ") && reader.until('\n', line) &&
                    numberBehind(line, "mtime: ", 10, seconds) &&
                    numberBehind(line.sliced(line.lastIndexOf(':')), ":", 10, nanoseconds) &&
                    reader.until('\n', line) && reader.until('\n', line) && reader.until('\n', line) &&
                    numberBehind(line, "size: ", 10, size) && numberBehind(line, "flags: ", 16, flags);
    entry.modifiedNs = qint64(seconds) * 1'000'000'000 + qint64(nanoseconds);
    entry.size = quint32(size);
    entry.isHeldToMatch = (flags & (assumedUnchanged | notCheckedOut)) != 0;
    return ok;
}

} // namespace

std::optional<std::vector<GitIndexEntry>> parseIndexListing(const QByteArray &listing)
{
    std::vector<GitIndexEntry> entries;
    for (Reader reader(listing); !reader.atEnd();) {
        GitIndexEntry entry;
        QByteArrayView head;
        QByteArrayView path;
        if (!reader.until('\t', head) || !readHead(head, entry) || !reader.until('\0', path) ||
            !readFacts(reader, entry))
            return std::nullopt;
        entry.path = nameFromNative({path.data(), std::size_t(path.size())});
        entries.push_back(std::move(entry));
    }
    return entries;
}

} // namespace velmora

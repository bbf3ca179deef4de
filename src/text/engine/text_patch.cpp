#include "text/engine/text_patch.h"

#include <algorithm>
#include <span>

namespace velmora {

namespace {

constexpr qsizetype contextLines = 3;

/// Walks through both texts in step and collects what is not the same.
class ChangeCollector {
public:
    ChangeCollector(const TextLines &left, const TextLines &right) : m_left(left), m_right(right) {}

    /// Takes the lines in front of `leftEnd` and `rightEnd` that no row has mentioned.
    void skipTo(qsizetype leftEnd, qsizetype rightEnd)
    {
        while (m_leftAt < leftEnd || m_rightAt < rightEnd)
            take(m_leftAt < leftEnd, m_rightAt < rightEnd);
    }

    /// Takes the next line of the sides named.
    void take(bool hasLeft, bool hasRight)
    {
        if (hasLeft && hasRight && isSame()) {
            close();
        } else {
            if (!m_open)
                m_changes.push_back({m_leftAt, m_leftAt, m_rightAt, m_rightAt});
            m_open = true;
            m_changes.back().leftEnd += hasLeft;
            m_changes.back().rightEnd += hasRight;
        }
        m_leftAt += hasLeft;
        m_rightAt += hasRight;
    }

    [[nodiscard]] std::vector<PatchChange> finish()
    {
        skipTo(m_left.count(), m_right.count());
        return std::move(m_changes);
    }

private:
    [[nodiscard]] bool isSame() const
    {
        return m_left.line(m_leftAt) == m_right.line(m_rightAt) &&
               m_left.lineEnd(m_leftAt) == m_right.lineEnd(m_rightAt);
    }

    void close() { m_open = false; }

    const TextLines &m_left;
    const TextLines &m_right;
    qsizetype m_leftAt = 0;
    qsizetype m_rightAt = 0;
    bool m_open = false;
    std::vector<PatchChange> m_changes;
};

/// A file name as `patch` reads it back: quoted where it would be taken for something else.
QByteArray patchName(const QString &path)
{
    const QByteArray utf8 = path.toUtf8();
    const auto isSpecial = [](char byte) {
        return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F || byte == '"' || byte == '\\';
    };
    if (std::none_of(utf8.begin(), utf8.end(), isSpecial)) {
        // A tab ends a name that holds spaces.
        return utf8.contains(' ') ? utf8 + '\t' : utf8;
    }
    QByteArray quoted = "\"";
    for (const char byte : utf8) {
        if (byte == '"' || byte == '\\')
            quoted.append('\\').append(byte);
        else if (isSpecial(byte))
            quoted.append('\\').append(QByteArray::number(static_cast<unsigned char>(byte), 8).rightJustified(3, '0'));
        else
            quoted.append(byte);
    }
    return quoted + '"';
}

void writeRange(OutputBuffer &output, qsizetype begin, qsizetype end)
{
    const qsizetype count = end - begin;
    // The number of an empty range is that of the line in front of it.
    output << qint64(count == 0 ? begin : begin + 1);
    if (count != 1)
        output << ',' << qint64(count);
}

void writeLines(OutputBuffer &output, char sign, const TextLines &lines, qsizetype begin, qsizetype end)
{
    for (qsizetype index = begin; index < end; ++index) {
        const LineEnd lineEnd = lines.lineEnd(index);
        output << sign << lines.line(index) << lineEndBytes(lineEnd);
        if (lineEnd == LineEnd::None || lineEnd == LineEnd::Cr)
            output << "\n\\ No newline at end of file\n";
    }
}

/// How many lines longer `changes` make the text.
qsizetype growth(std::span<const PatchChange> changes)
{
    qsizetype lines = 0;
    for (const PatchChange &change : changes)
        lines += (change.rightEnd - change.rightBegin) - (change.leftEnd - change.leftBegin);
    return lines;
}

/// One hunk for changes that lie so close that their contexts meet; `shift` is the growth by those before.
void writeHunk(OutputBuffer &output, std::span<const PatchChange> changes, qsizetype shift, const TextLines &left,
               const TextLines &right)
{
    const PatchChange &first = changes.front();
    const PatchChange &last = changes.back();
    const qsizetype before = std::min(first.leftBegin, contextLines);
    const qsizetype after = std::min(left.count() - last.leftEnd, contextLines);
    output << "@@ -";
    writeRange(output, first.leftBegin - before, last.leftEnd + after);
    output << " +";
    writeRange(output, first.leftBegin - before + shift, last.leftEnd + after + shift + growth(changes));
    output << " @@\n";

    qsizetype at = first.leftBegin - before;
    for (const PatchChange &change : changes) {
        writeLines(output, ' ', left, at, change.leftBegin);
        writeLines(output, '-', left, change.leftBegin, change.leftEnd);
        writeLines(output, '+', right, change.rightBegin, change.rightEnd);
        at = change.leftEnd;
    }
    writeLines(output, ' ', left, at, last.leftEnd + after);
}

} // namespace

std::vector<PatchChange> byteChanges(const QList<AlignedRow> &rows, const TextLines &left, const TextLines &right)
{
    ChangeCollector collector(left, right);
    for (const AlignedRow &row : rows) {
        const bool hasLeft = row.leftLine >= 1;
        const bool hasRight = row.rightLine >= 1;
        collector.skipTo(hasLeft ? row.leftLine - 1 : 0, hasRight ? row.rightLine - 1 : 0);
        collector.take(hasLeft, hasRight);
    }
    return collector.finish();
}

std::vector<PatchChange> changesWithin(const std::vector<PatchChange> &changes, const PatchChange &lines)
{
    std::vector<PatchChange> within;
    for (const PatchChange &change : changes) {
        PatchChange part{std::max(change.leftBegin, lines.leftBegin), std::min(change.leftEnd, lines.leftEnd),
                         std::max(change.rightBegin, lines.rightBegin), std::min(change.rightEnd, lines.rightEnd)};
        const bool removes = part.leftBegin < part.leftEnd;
        const bool adds = part.rightBegin < part.rightEnd;
        if (!removes && !adds)
            continue;
        // What is only added or only removed keeps its place on the other side.
        if (!removes)
            part.leftBegin = part.leftEnd = std::clamp(change.leftEnd, lines.leftBegin, lines.leftEnd);
        if (!adds)
            part.rightBegin = part.rightEnd = std::clamp(change.rightEnd, lines.rightBegin, lines.rightEnd);
        within.push_back(part);
    }
    return within;
}

void writePatch(OutputBuffer &output, const std::vector<PatchChange> &changes, const QString &leftPath,
                const TextLines &left, const QString &rightPath, const TextLines &right)
{
    if (changes.empty())
        return;
    const QByteArray leftName = patchName(leftPath);
    const QByteArray rightName = patchName(rightPath);
    output << "--- " << std::string_view(leftName.constData(), size_t(leftName.size())) << "\n+++ "
           << std::string_view(rightName.constData(), size_t(rightName.size())) << "\n";

    const std::span<const PatchChange> all(changes);
    qsizetype shift = 0;
    for (size_t begin = 0; begin < all.size();) {
        size_t end = begin + 1;
        while (end < all.size() && all[end].leftBegin - all[end - 1].leftEnd <= 2 * contextLines)
            ++end;
        const std::span<const PatchChange> hunk = all.subspan(begin, end - begin);
        writeHunk(output, hunk, shift, left, right);
        shift += growth(hunk);
        begin = end;
    }
}

} // namespace velmora

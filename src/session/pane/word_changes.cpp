#include "session/pane/word_changes.h"

#include "text/engine/sequence_matcher.h"

#include <QHash>

#include <vector>

namespace velmora {

namespace {

// Beyond this, a changed place is shown as a whole: it would take long, and show letters that agree by chance.
constexpr qint64 cellsOfCharacters = 100'000;

/// A text cut into words (letters, digits and underscores), runs of blanks and single other characters.
struct Words {
    std::vector<qint32> ids;    ///< equal for equal words
    std::vector<qint32> starts; ///< in units, and behind the last word the length of the text
};

Words cut(QStringView text, QHash<QStringView, qint32> &known)
{
    Words words;
    for (qsizetype at = 0; at < text.size();) {
        const CharacterClass kind = classOf(text.at(at));
        qsizetype end = at + 1;
        while (kind != CharacterClass::Other && end < text.size() && classOf(text.at(end)) == kind)
            ++end;
        const QStringView word = text.mid(at, end - at);
        const auto found = known.constFind(word);
        words.ids.push_back(found != known.constEnd() ? *found : qint32(known.size()));
        if (found == known.constEnd())
            known.insert(word, qint32(known.size()));
        words.starts.push_back(qint32(at));
        at = end;
    }
    words.starts.push_back(qint32(text.size()));
    return words;
}

void append(QList<CharRange> &ranges, const CharRange &range)
{
    if (range.length == 0)
        return;
    if (!ranges.isEmpty() && ranges.last().start + ranges.last().length == range.start)
        ranges.last().length += range.length;
    else
        ranges.append(range);
}

/// The changed characters of two short stretches.
void appendCharacters(WordChanges &changes, QStringView left, const CharRange &one, QStringView right,
                      const CharRange &other, const CancelFlag &cancel)
{
    const auto units = [](QStringView text, const CharRange &range) {
        const char16_t *begin = text.utf16() + range.start;
        return std::vector<qint32>(begin, begin + range.length);
    };
    std::vector<MatchPair> pairs = matchSequences(units(left, one), units(right, other), characterTableLimit, cancel);
    pairs.push_back({one.length, other.length});
    MatchPair from;
    for (const MatchPair &pair : pairs) {
        append(changes.left, {one.start + from.i, pair.i - from.i});
        append(changes.right, {other.start + from.j, pair.j - from.j});
        from = {pair.i + 1, pair.j + 1};
    }
}

} // namespace

CharacterClass classOf(QChar unit)
{
    if (unit.isLetterOrNumber() || unit == u'_' || unit.isSurrogate() || unit.isMark())
        return CharacterClass::Word;
    return unit.isSpace() ? CharacterClass::Space : CharacterClass::Other;
}

WordChanges wordChanges(QStringView left, QStringView right, const CancelFlag &cancel)
{
    QHash<QStringView, qint32> known;
    const Words a = cut(left, known);
    const Words b = cut(right, known);
    std::vector<MatchPair> pairs = matchSequences(a.ids, b.ids, lineTableLimit, cancel);
    if (cancel.isCancelled())
        return {};
    pairs.push_back({qint32(a.ids.size()), qint32(b.ids.size())});

    WordChanges changes;
    MatchPair from;
    for (const MatchPair &pair : pairs) {
        const CharRange one{a.starts[std::size_t(from.i)],
                            a.starts[std::size_t(pair.i)] - a.starts[std::size_t(from.i)]};
        const CharRange other{b.starts[std::size_t(from.j)],
                              b.starts[std::size_t(pair.j)] - b.starts[std::size_t(from.j)]};
        from = {pair.i + 1, pair.j + 1};
        if (one.length == 0 || other.length == 0 || qint64(one.length) * other.length > cellsOfCharacters) {
            append(changes.left, one);
            append(changes.right, other);
            continue;
        }
        appendCharacters(changes, left, one, right, other, cancel);
    }
    return changes;
}

} // namespace velmora

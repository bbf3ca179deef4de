#include "filetypes/mp3/engine/song_compare.h"

#include "filetypes/mp3/engine/common_fields.h"
#include "filetypes/mp3/engine/field_meaning.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace velmora {

namespace {

int rankOf(const SongField &field)
{
    static constexpr std::array factOrder{
        factKey::format,       factKey::length,         factKey::bitRate,    factKey::rateMode,   factKey::sampleRate,
        factKey::channels,     factKey::channelMode,    factKey::sampleBits, factKey::encoder,    factKey::gaps,
        factKey::frames,       factKey::declaredFrames, factKey::soundSize,  factKey::storedHash, factKey::soundHash,
        factKey::id3v2Version, factKey::fileSize,       factKey::fileHash};
    if (isTag(field.group))
        return int(commonField(field.group, field.key));
    if (field.group == SongGroup::Common)
        return int(commonFieldNamed(field.key));
    const auto found = std::find_if(factOrder.begin(), factOrder.end(),
                                    [&](const char *key) { return field.key == QLatin1String(key); });
    return int(found - factOrder.begin());
}

/// A field and its place among the fields that are the same thing.
struct Placed {
    const SongField *field;
    int rank;
    int turn = 0;
};

int order(const Placed &a, const Placed &b)
{
    if (a.field->group != b.field->group)
        return int(a.field->group) - int(b.field->group);
    if (a.rank != b.rank)
        return a.rank - b.rank;
    if (const int keys = a.field->key.compare(b.field->key); keys != 0)
        return keys;
    if (const int items = a.field->item.compare(b.field->item); items != 0)
        return items;
    return a.turn - b.turn;
}

std::vector<Placed> placed(const QList<SongField> &fields)
{
    std::vector<Placed> all;
    for (const SongField &field : fields)
        all.push_back({&field, rankOf(field)});
    const auto isBefore = [](const Placed &a, const Placed &b) { return order(a, b) < 0; };
    std::stable_sort(all.begin(), all.end(), isBefore);
    for (std::size_t k = 1; k < all.size(); ++k) {
        if (all[k].field->isSameThing(*all[k - 1].field))
            all[k].turn = all[k - 1].turn + 1;
    }
    return all;
}

/// The fields that only the systems of one side have; of another system what both can say comes as `Common`.
QList<SongField> allFields(const Song &song, SoundFormat other, const QString &charset)
{
    QList<SongField> fields = song.facts + contradictions(song.tags, charset);
    if (mainSystem(song.format) == mainSystem(other))
        return fields + song.tags.fields;
    const SongGroup system = usedSystem(song.tags, song.format);
    fields += commonFields(song.tags, system, charset);
    std::copy_if(song.tags.fields.begin(), song.tags.fields.end(), std::back_inserter(fields),
                 [&](const SongField &field) { return field.group != system || !meaningOf(field); });
    return fields;
}

/// Whether files with different tag systems say the same of all that both can say, and nothing else.
bool saySame(const Song &left, const Song &right)
{
    Sides<QList<SongField>> fields;
    for (const Side side : bothSides) {
        const Song &song = side == Side::Left ? left : right;
        const SongGroup system = usedSystem(song.tags, song.format);
        fields[side] = commonFields(song.tags, system, {});
        std::copy_if(song.tags.fields.begin(), song.tags.fields.end(), std::back_inserter(fields[side]),
                     [&](const SongField &field) { return field.group == system && !meaningOf(field); });
        fields[side].removeIf([](const SongField &field) {
            return field.group == SongGroup::Common && commonFieldNamed(field.key) == CommonField::Encoder;
        });
    }
    return areSame({fields.left, {}}, {fields.right, {}});
}

SongRow rowOf(const SongField *left, const SongField *right, const QString &charset)
{
    SongRow row;
    const SongField &first = left ? *left : *right;
    row.field.group = first.group;
    row.field.key = first.key;
    row.field.item = first.item;
    for (const auto &[side, field] : {std::pair(Side::Left, left), std::pair(Side::Right, right)}) {
        if (field) {
            row.values[side] = valueIn(*field, charset);
            row.pictures[side] = field->picture;
        }
    }
    if (left && right)
        row.status = row.values.left == row.values.right ? PairStatus::Same : PairStatus::Changed;
    else
        row.status = left ? PairStatus::LeftOnly : PairStatus::RightOnly;
    return row;
}

} // namespace

const char *songVerdictName(SongVerdict verdict)
{
    static constexpr std::array names{"sameFile", "sameContents", "sameSound", "sameSamples", "sameTags", "different"};
    return names[std::size_t(verdict)];
}

bool areSame(const SongTags &left, const SongTags &right)
{
    const std::vector<Placed> lefts = placed(left.fields);
    const std::vector<Placed> rights = placed(right.fields);
    return std::equal(lefts.begin(), lefts.end(), rights.begin(), rights.end(), [](const Placed &a, const Placed &b) {
        return a.field->isSameThing(*b.field) && a.field->value == b.field->value;
    });
}

SongVerdict judgeSongs(const Song &left, const Song &right)
{
    if (left.fileHash == right.fileHash)
        return SongVerdict::SameFile;
    const bool haveSameTags =
        mainSystem(left.format) == mainSystem(right.format) ? areSame(left.tags, right.tags) : saySame(left, right);
    if (left.soundHash == right.soundHash)
        return haveSameTags ? SongVerdict::SameContents : SongVerdict::SameSound;
    const bool areWhole = !left.isCutOff && !right.isCutOff; // or the noted samples are not those that are there
    if (areWhole && !left.samplesHash.isEmpty() && left.samplesHash == right.samplesHash)
        return SongVerdict::SameSamples;
    return haveSameTags && !left.tags.fields.isEmpty() ? SongVerdict::SameTags : SongVerdict::Different;
}

QList<SongRow> compareSongs(const Song &left, const Song &right, const QString &charset)
{
    const QList<SongField> leftFields = allFields(left, right.format, charset);
    const QList<SongField> rightFields = allFields(right, left.format, charset);
    const std::vector<Placed> lefts = placed(leftFields);
    const std::vector<Placed> rights = placed(rightFields);
    QList<SongRow> rows;
    auto l = lefts.begin();
    auto r = rights.begin();
    while (l != lefts.end() || r != rights.end()) {
        const int sign = l == lefts.end() ? 1 : r == rights.end() ? -1 : order(*l, *r);
        rows.append(rowOf(sign <= 0 ? (l++)->field : nullptr, sign >= 0 ? (r++)->field : nullptr, charset));
        if (rows.last().field.group == SongGroup::Common)
            rows.last().systems = {usedSystem(left.tags, left.format), usedSystem(right.tags, right.format)};
    }
    return rows;
}

} // namespace velmora

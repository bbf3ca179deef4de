#include "filetypes/mp3/engine/field_meaning.h"

#include "filetypes/mp3/engine/tag_items.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {

constexpr QLatin1String textKey("text");
constexpr QLatin1String frontCover("3");

struct OtherName {
    QLatin1String name;
    CommonField field;
};

/// Names that programs write into Vorbis comments beside the usual ones.
constexpr std::array otherVorbisNames{OtherName{QLatin1String("DESCRIPTION"), CommonField::Comment},
                                      OtherName{QLatin1String("UNSYNCEDLYRICS"), CommonField::Lyrics},
                                      OtherName{QLatin1String("YEAR"), CommonField::Year},
                                      OtherName{QLatin1String("LABEL"), CommonField::Publisher},
                                      OtherName{QLatin1String("PUBLISHER"), CommonField::Publisher}};

/// What a number is out of, which other systems have beside it.
constexpr std::array vorbisTotals{OtherName{QLatin1String("TRACKTOTAL"), CommonField::Track},
                                  OtherName{QLatin1String("TOTALTRACKS"), CommonField::Track},
                                  OtherName{QLatin1String("DISCTOTAL"), CommonField::Disc},
                                  OtherName{QLatin1String("TOTALDISCS"), CommonField::Disc}};

template <std::size_t size>
CommonField fieldNamed(const QString &name, const std::array<OtherName, size> &names)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const OtherName &other) {
        return name.compare(other.name, Qt::CaseInsensitive) == 0;
    });
    return found == names.end() ? CommonField::None : found->field;
}

CommonField totalOf(const SongField &field)
{
    return field.group == SongGroup::Vorbis ? fieldNamed(field.key, vorbisTotals) : CommonField::None;
}

std::optional<FieldMeaning> namedText(const QString &name)
{
    return name.isEmpty() ? std::nullopt : std::optional(FieldMeaning{CommonField::None, name.toUpper()});
}

std::optional<FieldMeaning> ownText(const SongField &field)
{
    constexpr QLatin1String freeForm("----:com.apple.iTunes:");
    constexpr QLatin1String technical("iTun");
    if (field.group == SongGroup::Vorbis) {
        CommonField other = fieldNamed(field.key, otherVorbisNames);
        if (other == CommonField::None)
            other = totalOf(field);
        return other == CommonField::None ? namedText(field.key) : FieldMeaning{other};
    }
    if (field.group == SongGroup::Id3v2 && field.key == QLatin1String("TXXX"))
        return namedText(field.item);
    if (field.group == SongGroup::Mp4 && field.key.startsWith(freeForm) && !field.key.startsWith(freeForm + technical))
        return namedText(field.key.mid(freeForm.size()));
    return std::nullopt;
}

/// Comments with a description are notes of programs more often than not.
bool isDescribed(const SongField &field, CommonField common)
{
    return field.group == SongGroup::Id3v2 && common == CommonField::Comment && !field.item.section(u':', 1).isEmpty();
}

QStringList valuesOf(const SongField &field, CommonField common, const QString &charset)
{
    const QString value = valueIn(field, charset);
    if (common == CommonField::Comment || common == CommonField::Lyrics)
        return {value};
    QStringList values = value.split(u'\n');
    if (common == CommonField::Genre)
        std::transform(values.begin(), values.end(), values.begin(), genreText);
    return values;
}

void addTotals(QList<MeantField> &meant, const QList<SongField> &totals, const QString &charset)
{
    for (const SongField &total : totals) {
        const FieldMeaning meaning{totalOf(total)};
        for (MeantField &field : meant) {
            if (field.meaning == meaning && !field.values.isEmpty() && !field.values.first().contains(u'/'))
                field.values.first() += u'/' + valueIn(total, charset);
        }
    }
}

MeantField &placeFor(QList<MeantField> &meant, const FieldMeaning &meaning)
{
    const auto found =
        std::find_if(meant.begin(), meant.end(), [&](const MeantField &field) { return field.meaning == meaning; });
    if (found != meant.end())
        return *found;
    meant.append({meaning, {}});
    return meant.last();
}

} // namespace

SongGroup mainSystem(SoundFormat format)
{
    switch (format) {
    case SoundFormat::Mpeg:
    case SoundFormat::Wav:
    case SoundFormat::Aiff:
        return SongGroup::Id3v2;
    case SoundFormat::Mp4:
        return SongGroup::Mp4;
    default:
        return SongGroup::Vorbis;
    }
}

SongGroup usedSystem(const SongTags &tags, SoundFormat format)
{
    const SongGroup main = mainSystem(format);
    const auto isTagField = [](const SongField &field) { return isTag(field.group); };
    const auto first = std::find_if(tags.fields.begin(), tags.fields.end(), isTagField);
    return tags.has(main) || first == tags.fields.end() ? main : first->group;
}

std::optional<FieldMeaning> meaningOf(const SongField &field)
{
    if (field.group == SongGroup::Common)
        return FieldMeaning{field.key == textKey ? CommonField::None : commonFieldNamed(field.key), field.item};
    const CommonField common = commonField(field.group, field.key);
    if (common == CommonField::None)
        return ownText(field);
    if (isDescribed(field, common))
        return std::nullopt;
    if (common != CommonField::Picture)
        return FieldMeaning{common};
    // The others have one place for a picture, which is for the front.
    const bool hasKind = field.group == SongGroup::Id3v2 || field.group == SongGroup::Vorbis;
    return FieldMeaning{common, hasKind ? field.item : QString(frontCover)};
}

std::optional<FieldMeaning> meaningIn(const SongTags &tags, const SongField &field)
{
    std::optional<FieldMeaning> meaning = meaningOf(field);
    if (!meaning || meaning->common != CommonField::Picture || meaning->item != QLatin1String("0"))
        return meaning;
    const auto pictures = std::count_if(tags.fields.begin(), tags.fields.end(), [&](const SongField &other) {
        return other.group == field.group && other.picture;
    });
    if (pictures == 1)
        meaning->item = frontCover;
    return meaning;
}

QString meaningKey(const FieldMeaning &meaning)
{
    return meaning.common == CommonField::None ? QString(textKey) : QLatin1String(commonName(meaning.common));
}

QList<MeantField> meantFields(const SongTags &tags, SongGroup system, const QString &charset)
{
    QList<MeantField> meant;
    QList<SongField> totals;
    for (const SongField &field : tags.fields) {
        const std::optional<FieldMeaning> meaning = meaningIn(tags, field);
        if (field.group != system || !meaning || (meaning->common == CommonField::Picture && !field.picture))
            continue;
        if (totalOf(field) != CommonField::None)
            totals.append(field);
        else if (field.picture)
            placeFor(meant, *meaning).pictures.append(field.picture);
        else
            placeFor(meant, *meaning).values += valuesOf(field, meaning->common, charset);
    }
    addTotals(meant, totals, charset);
    return meant;
}

QList<SongField> commonFields(const SongTags &tags, SongGroup system, const QString &charset)
{
    QList<SongField> fields;
    for (const MeantField &meant : meantFields(tags, system, charset)) {
        SongField field{SongGroup::Common, meaningKey(meant.meaning), meant.meaning.item};
        if (!meant.values.isEmpty()) {
            field.value = meant.values.join(u'\n');
            fields.append(field);
        }
        for (const std::shared_ptr<const SongPicture> &picture : meant.pictures) {
            SongPicture shown = *picture;
            shown.description.clear(); // not every system has one
            takePicture(field, shown);
            field.item = meant.meaning.item;
            field.picture = picture;
            fields.append(field);
        }
    }
    return fields;
}

} // namespace velmora

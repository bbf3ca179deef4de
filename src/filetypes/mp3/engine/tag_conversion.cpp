#include "filetypes/mp3/engine/tag_conversion.h"

#include "filetypes/mp3/engine/field_maker.h"
#include "filetypes/mp3/engine/field_meaning.h"

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

/// Has `to` say what `meant` has, and nothing else of that meaning.
void put(SongTags &to, SongGroup system, const MeantField &meant)
{
    const QList<SongField> made = madeFields(system, meant);
    if (made.isEmpty() && !(meant.values.isEmpty() && meant.pictures.isEmpty()))
        return; // there is no place for it
    QList<SongField> &fields = to.fields;
    const SongTags before = to;
    fields.removeIf(
        [&](const SongField &field) { return field.group == system && meaningIn(before, field) == meant.meaning; });
    const auto behind =
        std::find_if(fields.begin(), fields.end(), [&](const SongField &field) { return field.group > system; });
    qsizetype at = behind - fields.begin();
    for (const SongField &field : made)
        fields.insert(at++, field);
    if (system == SongGroup::Id3v2 && to.id3v2Version.isEmpty())
        to.id3v2Version = QStringLiteral("2.4"); // version 2.3 has no dates with a month only
}

} // namespace

SongTags withConverted(const SystemTags &from, const SystemTags &to, const SongField &thing, const QString &charset)
{
    SongTags tags = to.tags;
    const std::optional<FieldMeaning> meaning = meaningIn(from.tags, thing);
    if (!meaning)
        return tags;
    MeantField wanted{*meaning, {}};
    for (const MeantField &meant : meantFields(from.tags, from.system, charset)) {
        if (meant.meaning == *meaning)
            wanted = meant;
    }
    put(tags, to.system, wanted);
    return tags;
}

SongTags withAllConverted(const SystemTags &from, const SystemTags &to, const QString &charset)
{
    SongTags tags = to.tags;
    const auto isEncoder = [](const MeantField &meant) { return meant.meaning.common == CommonField::Encoder; };
    for (const MeantField &there : meantFields(to.tags, to.system, charset)) {
        if (!isEncoder(there))
            put(tags, to.system, {there.meaning, {}});
    }
    for (const MeantField &meant : meantFields(from.tags, from.system, charset)) {
        if (!isEncoder(meant))
            put(tags, to.system, meant);
    }
    return tags;
}

} // namespace velmora

#include "filetypes/mp3/engine/tag_agreement.h"

#include "filetypes/mp3/engine/field_meaning.h"
#include "filetypes/mp3/engine/tag_payload.h"

#include <algorithm>

#include <id3v1genres.h>

namespace velmora {

namespace {

TagLib::String libraryText(const QString &text)
{
    return {text.toUtf8().toStdString(), TagLib::String::UTF8};
}

/// The first value in the bytes that ID3v1 has for a text. `lastLetter`: the last one that it can hold.
QString shortText(const QStringList &values, qsizetype room, char16_t lastLetter)
{
    QString text = values.first().left(room).trimmed();
    for (QChar &letter : text) {
        if (letter.unicode() > lastLetter)
            letter = u'?';
    }
    return text;
}

QString shortNumber(const QString &value, int most)
{
    const int number = value.toInt();
    return number > 0 && number <= most ? QString::number(number) : QString();
}

QString knownGenre(const QStringList &values)
{
    constexpr int none = 255;
    const auto known = std::find_if(values.begin(), values.end(), [](const QString &value) {
        return TagLib::ID3v1::genreIndex(libraryText(value)) != none;
    });
    return known == values.end() ? QString() : *known;
}

/// Empty where ID3v1 cannot say it.
QString id3v1Value(const MeantField &meant, char16_t lastLetter)
{
    constexpr qsizetype room = 30;
    constexpr qsizetype commentRoom = 28; // beside the track
    constexpr qsizetype yearRoom = 4;
    constexpr int lastYear = 9999;
    constexpr int lastTrack = 255;
    switch (meant.meaning.common) {
    case CommonField::Year:
        return shortNumber(meant.values.first().left(yearRoom), lastYear);
    case CommonField::Track:
        return shortNumber(meant.values.first().section(u'/', 0, 0), lastTrack);
    case CommonField::Genre:
        return knownGenre(meant.values);
    case CommonField::Comment:
        return shortText(meant.values, commentRoom, lastLetter);
    default:
        return shortText(meant.values, room, lastLetter);
    }
}

/// `there`: how the tag has said it so far.
QList<SongField> id3v1Fields(const SongField &there, const MeantField &meant, const QString &charset)
{
    constexpr char16_t lastAscii = 0x7f; // what other bytes mean is somebody's choice
    constexpr char16_t lastLatin1 = 0xff;
    const QString value = id3v1Value(meant, charset.isEmpty() ? lastLatin1 : lastAscii);
    if (value.isEmpty())
        return {};
    SongField field{SongGroup::Id3v1, there.key};
    field.value = value;
    const QByteArray bytes = value.toLatin1();
    if (std::any_of(bytes.begin(), bytes.end(), [](char byte) { return quint8(byte) > lastAscii; }))
        field.oldBytes = bytes;
    field.payload = std::make_shared<TagPayload>(TagPayload{PlainText{libraryText(value)}});
    return {field};
}

QList<SongField> apeFields(const SongField &there, const MeantField &meant)
{
    TagLib::StringList texts;
    for (const QString &value : meant.values)
        texts.append(libraryText(value));
    const auto *item = there.payload ? std::get_if<TagLib::APE::Item>(&there.payload->data) : nullptr;
    SongField field{SongGroup::Ape, there.key};
    field.value = meant.values.join(u'\n');
    const TagLib::String name = item ? item->key() : libraryText(there.key);
    field.payload = std::make_shared<TagPayload>(TagPayload{TagLib::APE::Item(name, texts)});
    return {field};
}

} // namespace

SongTags withAgreement(SongTags tags, SongGroup leader, SongGroup follower, CommonField field, const QString &charset)
{
    if (!contradict(tags, field, {leader, follower}, charset))
        return tags;
    const QList<MeantField> all = meantFields(tags, leader, charset);
    const auto meant =
        std::find_if(all.begin(), all.end(), [&](const MeantField &one) { return one.meaning == FieldMeaning{field}; });
    if (meant == all.end() || meant->values.isEmpty())
        return tags;
    const auto isIt = [&](const SongField &one) {
        return one.group == follower && commonField(follower, one.key) == field;
    };
    const auto there = std::find_if(tags.fields.begin(), tags.fields.end(), isIt);
    const qsizetype at = there - tags.fields.begin();
    const QList<SongField> made =
        follower == SongGroup::Id3v1 ? id3v1Fields(*there, *meant, charset) : apeFields(*there, *meant);
    tags.fields.removeIf(isIt);
    for (const SongField &one : made)
        tags.fields.insert(at, one);
    return tags;
}

} // namespace velmora

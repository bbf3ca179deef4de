#include "filetypes/mp3/engine/field_maker.h"

#include "filetypes/mp3/engine/tag_items.h"
#include "filetypes/mp3/engine/tag_payload.h"
#include "filetypes/mp3/engine/tag_reader.h"

#include <attachedpictureframe.h>
#include <commentsframe.h>
#include <flacpicture.h>
#include <mp4coverart.h>
#include <textidentificationframe.h>
#include <tstringlist.h>
#include <unsynchronizedlyricsframe.h>

namespace velmora {

namespace {

using namespace TagLib;

String libraryText(const QString &text)
{
    return {text.toUtf8().toStdString(), String::UTF8};
}

StringList libraryTexts(const QStringList &texts)
{
    StringList list;
    for (const QString &text : texts)
        list.append(libraryText(text));
    return list;
}

ByteVector libraryBytes(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<unsigned int>(bytes.size())};
}

SongField wordedFrame(CommonField common, const QString &text)
{
    const ByteVector unknownLanguage("XXX", 3);
    if (common == CommonField::Lyrics) {
        ID3v2::UnsynchronizedLyricsFrame lyrics(String::UTF8);
        lyrics.setLanguage(unknownLanguage);
        lyrics.setText(libraryText(text));
        return id3v2Field(lyrics);
    }
    ID3v2::CommentsFrame comment(String::UTF8);
    comment.setLanguage(unknownLanguage);
    comment.setText(libraryText(text));
    return id3v2Field(comment);
}

SongField textFrame(const MeantField &meant)
{
    if (meant.meaning.common == CommonField::None) {
        ID3v2::UserTextIdentificationFrame frame(String::UTF8);
        frame.setDescription(libraryText(meant.meaning.item));
        frame.setText(libraryTexts(meant.values));
        return id3v2Field(frame);
    }
    const QByteArray name = commonKey(SongGroup::Id3v2, meant.meaning.common).toLatin1();
    ID3v2::TextIdentificationFrame frame(libraryBytes(name), String::UTF8);
    frame.setText(libraryTexts(meant.values));
    return id3v2Field(frame);
}

SongField pictureFrame(const SongPicture &picture)
{
    ID3v2::AttachedPictureFrame frame;
    frame.setTextEncoding(String::UTF8);
    frame.setType(ID3v2::AttachedPictureFrame::Type(picture.kind));
    frame.setMimeType(libraryText(picture.mime));
    frame.setDescription(libraryText(picture.description));
    frame.setPicture(libraryBytes(picture.bytes));
    return id3v2Field(frame);
}

QList<SongField> madeFrames(const MeantField &meant)
{
    const CommonField common = meant.meaning.common;
    if (common == CommonField::Comment || common == CommonField::Lyrics)
        return {wordedFrame(common, meant.values.join(u'\n'))}; // of one language there is but one
    return {textFrame(meant)};
}

SongField comment(const QString &key, const QString &value)
{
    SongField field{SongGroup::Vorbis, key};
    field.value = value;
    field.payload = std::make_shared<TagPayload>(TagPayload{PlainText{libraryText(value)}});
    return field;
}

QList<SongField> madeComments(const MeantField &meant)
{
    const CommonField common = meant.meaning.common;
    const QString key = common == CommonField::None ? meant.meaning.item : commonKey(SongGroup::Vorbis, common);
    const bool isNumber = common == CommonField::Track || common == CommonField::Disc;
    QList<SongField> fields;
    for (const QString &value : meant.values) {
        const qsizetype slash = isNumber ? value.indexOf(u'/') : -1;
        fields.append(comment(key, slash < 0 ? value : value.first(slash)));
        if (slash >= 0)
            fields.append(
                comment(common == CommonField::Track ? QStringLiteral("TRACKTOTAL") : QStringLiteral("DISCTOTAL"),
                        value.mid(slash + 1)));
    }
    return fields;
}

SongField pictureComment(const SongPicture &picture)
{
    FLAC::Picture made;
    made.setType(FLAC::Picture::Type(picture.kind));
    made.setMimeType(libraryText(picture.mime));
    made.setDescription(libraryText(picture.description));
    made.setData(libraryBytes(picture.bytes));
    return pictureField(made);
}

MP4::Item madeItem(Mp4Kind kind, const QStringList &values)
{
    const QString &first = values.first();
    switch (kind) {
    case Mp4Kind::Pair:
        return {first.section(u'/', 0, 0).toInt(), first.section(u'/', 1, 1).toInt()};
    case Mp4Kind::Flag:
        return {first.toInt() != 0};
    case Mp4Kind::Int:
        return {first.toInt()};
    default:
        return {libraryTexts(values)};
    }
}

QList<SongField> madeItems(const MeantField &meant)
{
    const CommonField common = meant.meaning.common;
    const QString key = common == CommonField::None ? QStringLiteral("----:com.apple.iTunes:") + meant.meaning.item
                                                    : commonKey(SongGroup::Mp4, common);
    if (key.isEmpty())
        return {};
    return {mp4Field(key, madeItem(mp4KindOf(key), meant.values))};
}

/// MP4 has but one place for pictures, and knows two formats.
QList<SongField> madeCovers(const MeantField &meant)
{
    constexpr int frontCover = 3;
    QList<SongField> fields;
    for (const std::shared_ptr<const SongPicture> &picture : meant.pictures) {
        if (picture->kind != frontCover && picture->kind != 0)
            continue;
        const bool isPng = picture->bytes.startsWith("\x89PNG");
        fields.append(coverField({isPng ? MP4::CoverArt::PNG : MP4::CoverArt::JPEG, libraryBytes(picture->bytes)}));
    }
    return fields;
}

template <typename Make>
QList<SongField> madePictures(const MeantField &meant, Make make)
{
    QList<SongField> fields;
    for (const std::shared_ptr<const SongPicture> &picture : meant.pictures) {
        SongPicture made = *picture;
        made.kind = meant.meaning.item.toInt();
        fields.append(make(made));
    }
    return fields;
}

} // namespace

QList<SongField> madeFields(SongGroup system, const MeantField &meant)
{
    const bool isPicture = meant.meaning.common == CommonField::Picture;
    if (isPicture ? meant.pictures.isEmpty() : meant.values.isEmpty())
        return {};
    switch (system) {
    case SongGroup::Id3v2:
        return isPicture ? madePictures(meant, pictureFrame) : madeFrames(meant);
    case SongGroup::Vorbis:
        return isPicture ? madePictures(meant, pictureComment) : madeComments(meant);
    case SongGroup::Mp4:
        return isPicture ? madeCovers(meant) : madeItems(meant);
    default:
        return {};
    }
}

} // namespace velmora

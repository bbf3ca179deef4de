#include "filetypes/mp3/engine/tag_reader.h"

#include "filetypes/mp3/engine/tag_file.h"
#include "filetypes/mp3/engine/tag_items.h"
#include "filetypes/mp3/engine/tag_payload.h"

#include <algorithm>

#include <attachedpictureframe.h>
#include <commentsframe.h>
#include <id3v1tag.h>
#include <id3v2header.h>
#include <id3v2tag.h>
#include <popularimeterframe.h>
#include <privateframe.h>
#include <textidentificationframe.h>
#include <uniquefileidentifierframe.h>
#include <unsynchronizedlyricsframe.h>
#include <urllinkframe.h>

namespace velmora {

namespace {

using namespace TagLib;

/// Takes a text that its file calls Latin-1, as those in any one-byte encoding do.
void takeOldText(SongField &field, const String &text)
{
    field.value = textOf(text);
    const std::string bytes = text.to8Bit(false);
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(), [](char byte) { return quint8(byte) < 0x80; });
    if (!isAscii)
        field.oldBytes = QByteArray(bytes.data(), qsizetype(bytes.size()));
}

void takeText(SongField &field, const String &text, String::Type encoding)
{
    if (encoding == String::Latin1)
        takeOldText(field, text);
    else
        field.value = textOf(text);
}

/// "eng:description"
QString worded(const ByteVector &language, const String &description)
{
    return QString::fromLatin1(bytesOf(language)).remove(QChar(0)) + u':' + textOf(description);
}

bool takeTexts(SongField &field, const ID3v2::Frame &frame)
{
    if (const auto *user = dynamic_cast<const ID3v2::UserTextIdentificationFrame *>(&frame)) {
        field.item = textOf(user->description());
        StringList texts = user->fieldList();
        if (!texts.isEmpty())
            texts.erase(texts.begin()); // the description once more
        takeText(field, texts.toString("\n"), user->textEncoding());
    } else if (const auto *text = dynamic_cast<const ID3v2::TextIdentificationFrame *>(&frame)) {
        takeText(field, text->fieldList().toString("\n"), text->textEncoding());
    } else if (const auto *comment = dynamic_cast<const ID3v2::CommentsFrame *>(&frame)) {
        field.item = worded(comment->language(), comment->description());
        takeText(field, comment->text(), comment->textEncoding());
    } else if (const auto *lyrics = dynamic_cast<const ID3v2::UnsynchronizedLyricsFrame *>(&frame)) {
        field.item = worded(lyrics->language(), lyrics->description());
        takeText(field, lyrics->text(), lyrics->textEncoding());
    } else {
        return false;
    }
    return true;
}

bool takeLinks(SongField &field, const ID3v2::Frame &frame)
{
    if (const auto *user = dynamic_cast<const ID3v2::UserUrlLinkFrame *>(&frame)) {
        field.item = textOf(user->description());
        field.value = textOf(user->url());
    } else if (const auto *link = dynamic_cast<const ID3v2::UrlLinkFrame *>(&frame)) {
        field.value = textOf(link->url());
    } else if (const auto *name = dynamic_cast<const ID3v2::UniqueFileIdentifierFrame *>(&frame)) {
        field.item = textOf(name->owner());
        field.value = dataText(bytesOf(name->identifier()));
    } else if (const auto *own = dynamic_cast<const ID3v2::PrivateFrame *>(&frame)) {
        field.item = textOf(own->owner());
        field.value = dataText(bytesOf(own->data()));
    } else if (const auto *rating = dynamic_cast<const ID3v2::PopularimeterFrame *>(&frame)) {
        field.item = textOf(rating->email());
        field.value = QStringLiteral("%1/255, %2").arg(rating->rating()).arg(rating->counter());
    } else {
        return false;
    }
    return true;
}

void readId3v1(const ID3v1::Tag &tag, QList<SongField> &fields)
{
    const auto add = [&](const char *key, const String &text) {
        if (text.isEmpty())
            return;
        SongField field{SongGroup::Id3v1, QLatin1String(key)};
        takeOldText(field, text);
        field.payload = std::make_shared<TagPayload>(TagPayload{PlainText{text}});
        fields.append(field);
    };
    const auto number = [](unsigned int value) { return value == 0 ? String() : String::number(int(value)); };
    add("title", tag.title());
    add("artist", tag.artist());
    add("album", tag.album());
    add("year", number(tag.year()));
    add("track", number(tag.track()));
    add("genre", tag.genre());
    add("comment", tag.comment());
}

} // namespace

SongField id3v2Field(ID3v2::Frame &frame)
{
    SongField field{SongGroup::Id3v2, QString::fromLatin1(bytesOf(frame.frameID()))};
    FrameInside::headerOf(frame)->setVersion(4);
    const ByteVector rendered = frame.render();
    if (const auto *picture = dynamic_cast<const ID3v2::AttachedPictureFrame *>(&frame)) {
        takePicture(field, {int(picture->type()), textOf(picture->mimeType()), textOf(picture->description()),
                            bytesOf(picture->picture())});
    } else if (!takeTexts(field, frame) && !takeLinks(field, frame)) {
        field.value = dataText(bytesOf(rendered).mid(10));
    }
    field.payload = std::make_shared<TagPayload>(TagPayload{FrameBytes{rendered}});
    return field;
}

QList<SongField> id3v2Fields(const ID3v2::Tag &tag)
{
    QList<SongField> fields;
    for (ID3v2::Frame *frame : tag.frameList())
        fields.append(id3v2Field(*frame));
    return fields;
}

SongTags readTags(const TagFile &file)
{
    SongTags tags;
    if (const ID3v2::Tag *tag = file.id3v2()) {
        tags.fields = id3v2Fields(*tag);
        tags.id3v2Version = QStringLiteral("2.%1").arg(tag->header()->majorVersion());
        for (ID3v2::Frame *frame : tag->frameList())
            tags.holdsEncrypted = tags.holdsEncrypted || FrameInside::headerOf(*frame)->encryption();
    }
    if (const ID3v1::Tag *tag = file.id3v1())
        readId3v1(*tag, tags.fields);
    if (const APE::Tag *tag = file.ape())
        readApe(*tag, tags.fields);
    if (Ogg::XiphComment *comment = file.vorbis())
        readVorbis(*comment, tags.fields);
    if (FLAC::File *flac = file.flac())
        readPictures(flac->pictureList(), tags.fields);
    if (const RIFF::Info::Tag *tag = file.info())
        readInfo(*tag, tags.fields);
    if (const MP4::Tag *tag = file.mp4())
        readMp4(*tag, tags.fields);
    return tags;
}

} // namespace velmora

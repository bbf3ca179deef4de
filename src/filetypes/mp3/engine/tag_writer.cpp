#include "filetypes/mp3/engine/tag_writer.h"

#include "filetypes/mp3/engine/tag_file.h"
#include "filetypes/mp3/engine/tag_items.h"
#include "filetypes/mp3/engine/tag_payload.h"
#include "filetypes/mp3/engine/tag_reader.h"

#include <algorithm>
#include <vector>

#include <apetag.h>
#include <id3v1genres.h>
#include <id3v1tag.h>
#include <id3v2header.h>
#include <id3v2tag.h>
#include <infotag.h>

namespace velmora {

namespace {

using namespace TagLib;

/// All fields of one thing, as they are to be; without any the thing goes.
struct Change {
    SongField thing;
    QList<SongField> fields;
};

QList<SongField> fieldsOf(const SongTags &tags, const SongField &thing)
{
    QList<SongField> fields;
    std::copy_if(tags.fields.begin(), tags.fields.end(), std::back_inserter(fields),
                 [&](const SongField &field) { return field.isSameThing(thing); });
    return fields;
}

bool areSameValues(const QList<SongField> &one, const QList<SongField> &other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const SongField &a, const SongField &b) {
        return a.value == b.value && a.oldBytes == b.oldBytes;
    });
}

QList<Change> changesBetween(const SongTags &before, const SongTags &after)
{
    QList<Change> changes;
    for (const SongField &thing : before.fields + after.fields) {
        const bool isKnown = std::any_of(changes.begin(), changes.end(),
                                         [&](const Change &change) { return change.thing.isSameThing(thing); });
        if (isKnown)
            continue;
        const QList<SongField> fields = fieldsOf(after, thing);
        if (!areSameValues(fieldsOf(before, thing), fields))
            changes.append({thing, fields});
    }
    return changes;
}

template <typename Data>
const Data *dataOf(const SongField &field)
{
    return field.payload ? std::get_if<Data>(&field.payload->data) : nullptr;
}

/// The items of a list of TagLib's. A copy of the list would delete them, too, once the first one is removed.
template <typename Item>
std::vector<Item *> itemsOf(const List<Item *> &list)
{
    return {list.begin(), list.end()};
}

void changeId3v2(ID3v2::Tag &tag, const Change &change)
{
    const QList<SongField> there = id3v2Fields(tag);
    const std::vector<ID3v2::Frame *> frames = itemsOf(tag.frameList());
    auto frame = frames.begin();
    for (const SongField &field : there) {
        if (field.isSameThing(change.thing))
            tag.removeFrame(*frame);
        ++frame;
    }
    for (const SongField &field : change.fields) {
        const auto *data = dataOf<FrameBytes>(field);
        const ID3v2::Header asWritten; // of version 2.4
        if (ID3v2::Frame *made = data ? ID3v2::FrameFactory::instance()->createFrame(data->bytes, &asWritten) : nullptr)
            tag.addFrame(made);
    }
}

void changeId3v1(ID3v1::Tag &tag, const Change &change)
{
    const auto *data = change.fields.isEmpty() ? nullptr : dataOf<PlainText>(change.fields.first());
    const String text = data ? data->text : String();
    const QString &key = change.thing.key;
    if (key == QLatin1String("title"))
        tag.setTitle(text);
    else if (key == QLatin1String("artist"))
        tag.setArtist(text);
    else if (key == QLatin1String("album"))
        tag.setAlbum(text);
    else if (key == QLatin1String("comment"))
        tag.setComment(text);
    else if (key == QLatin1String("genre"))
        tag.setGenre(text);
    else if (key == QLatin1String("year"))
        tag.setYear(static_cast<unsigned int>(std::max(0, text.toInt())));
    else if (key == QLatin1String("track"))
        tag.setTrack(static_cast<unsigned int>(std::max(0, text.toInt())));
}

String tagText(const QString &text)
{
    return {text.toUtf8().toStdString(), String::UTF8};
}

void changeApe(APE::Tag &tag, const Change &change)
{
    tag.removeItem(tagText(change.thing.key));
    for (const SongField &field : change.fields) {
        if (const auto *item = dataOf<APE::Item>(field))
            tag.setItem(tagText(field.key), *item);
    }
}

/// Takes the pictures of one kind away and puts others there; `owner` is a FLAC file or a Vorbis comment.
template <typename Owner>
void changePictures(Owner &owner, const Change &change)
{
    for (FLAC::Picture *picture : itemsOf(owner.pictureList())) {
        if (QString::number(picture->type()) == change.thing.item)
            owner.removePicture(picture);
    }
    for (const SongField &field : change.fields) {
        if (const auto *block = dataOf<PictureBlock>(field))
            owner.addPicture(new FLAC::Picture(block->bytes)); // the owner's from now on
    }
}

void changeVorbis(TagFile &file, const Change &change)
{
    Ogg::XiphComment *comment = file.vorbis(true);
    if (change.thing.key == QLatin1String("PICTURE")) {
        if (FLAC::File *flac = file.flac())
            changePictures(*flac, change);
        else if (comment)
            changePictures(*comment, change);
        return;
    }
    if (!comment)
        return;
    comment->removeFields(tagText(change.thing.key));
    for (const SongField &field : change.fields) {
        if (const auto *data = dataOf<PlainText>(field))
            comment->addField(tagText(field.key), data->text, false);
    }
}

void changeInfo(RIFF::Info::Tag &tag, const Change &change)
{
    const QByteArray name = change.thing.key.toLatin1();
    const auto *data = change.fields.isEmpty() ? nullptr : dataOf<PlainText>(change.fields.first());
    tag.setFieldText({name.constData(), static_cast<unsigned int>(name.size())}, data ? data->text : String());
}

void changeMp4(MP4::Tag &tag, const Change &change)
{
    const String name = tagText(change.thing.key);
    tag.removeItem(name);
    MP4::CoverArtList covers;
    for (const SongField &field : change.fields) {
        if (const auto *cover = dataOf<MP4::CoverArt>(field))
            covers.append(*cover);
        else if (const auto *item = dataOf<MP4::Item>(field))
            tag.setItem(name, *item);
    }
    if (!covers.isEmpty())
        tag.setItem(name, covers);
}

/// A tag is made where there is something to put into it.
template <typename Tag, typename Write>
void changeIn(Tag *tag, const Change &change, Write write)
{
    if (tag)
        write(*tag, change);
}

} // namespace

void writeChanges(TagFile &file, const SongTags &before, const SongTags &after)
{
    for (const Change &change : changesBetween(before, after)) {
        const bool make = !change.fields.isEmpty();
        switch (change.thing.group) {
        case SongGroup::Id3v2:
            changeIn(file.id3v2(make), change, changeId3v2);
            break;
        case SongGroup::Id3v1:
            changeIn(file.id3v1(make), change, changeId3v1);
            break;
        case SongGroup::Ape:
            changeIn(file.ape(make), change, changeApe);
            break;
        case SongGroup::Vorbis:
            changeVorbis(file, change);
            break;
        case SongGroup::Info:
            changeIn(file.info(make), change, changeInfo);
            break;
        case SongGroup::Mp4:
            changeIn(file.mp4(), change, changeMp4);
            break;
        default:
            break;
        }
    }
}

} // namespace velmora

#include "filetypes/mp3/engine/tag_items.h"

#include "core/message_digest.h"
#include "filetypes/mp3/engine/tag_payload.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <utility>

#include <apetag.h>
#include <infotag.h>

namespace velmora {

namespace {

using namespace TagLib;

QString digestText(const QByteArray &bytes)
{
    MessageDigest digest(MessageDigest::Kind::Sha256);
    digest.update(bytes);
    return QStringLiteral("%1 bytes, SHA-256 %2").arg(bytes.size()).arg(QLatin1String(digest.value().toHex()));
}

/// Takes a text that is UTF-8 or in a one-byte encoding that nothing tells.
void takeUnknownText(SongField &field, const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless); // nothing follows
    field.value = decoder(bytes);
    if (!decoder.hasError())
        return;
    field.value = QString::fromLatin1(bytes);
    field.oldBytes = bytes;
}

/// Told by how pictures of the two common formats begin, for tags that do not say it.
QString mimeOf(const QByteArray &bytes)
{
    if (bytes.startsWith("\x89PNG"))
        return QStringLiteral("image/png");
    return bytes.startsWith("\xff\xd8") ? QStringLiteral("image/jpeg") : QStringLiteral("image");
}

template <typename Data>
std::shared_ptr<const TagPayload> payloadOf(Data data)
{
    return std::make_shared<TagPayload>(TagPayload{std::move(data)});
}

void takeBinary(SongField &field, const QByteArray &bytes)
{
    constexpr int frontCover = 3;
    if (!field.key.startsWith(QLatin1String("Cover Art"), Qt::CaseInsensitive)) {
        field.value = dataText(bytes);
        return;
    }
    // A name stands before the picture.
    const qsizetype name = bytes.indexOf('\0');
    const QByteArray picture = bytes.mid(name + 1);
    const bool isFront = field.key.contains(QLatin1String("front"), Qt::CaseInsensitive);
    takePicture(field, {isFront ? frontCover : 0, mimeOf(picture),
                        QString::fromUtf8(bytes.first(std::max<qsizetype>(0, name))), picture});
    field.item.clear(); // the key says which it is
}

QString mp4Text(const QString &name, const MP4::Item &item)
{
    switch (mp4KindOf(name)) {
    case Mp4Kind::Pair: {
        const MP4::Item::IntPair pair = item.toIntPair();
        return pair.second == 0 ? QString::number(pair.first)
                                : QStringLiteral("%1/%2").arg(pair.first).arg(pair.second);
    }
    case Mp4Kind::Flag:
        return item.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case Mp4Kind::Byte:
        return QString::number(item.toByte());
    case Mp4Kind::Number:
        return QString::number(item.toUInt());
    case Mp4Kind::LongNumber:
        return QString::number(item.toLongLong());
    case Mp4Kind::Int:
        return QString::number(item.toInt());
    case Mp4Kind::Text:
        break;
    }
    if (const StringList texts = item.toStringList(); !texts.isEmpty())
        return textOf(texts.toString("\n"));
    QByteArray bytes;
    for (const ByteVector &part : item.toByteVectorList())
        bytes += bytesOf(part);
    return dataText(bytes);
}

} // namespace

Mp4Kind mp4KindOf(const QString &key)
{
    struct Named {
        const char *name;
        Mp4Kind kind;
    };
    static constexpr std::array kinds{
        Named{"trkn", Mp4Kind::Pair},   Named{"disk", Mp4Kind::Pair},       Named{"cpil", Mp4Kind::Flag},
        Named{"pgap", Mp4Kind::Flag},   Named{"pcst", Mp4Kind::Flag},       Named{"shwm", Mp4Kind::Flag},
        Named{"stik", Mp4Kind::Byte},   Named{"rtng", Mp4Kind::Byte},       Named{"akID", Mp4Kind::Byte},
        Named{"tvsn", Mp4Kind::Number}, Named{"tves", Mp4Kind::Number},     Named{"cnID", Mp4Kind::Number},
        Named{"sfID", Mp4Kind::Number}, Named{"atID", Mp4Kind::Number},     Named{"geID", Mp4Kind::Number},
        Named{"cmID", Mp4Kind::Number}, Named{"plID", Mp4Kind::LongNumber}, Named{"tmpo", Mp4Kind::Int},
        Named{"hdvd", Mp4Kind::Int},    Named{"\u00a9mvi", Mp4Kind::Int},   Named{"\u00a9mvc", Mp4Kind::Int}};
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [&](const Named &named) { return key == QString::fromUtf8(named.name); });
    return found == kinds.end() ? Mp4Kind::Text : found->kind;
}

QString dataText(const QByteArray &bytes)
{
    constexpr qsizetype longest = 200;
    const bool isText =
        std::all_of(bytes.begin(), bytes.end(), [](char letter) { return letter >= ' ' && letter <= '~'; });
    return isText && bytes.size() <= longest ? QString::fromLatin1(bytes) : digestText(bytes);
}

void takePicture(SongField &field, SongPicture picture)
{
    field.item = QString::number(picture.kind);
    field.value = QStringLiteral("%1, %2").arg(picture.mime, digestText(picture.bytes));
    if (!picture.description.isEmpty())
        field.value += u'\n' + picture.description;
    field.picture = std::make_shared<SongPicture>(std::move(picture));
}

void readApe(const APE::Tag &tag, QList<SongField> &fields)
{
    for (const auto &[name, item] : tag.itemListMap()) {
        SongField field{SongGroup::Ape, textOf(name)};
        if (item.type() == APE::Item::Text)
            field.value = textOf(item.values().toString("\n"));
        else
            takeBinary(field, bytesOf(item.binaryData()));
        field.payload = payloadOf(item);
        fields.append(field);
    }
}

void readVorbis(Ogg::XiphComment &comment, QList<SongField> &fields)
{
    for (const auto &[name, texts] : comment.fieldListMap()) {
        for (const String &text : texts) {
            SongField field{SongGroup::Vorbis, textOf(name)};
            field.value = textOf(text);
            field.payload = payloadOf(PlainText{text});
            fields.append(field);
        }
    }
    readPictures(comment.pictureList(), fields);
}

SongField pictureField(const FLAC::Picture &picture)
{
    SongField field{SongGroup::Vorbis, QStringLiteral("PICTURE")};
    takePicture(field, {int(picture.type()), textOf(picture.mimeType()), textOf(picture.description()),
                        bytesOf(picture.data())});
    field.payload = payloadOf(PictureBlock{picture.render()});
    return field;
}

void readPictures(const List<FLAC::Picture *> &pictures, QList<SongField> &fields)
{
    for (const FLAC::Picture *picture : pictures)
        fields.append(pictureField(*picture));
}

void readInfo(const RIFF::Info::Tag &tag, QList<SongField> &fields)
{
    for (const auto &[name, text] : tag.fieldListMap()) {
        SongField field{SongGroup::Info, QString::fromLatin1(bytesOf(name))};
        takeUnknownText(field, bytesOf(text.data(String::Latin1)));
        field.payload = payloadOf(PlainText{text});
        fields.append(field);
    }
}

SongField coverField(const MP4::CoverArt &cover)
{
    SongField field{SongGroup::Mp4, QStringLiteral("covr")};
    const QByteArray bytes = bytesOf(cover.data());
    takePicture(field, {0, mimeOf(bytes), {}, bytes});
    field.payload = payloadOf(cover);
    return field;
}

SongField mp4Field(const QString &key, const MP4::Item &item)
{
    SongField field{SongGroup::Mp4, key};
    field.value = mp4Text(key, item);
    field.payload = payloadOf(item);
    return field;
}

void readMp4(const MP4::Tag &tag, QList<SongField> &fields)
{
    for (const auto &[name, item] : tag.itemMap()) {
        const QString key = textOf(name);
        if (key == QLatin1String("covr")) {
            for (const MP4::CoverArt &cover : item.toCoverArtList())
                fields.append(coverField(cover));
            continue;
        }
        fields.append(mp4Field(key, item));
    }
}

} // namespace velmora

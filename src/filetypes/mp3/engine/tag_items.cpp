#include "filetypes/mp3/engine/tag_items.h"

#include "core/message_digest.h"
#include "filetypes/mp3/engine/tag_payload.h"

#include <algorithm>
#include <array>
#include <utility>

#include <apetag.h>

namespace velmora {

namespace {

using namespace TagLib;

QString digestText(const QByteArray &bytes)
{
    MessageDigest digest(MessageDigest::Kind::Sha256);
    digest.update(bytes);
    return QStringLiteral("%1 bytes, SHA-256 %2").arg(bytes.size()).arg(QLatin1String(digest.value().toHex()));
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

/// How an item of MP4 is to be read, which the library knows by its name only.
enum class ItemKind : quint8 { Text, Pair, Flag, Byte, Number, LongNumber, Int };

ItemKind kindOf(const QString &name)
{
    struct Named {
        const char *name;
        ItemKind kind;
    };
    static constexpr std::array kinds{
        Named{"trkn", ItemKind::Pair},   Named{"disk", ItemKind::Pair},       Named{"cpil", ItemKind::Flag},
        Named{"pgap", ItemKind::Flag},   Named{"pcst", ItemKind::Flag},       Named{"shwm", ItemKind::Flag},
        Named{"stik", ItemKind::Byte},   Named{"rtng", ItemKind::Byte},       Named{"akID", ItemKind::Byte},
        Named{"tvsn", ItemKind::Number}, Named{"tves", ItemKind::Number},     Named{"cnID", ItemKind::Number},
        Named{"sfID", ItemKind::Number}, Named{"atID", ItemKind::Number},     Named{"geID", ItemKind::Number},
        Named{"cmID", ItemKind::Number}, Named{"plID", ItemKind::LongNumber}, Named{"tmpo", ItemKind::Int},
        Named{"hdvd", ItemKind::Int},    Named{"\u00a9mvi", ItemKind::Int},   Named{"\u00a9mvc", ItemKind::Int}};
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [&](const Named &named) { return name == QString::fromUtf8(named.name); });
    return found == kinds.end() ? ItemKind::Text : found->kind;
}

QString mp4Text(const QString &name, const MP4::Item &item)
{
    switch (kindOf(name)) {
    case ItemKind::Pair: {
        const MP4::Item::IntPair pair = item.toIntPair();
        return pair.second == 0 ? QString::number(pair.first)
                                : QStringLiteral("%1/%2").arg(pair.first).arg(pair.second);
    }
    case ItemKind::Flag:
        return item.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case ItemKind::Byte:
        return QString::number(item.toByte());
    case ItemKind::Number:
        return QString::number(item.toUInt());
    case ItemKind::LongNumber:
        return QString::number(item.toLongLong());
    case ItemKind::Int:
        return QString::number(item.toInt());
    case ItemKind::Text:
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

void readPictures(const List<FLAC::Picture *> &pictures, QList<SongField> &fields)
{
    for (const FLAC::Picture *picture : pictures) {
        SongField field{SongGroup::Vorbis, QStringLiteral("PICTURE")};
        takePicture(field, {int(picture->type()), textOf(picture->mimeType()), textOf(picture->description()),
                            bytesOf(picture->data())});
        field.payload = payloadOf(PictureBlock{picture->render()});
        fields.append(field);
    }
}

void readMp4(const MP4::Tag &tag, QList<SongField> &fields)
{
    for (const auto &[name, item] : tag.itemMap()) {
        const QString key = textOf(name);
        if (key == QLatin1String("covr")) {
            for (const MP4::CoverArt &cover : item.toCoverArtList()) {
                SongField field{SongGroup::Mp4, key};
                const QByteArray bytes = bytesOf(cover.data());
                takePicture(field, {0, mimeOf(bytes), {}, bytes});
                field.payload = payloadOf(cover);
                fields.append(field);
            }
            continue;
        }
        SongField field{SongGroup::Mp4, key};
        field.value = mp4Text(key, item);
        field.payload = payloadOf(item);
        fields.append(field);
    }
}

} // namespace velmora

#include "folder/browse/entry_preview.h"

#include "core/text_file.h"
#include "session/pane/edit_buffer.h"
#include "session/pane/pane_document.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <span>

namespace velmora {

namespace {

constexpr qsizetype mostText = 1024 * 1024;
constexpr qsizetype mostBytes = 64 * 1024;
constexpr qsizetype mostPicture = 64 * 1024 * 1024;

bool isPicture(QByteArray head)
{
    QBuffer buffer(&head);
    if (!buffer.open(QIODevice::ReadOnly))
        return false;
    // Formats that are texts are shown as such.
    static const QList<QByteArray> formats{"png", "jpeg", "gif", "bmp", "ico", "tiff", "webp", "icns", "tga"};
    return formats.contains(QImageReader::imageFormat(&buffer));
}

/// Keeps the beginning of one entry, as much as what it begins with is worth.
class HeadVisitor final : public ContentVisitor {
public:
    void begin(qint32) override {}
    bool take(QByteArrayView bytes) override
    {
        if (head.isEmpty())
            looksLikePicture = isPicture(bytes.toByteArray());
        const qsizetype most = looksLikePicture ? mostPicture : mostText;
        head += bytes.first(std::min(bytes.size(), most - head.size())).toByteArray();
        isFull = head.size() == most;
        return !isFull;
    }
    bool end(bool isWhole, const QString &words) override
    {
        wasWhole = isWhole;
        error = words;
        return true;
    }

    QByteArray head;
    QString error;
    bool looksLikePicture = false;
    bool isFull = false;
    bool wasWhole = false;
};

/// Takes away what of a character of several bytes stands at the end of a text that was cut.
void chopCutCharacter(QByteArray &text)
{
    constexpr int longest = 4;
    for (int i = 0; i < longest && !text.isEmpty(); ++i) {
        const auto last = static_cast<unsigned char>(text.back());
        if (last < 0x80U)
            break;
        text.chop(1);
        if (last >= 0xC0U)
            break;
    }
    text.truncate(text.size() & ~qsizetype(1)); // as UTF-16 needs it
}

void showPicture(QByteArray &bytes, EntryPreview &preview)
{
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly))
        return;
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    preview.pictureSize = reader.size();
    const QSize room(EntryPreview::longestSide, EntryPreview::longestSide);
    if (preview.pictureSize.width() > room.width() || preview.pictureSize.height() > room.height())
        reader.setScaledSize(preview.pictureSize.scaled(room, Qt::KeepAspectRatio));
    preview.picture = reader.read();
    if (!preview.pictureSize.isValid())
        preview.pictureSize = preview.picture.size();
}

void showText(QByteArray bytes, EntryPreview &preview)
{
    if (!preview.isWhole)
        chopCutCharacter(bytes);
    DecodedText text = decodeText(bytes, TextEncoding());
    preview.kind = text.binary ? EntryPreview::Kind::Bytes : EntryPreview::Kind::Text;
    if (text.binary) {
        preview.isWhole = preview.isWhole && bytes.size() <= mostBytes;
        preview.shown = std::min(bytes.size(), mostBytes);
        text = decodeText(hexLines(bytes.first(preview.shown)), TextEncoding::fromName(QStringLiteral("UTF-8")));
    } else {
        preview.encoding = text.encoding.name();
    }
    preview.document = std::make_shared<PlainDocument>(EditBuffer(text.lines).snapshot());
}

} // namespace

QByteArray hexLines(QByteArrayView bytes)
{
    constexpr qsizetype perLine = 16;
    static constexpr char digits[] = "0123456789abcdef";
    QByteArray lines;
    lines.reserve(bytes.size() / perLine * 80);
    for (qsizetype at = 0; at < bytes.size(); at += perLine) {
        const QByteArrayView row = bytes.sliced(at, std::min(perLine, bytes.size() - at));
        lines += QByteArray::number(at, 16).rightJustified(8, '0') + "  ";
        for (qsizetype i = 0; i < perLine; ++i) {
            const auto value = i < row.size() ? static_cast<unsigned char>(row[i]) : 0U;
            lines += i < row.size() ? digits[value >> 4U] : ' ';
            lines += i < row.size() ? digits[value & 15U] : ' ';
            lines += i == perLine / 2 - 1 ? "  " : " ";
        }
        lines += ' ';
        for (const char byte : row)
            lines += byte >= ' ' && byte <= '~' ? byte : '.';
        lines += '\n';
    }
    return lines;
}

EntryPreview previewEntry(const ArchiveSource &archive, qint32 entry, const CancelFlag &cancel)
{
    EntryPreview preview;
    HeadVisitor visitor;
    static_cast<void>(archive.parts().contents->visit(std::span(&entry, 1), visitor, cancel));
    preview.shown = visitor.head.size();
    preview.isWhole = visitor.wasWhole;
    preview.isDamaged = !visitor.wasWhole && !visitor.isFull;
    preview.error = visitor.error;
    if (visitor.head.isEmpty()) {
        preview.kind = visitor.wasWhole ? EntryPreview::Kind::Empty : EntryPreview::Kind::Unreadable;
        return preview;
    }
    if (visitor.looksLikePicture)
        showPicture(visitor.head, preview);
    if (preview.picture.isNull())
        showText(visitor.head, preview);
    else
        preview.kind = EntryPreview::Kind::Picture;
    return preview;
}

} // namespace velmora

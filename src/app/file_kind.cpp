#include "app/file_kind.h"

#include "core/text_detect.h"
#include "core/text_file.h"
#include "core/text_lines.h"
#include "merge/engine/conflict_markers.h"
#include "platform/file_access.h"
#include "vfs/archive/archive_signature.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <string_view>

namespace velmora {

namespace {

using namespace std::string_view_literals;

constexpr qint64 headSize = 1024;

bool isPicture(std::string_view head)
{
    // How the files of the common formats begin.
    static constexpr std::string_view signatures[] = {
        "\x89PNG\r\n\x1a\n"sv, "\xFF\xD8\xFF"sv, "GIF87a"sv, "GIF89a"sv, "II*\0"sv, "MM\0*"sv, "\0\0\1\0"sv};
    for (const std::string_view signature : signatures) {
        if (head.substr(0, signature.size()) == signature)
            return true;
    }
    // A bitmap's header says its size, after two letters that a text may begin with, and four zero bytes.
    return head.size() > 14 && head.substr(0, 2) == "BM"sv && head.substr(6, 4) == "\0\0\0\0"sv;
}

/// Programs and libraries, for Windows and for Unix. Of a header for Windows the place is said far below its first
/// letters.
bool isProgram(std::string_view head)
{
    constexpr std::size_t headerPointer = 0x3c;
    if (head.substr(0, 4) == "\x7f"
                             "ELF"sv)
        return true;
    if (head.substr(0, 2) != "MZ"sv || head.size() < headerPointer + 2)
        return false;
    const std::size_t at =
        static_cast<unsigned char>(head[headerPointer]) + 256U * static_cast<unsigned char>(head[headerPointer + 1]);
    return at < head.size() && head.substr(at, 4) == "PE\0\0"sv;
}

/// Texts may begin as some archives do, but hold no control characters.
bool isArchive(std::string_view head)
{
    return beginsLikeArchive({head.data(), qsizetype(head.size())}) &&
           std::any_of(head.begin(), head.end(), [](char byte) { return byte >= 0 && byte < '\t'; });
}

/// Music in the formats that are compared by their tags, each by what follows its first letters, too.
bool isMusic(std::string_view head)
{
    if (head.size() < 12)
        return false;
    if (head.substr(0, 3) == "ID3"sv)
        return head[3] >= 2 && head[3] <= 4 && head[4] == 0;
    if (head.substr(0, 5) == "fLaC\0"sv || head.substr(0, 5) == "OggS\0"sv)
        return true;
    const std::string_view form = head.substr(8, 4);
    if ((head.substr(0, 4) == "RIFF"sv && form == "WAVE"sv) ||
        (head.substr(0, 4) == "FORM"sv && (form == "AIFF"sv || form == "AIFC"sv)))
        return true;
    if (head.substr(4, 7) == "ftypM4A"sv || head.substr(4, 7) == "ftypM4B"sv)
        return true;
    // A frame of MPEG layer 3 with a bit rate and a sample rate: no mark of UTF-16 looks like that.
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(head[at]); };
    return byte(0) == 0xff && (byte(1) & 0xe6U) == 0xe2 && byte(2) >> 4U != 0 && byte(2) >> 4U != 15 &&
           (byte(2) & 0x0cU) != 0x0c;
}

bool isTable(const QString &path)
{
    return path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive) ||
           path.endsWith(QLatin1String(".tsv"), Qt::CaseInsensitive);
}

QByteArray headOf(const QString &path)
{
    const std::unique_ptr<FileOpener> opener = FileAccess::native().makeOpener();
    const std::unique_ptr<OpenFile> file = opener->open(path, OpenHint::Unknown);
    if (!file)
        return {};
    QByteArray head(headSize, Qt::Uninitialized);
    head.truncate(file->readAt(0, head.data(), headSize).length);
    return head;
}

/// Whether a text of these bytes, in units of whatever width, can hold the first marker of a conflict.
bool mayHoldConflicts(std::string_view bytes)
{
    constexpr std::size_t length = 7;
    const auto isMarkerAt = [&](std::size_t at, std::size_t width) {
        std::size_t unit = 0;
        while (unit < length && at + unit * width < bytes.size() && bytes[at + unit * width] == '<')
            ++unit;
        return unit == length;
    };
    for (std::size_t at = bytes.find('<'); at != std::string_view::npos; at = bytes.find('<', at + 1)) {
        if (isMarkerAt(at, 1) || isMarkerAt(at, 2) || isMarkerAt(at, 4))
            return true;
    }
    return false;
}

} // namespace

QString kindOfContent(const QString &path, const QByteArray &head)
{
    const std::string_view bytes(head.constData(), std::size_t(head.size()));
    if (isPicture(bytes))
        return QStringLiteral("image");
    if (isProgram(bytes))
        return QStringLiteral("version");
    if (isArchive(bytes))
        return QStringLiteral("archive");
    if (isMusic(bytes))
        return QStringLiteral("mp3");
    if (decodeText(head, TextEncoding()).binary)
        return QStringLiteral("binary");
    return isTable(path) ? QStringLiteral("table") : QStringLiteral("text");
}

QString kindOfPair(const QString &left, const QString &right)
{
    QStringList kinds;
    for (const QString &path : {left, right}) {
        const QByteArray head = path.isEmpty() ? QByteArray() : headOf(path);
        if (!path.isEmpty() && (!head.isEmpty() || isTable(path)))
            kinds.append(kindOfContent(path, head));
    }
    if (kinds.isEmpty())
        return QStringLiteral("text");
    // Their fields are of use beside those of another only.
    const bool isOfFields = kinds.first() == QLatin1String("version") || kinds.first() == QLatin1String("mp3");
    if (kinds.size() == 1 && isOfFields)
        return QStringLiteral("binary");
    if (kinds.size() == 1 && kinds.first() == QLatin1String("archive"))
        return QStringLiteral("archivebrowse");
    if (kinds.first() == kinds.last())
        return kinds.first();
    const bool texts = std::none_of(kinds.begin(), kinds.end(), [](const QString &kind) {
        return kind != QLatin1String("text") && kind != QLatin1String("table");
    });
    return texts ? QStringLiteral("text") : QStringLiteral("binary");
}

bool isMarkedMerge(const QString &path)
{
    // Longer ones would keep the window waiting; where they are opened as texts, they are recognised in passing.
    constexpr qint64 longest = 4 * 1024 * 1024;
    if (QFileInfo(path).size() > longest)
        return false;
    const QByteArray bytes = readFile(path).bytes;
    if (!mayHoldConflicts({bytes.constData(), std::size_t(bytes.size())}))
        return false;
    // Markers are the same bytes in every encoding but the wide ones: all else need not be decoded, which takes a tenth
    // of a second where the encoding has to be guessed.
    const bool mayBeWide = bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF") || bytes.contains('\0');
    constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");
    const qsizetype begin = bytes.startsWith(utf8Mark) ? utf8Mark.size() : 0;
    return hasConflictMarkers(mayBeWide ? decodeText(bytes, TextEncoding()).lines : TextLines::split(bytes, begin));
}

} // namespace velmora

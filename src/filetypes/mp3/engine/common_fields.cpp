#include "filetypes/mp3/engine/common_fields.h"

#include "filetypes/mp3/engine/tag_payload.h"

#include <algorithm>
#include <array>

#include <id3v1genres.h>

namespace velmora {

namespace {

struct Names {
    const char *name;
    const char *id3v2;
    const char *id3v1;
    const char *ape; ///< in capitals
    const char *vorbis;
    const char *mp4;
    const char *info;
};

/// In the order of `CommonField`.
constexpr std::array<Names, commonFieldCount> commonNames{{
    {"title", "TIT2", "title", "TITLE", "TITLE", "\u00a9nam", "INAM"},
    {"artist", "TPE1", "artist", "ARTIST", "ARTIST", "\u00a9ART", "IART"},
    {"album", "TALB", "album", "ALBUM", "ALBUM", "\u00a9alb", "IPRD"},
    {"albumArtist", "TPE2", nullptr, "ALBUM ARTIST", "ALBUMARTIST", "aART", nullptr},
    {"year", "TDRC", "year", "YEAR", "DATE", "\u00a9day", "ICRD"},
    {"track", "TRCK", "track", "TRACK", "TRACKNUMBER", "trkn", "IPRT"},
    {"disc", "TPOS", nullptr, "DISC", "DISCNUMBER", "disk", nullptr},
    {"genre", "TCON", "genre", "GENRE", "GENRE", "\u00a9gen", "IGNR"},
    {"composer", "TCOM", nullptr, "COMPOSER", "COMPOSER", "\u00a9wrt", "IMUS"},
    {"comment", "COMM", "comment", "COMMENT", "COMMENT", "\u00a9cmt", "ICMT"},
    {"lyrics", "USLT", nullptr, "LYRICS", "LYRICS", "\u00a9lyr", nullptr},
    {"copyright", "TCOP", nullptr, "COPYRIGHT", "COPYRIGHT", "cprt", "ICOP"},
    {"publisher", "TPUB", nullptr, "PUBLISHER", "ORGANIZATION", nullptr, nullptr},
    {"encoder", "TSSE", nullptr, "ENCODER", "ENCODER", "\u00a9too", "ISFT"},
    {"tempo", "TBPM", nullptr, "BPM", "BPM", "tmpo", nullptr},
    {"compilation", "TCMP", nullptr, "COMPILATION", "COMPILATION", "cpil", nullptr},
    {"picture", "APIC", nullptr, "COVER ART (FRONT)", "PICTURE", "covr", nullptr},
}};

const char *nameIn(SongGroup group, const Names &names)
{
    switch (group) {
    case SongGroup::Id3v2:
        return names.id3v2;
    case SongGroup::Id3v1:
        return names.id3v1;
    case SongGroup::Ape:
        return names.ape;
    case SongGroup::Vorbis:
        return names.vorbis;
    case SongGroup::Mp4:
        return names.mp4;
    case SongGroup::Info:
        return names.info;
    default:
        return nullptr;
    }
}

/// What is compared of a value: of dates the year, of numbers without what they are out of.
QString essenceOf(CommonField field, const QString &value)
{
    constexpr int yearLength = 4;
    if (field == CommonField::Year)
        return value.left(yearLength);
    if (field == CommonField::Track)
        return QString::number(value.section(u'/', 0, 0).trimmed().toInt());
    if (field == CommonField::Genre)
        return genreText(value);
    return value.trimmed();
}

/// ID3v1 has room for 30 bytes, in comments for 28 beside a number, and no letters but those of one byte.
bool isCutForm(const QString &shortened, const QString &whole)
{
    constexpr qsizetype room = 28;
    if (shortened.size() > whole.size() || (shortened.size() < room && shortened.size() != whole.size()))
        return false;
    for (qsizetype k = 0; k < shortened.size(); ++k) {
        if (shortened[k] != whole[k] && !(shortened[k] == u'?' && whole[k].unicode() > 0x7f))
            return false;
    }
    return true;
}

bool agree(CommonField field, const QString &one, SongGroup group, const QString &other, SongGroup otherGroup)
{
    const QString a = essenceOf(field, one);
    const QString b = essenceOf(field, other);
    if (a == b || (field == CommonField::Genre && a.compare(b, Qt::CaseInsensitive) == 0))
        return true;
    return (group == SongGroup::Id3v1 && isCutForm(a, b)) || (otherGroup == SongGroup::Id3v1 && isCutForm(b, a));
}

struct Said {
    SongGroup group;
    QStringList values;
};

QList<Said> whatIsSaid(const SongTags &tags, CommonField field, const QString &charset)
{
    QList<Said> said;
    for (const SongField &one : tags.fields) {
        if (commonField(one.group, one.key) != field)
            continue;
        if (said.isEmpty() || said.last().group != one.group)
            said.append({one.group, {}});
        const QString value = valueIn(one, charset);
        said.last().values += field == CommonField::Comment ? QStringList(value) : value.split(u'\n');
    }
    return said;
}

/// Whether some value of each is one of the other: a system may have a field several times.
bool agree(CommonField field, const Said &one, const Said &other)
{
    return std::any_of(one.values.begin(), one.values.end(), [&](const QString &a) {
        return std::any_of(other.values.begin(), other.values.end(),
                           [&](const QString &b) { return agree(field, a, one.group, b, other.group); });
    });
}

} // namespace

const char *commonName(CommonField field)
{
    return field == CommonField::None ? "" : commonNames[std::size_t(field)].name;
}

CommonField commonFieldNamed(const QString &name)
{
    for (int k = 0; k < commonFieldCount; ++k) {
        if (name == QLatin1String(commonNames[std::size_t(k)].name))
            return CommonField(k);
    }
    return CommonField::None;
}

QString commonKey(SongGroup group, CommonField field)
{
    const char *name = field == CommonField::None ? nullptr : nameIn(group, commonNames[std::size_t(field)]);
    return QString::fromUtf8(name);
}

QString genreText(const QString &value)
{
    bool isNumber = false;
    const int number = value.trimmed().toInt(&isNumber);
    const QString name = isNumber ? textOf(TagLib::ID3v1::genre(number)) : QString();
    return name.isEmpty() ? value.trimmed() : name;
}

CommonField commonField(SongGroup group, const QString &key)
{
    const QString name = group == SongGroup::Ape || group == SongGroup::Vorbis ? key.toUpper() : key;
    for (int k = 0; k < commonFieldCount; ++k) {
        const char *known = nameIn(group, commonNames[std::size_t(k)]);
        if (known && name == QString::fromUtf8(known))
            return CommonField(k);
    }
    return CommonField::None;
}

QString systemName(SongGroup group)
{
    switch (group) {
    case SongGroup::Id3v2:
        return QStringLiteral("ID3v2");
    case SongGroup::Id3v1:
        return QStringLiteral("ID3v1");
    case SongGroup::Ape:
        return QStringLiteral("APE");
    case SongGroup::Vorbis:
        return QStringLiteral("Vorbis");
    case SongGroup::Mp4:
        return QStringLiteral("MP4");
    case SongGroup::Info:
        return QStringLiteral("INFO");
    default:
        return {};
    }
}

bool contradict(const SongTags &tags, CommonField field, const Sides<SongGroup> &systems, const QString &charset)
{
    const QList<Said> said = whatIsSaid(tags, field, charset);
    const auto of = [&](SongGroup group) {
        return std::find_if(said.begin(), said.end(), [&](const Said &one) { return one.group == group; });
    };
    const auto left = of(systems.left);
    const auto right = of(systems.right);
    return left != said.end() && right != said.end() && !agree(field, *left, *right);
}

QList<SongField> contradictions(const SongTags &tags, const QString &charset)
{
    QList<SongField> found;
    for (const CommonField field : {CommonField::Title, CommonField::Artist, CommonField::Album, CommonField::Year,
                                    CommonField::Track, CommonField::Genre, CommonField::Comment}) {
        const QList<Said> said = whatIsSaid(tags, field, charset);
        const bool contradict =
            std::any_of(said.begin(), said.end(), [&](const Said &one) { return !agree(field, said.first(), one); });
        if (!contradict)
            continue;
        QStringList lines;
        for (const Said &one : said)
            lines.append(systemName(one.group) + QStringLiteral(": ") + one.values.first());
        SongField contradiction;
        contradiction.group = SongGroup::Contradiction;
        contradiction.key = QLatin1String(commonName(field));
        contradiction.value = lines.join(u'\n');
        found.append(contradiction);
    }
    return found;
}

} // namespace velmora

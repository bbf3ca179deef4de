#include "filetypes/mp3/engine/tag_damage.h"

#include "filetypes/mp3/engine/ape_tag.h"
#include "filetypes/mp3/engine/id3v2_damage.h"
#include "filetypes/mp3/engine/sound_layout.h"
#include "filetypes/mp3/engine/tag_borders.h"

#include <QSet>
#include <QStringDecoder>

#include <algorithm>

namespace velmora {

namespace {

bool isUtf8(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return !decoder.hasError();
}

/// Whether the library takes too much memory or time for these items. It goes on from one to the next in numbers of 32
/// bits, by which lengths that are made for it lead back to the first ones.
bool areExhausting(QByteArrayView items, qint64 count)
{
    constexpr qint64 mostWork = 4 * mostTagBytes;
    qint64 work = 0;
    qint64 parts = 0;
    quint32 at = 0;
    for (qint64 k = 0; k < count && at < items.size(); ++k) {
        qsizetype behind = at;
        const std::optional<ApeItem> item = takeApeItem(items, behind);
        if (!item)
            return false;
        work += item->name.size() + item->value.size();
        parts += item->isText() ? item->value.count('\0') : 0;
        if (work > mostWork || parts > mostTagParts)
            return true;
        at += quint32(item->name.size()) + quint32(item->statedLength) + 9;
    }
    return false;
}

class Examination {
public:
    Examination(SoundBytes &bytes, const SoundRange &sound) : m_bytes(bytes), m_sound(sound) {}

    TagFindings run()
    {
        if (const qint64 rest = unreadTagBytes(m_bytes))
            add(TagFault::Id3v2Rest, rest);
        const qint64 floor = tagsBefore(m_bytes);
        if (isApeEnd(m_bytes, floor))
            add(TagFault::ApeUnread);
        if (const std::optional<ApePlace> place = apeTagBefore(m_bytes, floor, placeOfApe()))
            examineApe(*place);
        examineBehind();
        return m_findings;
    }

private:
    void add(TagFault fault, qint64 number = 0)
    {
        if (!has(fault))
            m_findings.damage.append({fault, number, {}});
    }

    [[nodiscard]] bool has(TagFault fault) const
    {
        const auto &damage = m_findings.damage;
        return std::any_of(damage.begin(), damage.end(), [=](const TagDamage &one) { return one.fault == fault; });
    }

    /// Counts a field with a fault.
    void count(TagFault fault, QByteArrayView name)
    {
        constexpr qsizetype enough = 60;
        auto &damage = m_findings.damage;
        auto known =
            std::find_if(damage.begin(), damage.end(), [=](const TagDamage &one) { return one.fault == fault; });
        if (known == damage.end())
            damage.append({fault, 1, QString::fromLatin1(name.first(std::min(enough, name.size())))});
        else
            ++known->number;
    }

    /// Where the only APE tag that is read has its end.
    [[nodiscard]] qint64 placeOfApe()
    {
        constexpr qint64 id3v1 = 128;
        const qint64 before = m_bytes.size() - id3v1;
        return m_bytes.at(before, id3v1).startsWith("TAG") ? before : m_bytes.size();
    }

    void examineBehind()
    {
        const QList<TagBehind> tags = tagListBehind(m_bytes);
        const qint64 readApe = placeOfApe();
        for (const TagBehind &tag : tags) {
            if (tag.kind == TagBehind::Kind::Ape && tag.end != readApe)
                add(TagFault::ApeUnread);
            if (tag.kind == TagBehind::Kind::Lyrics3 && !tag.isWhole)
                add(TagFault::LyricsUnread);
        }
        const qint64 soundEnd = m_sound.at + m_sound.length;
        const qint64 length = (tags.isEmpty() ? m_bytes.size() : tags.last().begin) - soundEnd;
        const auto beginsWith = [&](QByteArrayView mark) {
            return length >= mark.size() && m_bytes.at(soundEnd, mark.size()) == mark;
        };
        if (beginsWith("APETAGEX")) {
            if (!m_findings.hasUnreadableApe) // else this is its beginning
                add(TagFault::ApeCutOff);
        }
        if (beginsWith("TAG"))
            add(TagFault::Id3v1Unread);
        else if (beginsWith("LYRICSBEGIN") && m_bytes.at(soundEnd + length - 9, 9) != QByteArrayView("LYRICSEND"))
            add(TagFault::LyricsUnread);
    }

    void examineApe(const ApePlace &place)
    {
        m_findings.hasUnreadableApe = !place.isFound;
        if (place.isHeader)
            add(TagFault::ApeCutOff);
        else if (!place.isFound)
            add(TagFault::ApeLength, place.statedLength);
        else if (!place.agrees)
            add(TagFault::ApeBeginning);
        // The library reads what the length leads to, whatever that is.
        const qint64 begin = place.end - place.statedLength;
        if (begin < 0 || begin >= place.footer())
            return;
        const QByteArray items = m_bytes.allAt(begin, place.footer() - begin);
        m_findings.isTooLarge = areExhausting(items, place.statedCount);
        if (place.isFound && !m_findings.isTooLarge)
            examineItems(items, place.statedCount);
    }

    void examineItems(QByteArrayView items, qint64 statedCount)
    {
        qsizetype at = 0;
        qint64 read = 0;
        for (; read < statedCount; ++read) {
            const std::optional<ApeItem> item = takeApeItem(items, at);
            if (!item)
                break;
            examineItem(*item, item->value.size() < item->statedLength);
        }
        if (at < items.size())
            add(TagFault::ApeRest, items.size() - at);
        else if (read < statedCount)
            add(TagFault::ApeCount, statedCount);
    }

    void examineItem(const ApeItem &item, bool leadsOut)
    {
        constexpr quint32 laidDown = 7;
        if (leadsOut)
            count(TagFault::ApeValue, item.name);
        if (!item.hasGoodName()) {
            count(TagFault::ApeName, item.name);
            return;
        }
        const QString name = QString::fromLatin1(item.name).toUpper();
        if (m_names.contains(name))
            count(TagFault::ApeTwice, item.name);
        m_names.insert(name);
        if ((item.flags & ~laidDown) != 0)
            count(TagFault::ApeFlags, item.name);
        m_findings.oldTexts.remove(name);
        if (!item.isText() || isUtf8(item.value))
            return;
        count(TagFault::ApeOldText, item.name);
        m_findings.oldTexts.insert(name, item.value.toByteArray().replace('\0', '\n'));
    }

    SoundBytes &m_bytes;
    SoundRange m_sound;
    TagFindings m_findings;
    QSet<QString> m_names;
};

} // namespace

bool forbidsSaving(TagFault fault)
{
    return fault == TagFault::ApeCutOff || fault == TagFault::ApeLength || fault == TagFault::ApeBeginning ||
           fault == TagFault::ApeOldText;
}

bool losesBySaving(TagFault fault)
{
    return fault == TagFault::Id3v2Rest || fault == TagFault::ApeRest || fault == TagFault::ApeName ||
           fault == TagFault::ApeTwice || fault == TagFault::ApeFlags;
}

TagFindings examineTags(SoundBytes &bytes, const SoundRange &sound)
{
    return Examination(bytes, sound).run();
}

} // namespace velmora

#include "filetypes/mp3/tag_edits.h"

#include "filetypes/mp3/engine/field_meaning.h"
#include "filetypes/mp3/engine/tag_agreement.h"

#include <algorithm>

namespace velmora {

namespace {

/// `tags` with secondary ones as the main ones have the things that were copied.
SongTags withFollowers(SongTags tags, SoundFormat format, const QList<SongField> &things, const QString &charset)
{
    const SongGroup leader = usedSystem(tags, format);
    for (const SongField &thing : things) {
        const std::optional<FieldMeaning> meaning = meaningOf(thing);
        if (!meaning || (isSecondary(thing.group) && thing.group != leader))
            continue;
        for (const SongGroup follower : {SongGroup::Id3v1, SongGroup::Ape}) {
            const bool isCopied = std::any_of(things.begin(), things.end(), [&](const SongField &other) {
                return other.group == follower && meaningOf(other) == meaning;
            });
            if (follower != leader && !isCopied)
                tags = withAgreement(std::move(tags), leader, follower, meaning->common, charset);
        }
    }
    return tags;
}

} // namespace

void TagEdits::begin(const Sides<Song> &songs)
{
    m_songs = songs;
    m_tags = {songs.left.tags, songs.right.tags};
    m_undo.clear();
    m_redo.clear();
}

Song TagEdits::edited(Side side) const
{
    Song song = m_songs[side];
    song.tags = m_tags[side];
    // No file is like it as long as it is not saved.
    if (isModified(side))
        song.fileHash = side == Side::Left ? QByteArrayLiteral("left") : QByteArrayLiteral("right");
    return song;
}

TagEdits::Copied TagEdits::change(Side side, const SongTags &copied, const SongTags &tags)
{
    if (areSame(m_tags[side], tags))
        return Copied::Nothing;
    m_undo.append(m_tags);
    m_redo.clear();
    m_tags[side] = tags;
    return areSame(copied, tags) ? Copied::Tags : Copied::MoreTags;
}

TagEdits::Copied TagEdits::copy(Side to, const QList<SongField> &things, const QString &charset)
{
    const Side from = otherSide(to);
    const SoundFormat format = m_songs[to].format;
    SongTags tags = m_tags[to];
    for (const SongField &thing : things) {
        const SongGroup system =
            thing.group == SongGroup::Common ? usedSystem(m_tags[from], m_songs[from].format) : thing.group;
        tags = canHold(format, thing.group)
                   ? withCopied(m_tags[from], tags, thing)
                   : withConverted({m_tags[from], system}, {tags, mainSystem(format)}, thing, charset);
    }
    return change(to, tags, withFollowers(tags, format, things, charset));
}

TagEdits::Copied TagEdits::copyAll(Side to, const QString &charset)
{
    const Side from = otherSide(to);
    const SoundFormat format = m_songs[to].format;
    const SongGroup system = usedSystem(m_tags[from], m_songs[from].format);
    if (canHold(format, system)) {
        const SongTags tags = withAllCopied(m_tags[from], m_tags[to], format);
        return change(to, tags, tags);
    }
    const SongTags tags = withAllConverted({m_tags[from], system}, {m_tags[to], mainSystem(format)}, charset);
    return change(to, tags, withFollowers(tags, format, commonFields(tags, mainSystem(format), charset), charset));
}

void TagEdits::undo()
{
    if (!canUndo())
        return;
    m_redo.append(m_tags);
    m_tags = m_undo.takeLast();
}

void TagEdits::redo()
{
    if (!canRedo())
        return;
    m_undo.append(m_tags);
    m_tags = m_redo.takeLast();
}

void TagEdits::takeSaved(Side side, const Song &song)
{
    m_songs[side] = song;
    // What was copied stays itself, with what is known of its pictures, unless the file could not hold it.
    if (areSame(song.tags, m_tags[side]))
        m_songs[side].tags = m_tags[side];
    else
        m_tags[side] = song.tags;
}

} // namespace velmora

#include "filetypes/mp3/tag_edits.h"

namespace velmora {

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

bool TagEdits::change(Side side, const SongTags &tags)
{
    if (areSame(m_tags[side], tags))
        return false;
    m_undo.append(m_tags);
    m_redo.clear();
    m_tags[side] = tags;
    return true;
}

bool TagEdits::copy(Side to, const QList<SongField> &things)
{
    SongTags tags = m_tags[to];
    for (const SongField &thing : things) {
        if (canHold(m_songs[to].format, thing.group))
            tags = withCopied(m_tags[otherSide(to)], tags, thing);
    }
    return change(to, tags);
}

bool TagEdits::copyAll(Side to)
{
    return change(to, withAllCopied(m_tags[otherSide(to)], m_tags[to], m_songs[to].format));
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

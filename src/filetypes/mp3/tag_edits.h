#pragma once

#include "core/sides.h"
#include "filetypes/mp3/engine/song_compare.h"
#include "filetypes/mp3/engine/song_edit.h"
#include "filetypes/mp3/engine/tag_conversion.h"

#include <QList>

namespace velmora {

/// Two songs as they are in their files, and their tags as a person has changed them, step by step. Saving is no step:
/// what was saved can be taken back, too, and is then to be saved again.
class TagEdits {
public:
    /// Begins anew with songs as they were read.
    void begin(const Sides<Song> &songs);

    [[nodiscard]] const Song &read(Side side) const { return m_songs[side]; }
    [[nodiscard]] const SongTags &tags(Side side) const { return m_tags[side]; }
    /// The song with its tags as they are now.
    [[nodiscard]] Song edited(Side side) const;
    [[nodiscard]] bool isModified(Side side) const { return !areSame(m_songs[side].tags, m_tags[side]); }
    [[nodiscard]] bool isModified() const { return isModified(Side::Left) || isModified(Side::Right); }

    /// What a copy has changed.
    enum class Copied : quint8 {
        Nothing,
        Tags,
        MoreTags ///< other tags of the file, too, which would have contradicted what was copied
    };
    /// Makes things of one side like those of the other, in one step; what its format has not, in the way that it has.
    /// Secondary tags that would contradict them follow, but for things that are copied themselves. `charset` as in
    /// `valueIn`.
    Copied copy(Side to, const QList<SongField> &things, const QString &charset);
    /// All tags as they are, contradictions among them; where the formats differ, as `copy` does it.
    Copied copyAll(Side to, const QString &charset);

    [[nodiscard]] bool canUndo() const { return !m_undo.isEmpty(); }
    [[nodiscard]] bool canRedo() const { return !m_redo.isEmpty(); }
    void undo();
    void redo();

    /// A side was saved, and is now `song`.
    void takeSaved(Side side, const Song &song);

private:
    Copied change(Side side, const SongTags &copied, const SongTags &tags);

    Sides<Song> m_songs;
    Sides<SongTags> m_tags;
    QList<Sides<SongTags>> m_undo;
    QList<Sides<SongTags>> m_redo;
};

} // namespace velmora

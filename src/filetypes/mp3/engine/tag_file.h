#pragma once

#include "filetypes/mp3/engine/sound_layout.h"

#include <memory>

#include <id3v2frame.h>
#include <id3v2framefactory.h>
#include <tfile.h>

namespace TagLib {
namespace APE {
class Tag;
}
namespace FLAC {
class File;
}
namespace ID3v1 {
class Tag;
}
namespace ID3v2 {
class Tag;
}
namespace MP4 {
class Tag;
}
namespace Ogg {
class XiphComment;
}
namespace RIFF::Info {
class Tag;
}
} // namespace TagLib

namespace velmora {

/// Opens to us what TagLib keeps for frames of one's own. Never made.
class FrameInside : public TagLib::ID3v2::Frame {
public:
    using Header = TagLib::ID3v2::Frame::Header;
    [[nodiscard]] static Header *headerOf(const TagLib::ID3v2::Frame &frame)
    {
        return (frame.*(&FrameInside::header))();
    }
};

/// Makes frames as the one that it derives from does, and throws `TagRefusal` where there are more, or more that are
/// compressed, than tags may have.
class GuardedFrames final : public TagLib::ID3v2::FrameFactory {
protected:
    bool updateFrame(FrameInside::Header *header) const override;

private:
    mutable int m_frames = 0;
    mutable qint64 m_compressed = 0;
};

/// A file opened for its tags. Those that it has not are null.
class TagFile {
public:
    /// `stream` must outlive this. Throws `TagRefusal`.
    TagFile(SoundFormat format, TagLib::IOStream &stream, bool withProperties);
    ~TagFile();
    Q_DISABLE_COPY_MOVE(TagFile)

    [[nodiscard]] bool isValid() const;
    [[nodiscard]] const TagLib::AudioProperties *properties() const { return m_file->audioProperties(); }

    // `make`: to make one where there is none. Null where the format has no such tag.
    [[nodiscard]] TagLib::ID3v2::Tag *id3v2(bool make = false) const;
    [[nodiscard]] TagLib::ID3v1::Tag *id3v1(bool make = false) const;
    [[nodiscard]] TagLib::APE::Tag *ape(bool make = false) const;
    [[nodiscard]] TagLib::Ogg::XiphComment *vorbis(bool make = false) const;
    [[nodiscard]] TagLib::MP4::Tag *mp4() const;
    [[nodiscard]] TagLib::RIFF::Info::Tag *info(bool make = false) const;
    [[nodiscard]] TagLib::FLAC::File *flac() const;

    /// Writes the tags, those of ID3v2 in version 2.3 or 2.4. False when TagLib did not.
    [[nodiscard]] bool save(int id3v2Minor);

private:
    GuardedFrames m_frames; // used by the file to its end
    SoundFormat m_format;
    std::unique_ptr<TagLib::File> m_file;
};

} // namespace velmora

#include "filetypes/mp3/engine/mp4_boxes.h"

#include "core/message_digest.h"

#include <algorithm>
#include <array>
#include <optional>

namespace velmora {

namespace {

/// Deeper than any file needs; who reads tags goes down with a call for each level.
constexpr int deepest = 16;

struct Box {
    QByteArray name;
    qint64 at = 0; ///< of its contents
    qint64 end = 0;
};

bool hasBoxes(const QByteArray &name)
{
    static constexpr std::array names{"moov", "udta", "mdia", "meta", "ilst", "stbl",
                                      "minf", "moof", "traf", "trak", "stsd"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

class BoxWalk {
public:
    BoxWalk(SoundBytes &bytes, SoundLayout &layout, const CancelFlag &cancel)
        : m_bytes(bytes), m_layout(layout), m_cancel(cancel)
    {}

    void run()
    {
        walk(0, m_bytes.size(), 0);
        if (m_layout.ok() && m_layout.sound.isEmpty())
            m_layout.fault = SoundFault::Damaged;
        for (const Box &table : std::as_const(m_chunkTables))
            addChunks(table);
        m_layout.arrangement = m_chunks.value();
    }

private:
    std::optional<Box> boxAt(qint64 at, qint64 end)
    {
        const QByteArrayView header = m_bytes.at(at, 16);
        if (at + 8 > end || header.size() < 8)
            return std::nullopt;
        auto length = qint64(bigEndian(header, 0, 4));
        qint64 headerLength = 8;
        if (length == 1) {
            headerLength = 16;
            length = qint64(bigEndian(header, 8, 8));
        }
        if (length == 0)
            length = end - at;
        if (length < headerLength)
            return std::nullopt;
        const QByteArray name = header.sliced(4, 4).toByteArray();
        if (length > end - at) {
            m_layout.isCutOff = true;
            length = end - at;
        }
        return Box{name, at + headerLength, at + length};
    }

    void walk(qint64 at, qint64 end, int depth)
    {
        while (at < end && m_layout.ok() && !m_cancel.isCancelled()) {
            const std::optional<Box> box = boxAt(at, end);
            if (!box) {
                ++m_layout.damagedPlaces;
                return;
            }
            if (depth == deepest || ++m_boxes > mostTagParts * 4)
                m_layout.fault = SoundFault::TooLarge;
            else
                take(*box, depth);
            at = box->end;
        }
    }

    void take(const Box &box, int depth)
    {
        if (box.name == "mdat")
            m_layout.sound.append({box.at, box.end - box.at});
        else if (box.name == "stco" || box.name == "co64")
            m_chunkTables.append(box);
        else if (box.name == "ilst" && box.end - box.at > mostTagBytes)
            m_layout.fault = SoundFault::TooLarge;
        if (hasBoxes(box.name))
            walk(box.at + headOf(box), box.end, depth + 1);
    }

    /// What a box has before those within it. Some writers leave out the version and flags of "meta".
    qint64 headOf(const Box &box)
    {
        if (box.name == "stsd")
            return 8;
        if (box.name != "meta")
            return 0;
        return m_bytes.at(box.at + 4, 4) == QByteArrayView("hdlr") ? 0 : 4;
    }

    void addChunks(const Box &table)
    {
        const int width = table.name == "co64" ? 8 : 4;
        const qint64 count =
            std::min<qint64>(qint64(bigEndian(m_bytes.at(table.at + 4, 4), 0, 4)), (table.end - table.at - 8) / width);
        for (qint64 k = 0; k < count && !m_cancel.isCancelled(); ++k) {
            const auto at = qint64(bigEndian(m_bytes.at(table.at + 8 + k * width, width), 0, width));
            m_chunks.update(placeInSound(at));
        }
    }

    /// The number of the run of data that holds a place, and its distance from the beginning there.
    QByteArray placeInSound(qint64 at) const
    {
        const QList<SoundRange> &sound = m_layout.sound;
        auto behind = std::upper_bound(sound.begin(), sound.end(), at,
                                       [](qint64 place, const SoundRange &range) { return place < range.at; });
        if (behind == sound.begin())
            return QByteArrayLiteral("- ");
        --behind;
        return QByteArray::number(behind - sound.begin()) + ':' + QByteArray::number(at - behind->at) + ' ';
    }

    SoundBytes &m_bytes;
    SoundLayout &m_layout;
    const CancelFlag &m_cancel;
    QList<Box> m_chunkTables;
    MessageDigest m_chunks{MessageDigest::Kind::Sha256};
    int m_boxes = 0;
};

} // namespace

SoundLayout findMp4(SoundBytes &bytes, const CancelFlag &cancel)
{
    SoundLayout layout;
    layout.format = SoundFormat::Mp4;
    BoxWalk(bytes, layout, cancel).run();
    return layout;
}

} // namespace velmora

#include "merge/view/merge_words.h"

#include "session/translate.h"

namespace velmora {

QString partText(const MergePart &part)
{
    switch (part.kind) {
    case ChunkKind::Unchanged:
        return Velmora::tr("unchanged");
    case ChunkKind::Left:
        return Velmora::tr("changed on the left");
    case ChunkKind::Right:
        return Velmora::tr("changed on the right");
    case ChunkKind::Both:
        return Velmora::tr("changed alike on both sides");
    case ChunkKind::Conflict:
        return Velmora::tr("conflict");
    }
    return {};
}

QString choiceText(const MergePart &part)
{
    switch (part.choice) {
    case MergeChoice::Open:
        return Velmora::tr("open");
    case MergeChoice::Base:
        return Velmora::tr("taken from the base");
    case MergeChoice::Left:
        return part.kind == ChunkKind::Both && !part.isByPerson ? Velmora::tr("taken from both")
                                                                : Velmora::tr("taken from the left");
    case MergeChoice::Right:
        return Velmora::tr("taken from the right");
    case MergeChoice::LeftThenRight:
        return Velmora::tr("left, then right");
    case MergeChoice::RightThenLeft:
        return Velmora::tr("right, then left");
    case MergeChoice::ByHand:
        return Velmora::tr("taken by hand");
    case MergeChoice::LineByLine:
        return part.leftOut.isEmpty() ? Velmora::tr("line by line")
                                      : Velmora::tr("line by line, lines left out: %1").arg(part.leftOut.size());
    }
    return {};
}

QString deciderText(const MergePart &part)
{
    if (part.isOpen())
        return {};
    return part.isByPerson ? Velmora::tr("by you") : Velmora::tr("without asking");
}

QString warningText(const MergePart &part)
{
    if (!part.leftOut.isEmpty())
        return Velmora::tr("The merge line by line left out lines, which are marked with ! above the result");
    if (part.isByPerson)
        return {};
    switch (part.mark) {
    case ChunkMark::None:
        break;
    case ChunkMark::BothInserted:
        return Velmora::tr("Both versions inserted the same lines here; the result has them once");
    case ChunkMark::InsertedTwice:
        return Velmora::tr("The other version inserted the same lines elsewhere; the result has them twice");
    }
    return {};
}

} // namespace velmora

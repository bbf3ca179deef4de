#include "filetypes/binary/binary_compare_job.h"

#include <QFileInfo>

namespace velmora {

BinaryCompareResult compareBinaries(const BinaryRequest &request, const CancelFlag &cancel, Progress &progress)
{
    using Fault = BinaryCompareResult::Fault;
    for (const Side side : bothSides) {
        if (QFileInfo(request.paths[side]).size() > binarySizeLimit)
            return {Fault::TooLarge, side};
    }
    auto document = std::make_shared<HexDocument>();
    document->starts = request.starts;
    for (const Side side : bothSides) {
        document->sources[side] = BinarySource::open(request.paths[side]);
        if (!document->sources[side])
            return {Fault::CannotOpen, side};
    }
    const BinaryPair files{{document->source(Side::Left), request.starts.left},
                           {document->source(Side::Right), request.starts.right}};
    RowComparison rows = compareRows(files, cancel, progress);
    document->rows = RowMap::unaligned(files);
    document->differences = rangesOfRows(rows, files, HexDocument::differenceLimit);
    document->stops = std::move(rows.diffRows);
    return {Fault::None, Side::Left, std::move(document), rows.differing, rows.rate(), rows.isCapped};
}

} // namespace velmora

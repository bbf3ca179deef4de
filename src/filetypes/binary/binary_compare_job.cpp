#include "filetypes/binary/binary_compare_job.h"

#include "filetypes/binary/engine/binary_align.h"

#include <QFileInfo>

namespace velmora {

namespace {

BinaryCompareResult compareInRows(const BinaryPair &files, HexDocument &document, const CancelFlag &cancel,
                                  Progress &progress)
{
    RowComparison rows = compareRows(files, cancel, progress);
    document.rows = RowMap::unaligned(files);
    document.differences = rangesOfRows(rows, files, HexDocument::differenceLimit);
    document.stops = std::move(rows.diffRows);
    document.isCapped = rows.isCapped;
    BinaryCompareResult result;
    result.differing = rows.differing;
    result.rate = rows.rate();
    result.isCapped = rows.isCapped;
    return result;
}

BinaryCompareResult compareAligned(const BinaryPair &files, HexDocument &document, const CancelFlag &cancel,
                                   Progress &progress)
{
    Alignment alignment = alignFiles(files, cancel, progress);
    document.isAligned = true;
    document.rows = RowMap(std::move(alignment.ranges));
    const std::vector<AlignedRange> &ranges = document.rows.ranges();
    for (std::size_t k = 0; k < ranges.size(); ++k) {
        if (ranges[k].kind == RangeKind::Equal)
            continue;
        document.stops.push_back(document.rows.firstRow(k));
        document.differences.push_back(ranges[k]);
    }
    BinaryCompareResult result;
    result.differing = qint64(document.differences.size());
    result.isCapped = alignment.isCapped;
    return result;
}

} // namespace

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
    BinaryCompareResult result = request.aligns ? compareAligned(files, *document, cancel, progress)
                                                : compareInRows(files, *document, cancel, progress);
    result.document = std::move(document);
    return result;
}

} // namespace velmora

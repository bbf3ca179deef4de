#include "folder/operations/operation_codes.h"

#include <algorithm>
#include <array>

namespace velmora {

OperationErrorCode sourceCode(FileErrorKind kind)
{
    switch (kind) {
    case FileErrorKind::Missing:
    case FileErrorKind::NotAFolder:
        return OperationErrorCode::SourceMissing;
    case FileErrorKind::LinkOnTheWay:
        return OperationErrorCode::LeadsOutside;
    case FileErrorKind::NotAFile:
    case FileErrorKind::NotExpected:
        return OperationErrorCode::SourceChanged;
    case FileErrorKind::Stopped:
        return OperationErrorCode::Cancelled;
    default:
        return OperationErrorCode::NotReadable;
    }
}

OperationErrorCode targetCode(FileErrorKind kind)
{
    switch (kind) {
    case FileErrorKind::Missing:
    case FileErrorKind::NotAFolder:
        return OperationErrorCode::TargetChanged;
    case FileErrorKind::Exists:
        return OperationErrorCode::TargetAppeared;
    case FileErrorKind::LinkOnTheWay:
        return OperationErrorCode::LeadsOutside;
    case FileErrorKind::NotEmpty:
        return OperationErrorCode::FolderNotEmpty;
    case FileErrorKind::NoSpace:
        return OperationErrorCode::NoSpace;
    case FileErrorKind::NameNotAllowed:
        return OperationErrorCode::NameNotAllowed;
    case FileErrorKind::ReadFailed:
        return OperationErrorCode::NotReadable;
    case FileErrorKind::Stopped:
        return OperationErrorCode::Cancelled;
    case FileErrorKind::Unsupported:
        return OperationErrorCode::Unsupported;
    default:
        return OperationErrorCode::NotWritable;
    }
}

bool isSkip(OperationErrorCode code)
{
    using enum OperationErrorCode;
    constexpr std::array skips{SourceMissing,   SourceChanged, TargetChanged,  TargetAppeared,  CounterpartAppeared,
                               KeptCopyChanged, LeadsOutside,  FolderNotEmpty, TroubleInBranch, OtherInBin};
    return std::find(skips.begin(), skips.end(), code) != skips.end();
}

} // namespace velmora

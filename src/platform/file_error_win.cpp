#include "platform/file_error_win.h"

#include <sherrors.h>

namespace velmora {

namespace {

FileErrorKind errorKind(DWORD number)
{
    switch (number) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return FileErrorKind::Missing;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return FileErrorKind::Exists;
    case ERROR_DIRECTORY:
        return FileErrorKind::NotAFolder;
    case ERROR_DIR_NOT_EMPTY:
        return FileErrorKind::NotEmpty;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_PRIVILEGE_NOT_HELD:
        return FileErrorKind::Denied;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return FileErrorKind::InUse;
    case ERROR_CRC:
    case ERROR_SEEK:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_READ_FAULT:
        return FileErrorKind::ReadFailed;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return FileErrorKind::NoSpace;
    case ERROR_INVALID_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
        return FileErrorKind::NameNotAllowed;
    case ERROR_NOT_SAME_DEVICE:
        return FileErrorKind::OtherVolume;
    case ERROR_NOT_SUPPORTED:
    case ERROR_INVALID_FUNCTION:
        return FileErrorKind::Unsupported;
    case ERROR_REQUEST_ABORTED:
        return FileErrorKind::Stopped;
    default:
        return FileErrorKind::Other;
    }
}

FileErrorKind shellErrorKind(HRESULT result)
{
    switch (result) {
    case COPYENGINE_E_RECYCLE_UNKNOWN_ERROR:
    case COPYENGINE_E_RECYCLE_FORCE_NUKE:
    case COPYENGINE_E_RECYCLE_SIZE_TOO_BIG:
    case COPYENGINE_E_RECYCLE_PATH_TOO_LONG:
    case COPYENGINE_E_RECYCLE_BIN_NOT_FOUND:
        return FileErrorKind::Unsupported;
    case COPYENGINE_E_PATH_NOT_FOUND_SRC:
        return FileErrorKind::Missing;
    case COPYENGINE_E_SHARING_VIOLATION_SRC:
        return FileErrorKind::InUse;
    case COPYENGINE_E_ACCESS_DENIED_SRC:
    case COPYENGINE_E_REQUIRES_ELEVATION:
        return FileErrorKind::Denied;
    default:
        return FileErrorKind::Other;
    }
}

} // namespace

FileError fileErrorOf(DWORD number)
{
    return {errorKind(number), qt_error_string(int(number))};
}

FileError fileErrorOfShell(HRESULT result)
{
    if (SUCCEEDED(result))
        return {};
    if (HRESULT_FACILITY(result) == FACILITY_WIN32)
        return fileErrorOf(DWORD(HRESULT_CODE(result)));
    return {shellErrorKind(result), qt_error_string(int(result))};
}

} // namespace velmora

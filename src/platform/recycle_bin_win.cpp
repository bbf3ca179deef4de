#include "platform/recycle_bin_win.h"

#include "platform/file_error_win.h"
#include "platform/long_path_win.h"

#include <memory>
#include <optional>
#include <string>

#include <windows.h>
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shobjidl.h>

namespace velmora {

namespace {

// Nobody is asked or shown anything, save before something would be destroyed, which the two ways below rule out as far
// as they can: then the shell asks. Without the last flag it takes the "files" folder of a saved web page along.
constexpr DWORD toTheBin =
    FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT | FOF_WANTNUKEWARNING | FOF_NO_CONNECTED_ELEMENTS;

struct ReleaseObject {
    void operator()(IUnknown *object) const { object->Release(); }
};
template <typename Interface>
using ComPointer = std::unique_ptr<Interface, ReleaseObject>;

/// COM on this thread for as long as it lives.
class ComUse final {
public:
    ComUse() : m_result(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~ComUse()
    {
        if (SUCCEEDED(m_result))
            ::CoUninitialize();
    }
    ComUse(const ComUse &) = delete;
    ComUse &operator=(const ComUse &) = delete;

    [[nodiscard]] HRESULT result() const { return m_result; }

private:
    HRESULT m_result;
};

QString fileSystemPath(IShellItem &item)
{
    wchar_t *name = nullptr;
    if (FAILED(item.GetDisplayName(SIGDN_FILESYSPATH, &name)))
        return {};
    QString path = QString::fromWCharArray(name).replace(u'\\', u'/');
    ::CoTaskMemFree(name);
    return path;
}

#ifdef __GNUC__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor" // COM interfaces have none
#endif

/// Says no when something would be destroyed instead of recycled, and notes where it went. Owned by whoever made it,
/// not by those who count references, and must outlive the operation that it is told to.
class RecycleSink final : public IFileOperationProgressSink {
public:
    RecycleSink() = default;
    virtual ~RecycleSink() = default;
    RecycleSink(const RecycleSink &) = delete;
    RecycleSink &operator=(const RecycleSink &) = delete;

    [[nodiscard]] bool hasRefused() const { return m_hasRefused; }
    /// Of the deletion itself, which may have failed although the whole operation says that it is done.
    [[nodiscard]] HRESULT end() const { return m_end; }
    [[nodiscard]] const QString &binPath() const { return m_binPath; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void **object) override
    {
        const bool isKnown =
            IsEqualIID(id, IID_IUnknown) != FALSE || IsEqualIID(id, IID_IFileOperationProgressSink) != FALSE;
        *object = isKnown ? static_cast<IFileOperationProgressSink *>(this) : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE PreDeleteItem(DWORD flags, IShellItem * /*item*/) override
    {
        if ((flags & TSF_DELETE_RECYCLE_IF_POSSIBLE) != 0)
            return S_OK;
        m_hasRefused = true;
        return E_ABORT;
    }
    HRESULT STDMETHODCALLTYPE PostDeleteItem(DWORD /*flags*/, IShellItem * /*item*/, HRESULT result,
                                             IShellItem *recycled) override
    {
        m_end = result;
        if (recycled)
            m_binPath = fileSystemPath(*recycled);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE StartOperations() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE FinishOperations(HRESULT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PreRenameItem(DWORD, IShellItem *, LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostRenameItem(DWORD, IShellItem *, LPCWSTR, HRESULT, IShellItem *) override
    {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PreMoveItem(DWORD, IShellItem *, IShellItem *, LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostMoveItem(DWORD, IShellItem *, IShellItem *, LPCWSTR, HRESULT, IShellItem *) override
    {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PreCopyItem(DWORD, IShellItem *, IShellItem *, LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostCopyItem(DWORD, IShellItem *, IShellItem *, LPCWSTR, HRESULT, IShellItem *) override
    {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PreNewItem(DWORD, IShellItem *, LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostNewItem(DWORD, IShellItem *, LPCWSTR, LPCWSTR, DWORD, HRESULT, IShellItem *) override
    {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UpdateProgress(UINT, UINT) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResetTimer() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PauseTimer() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResumeTimer() override { return S_OK; }

private:
    bool m_hasRefused = false;
    HRESULT m_end = S_OK;
    QString m_binPath;
};

#ifdef __GNUC__
#pragma GCC diagnostic pop
#endif

FileError unsupported(DWORD number)
{
    return {FileErrorKind::Unsupported, fileErrorOf(number).reason};
}

/// The shell's own operations; null with `error` set when they cannot be had, and without where the system has none.
ComPointer<IFileOperation> shellOperation(FileError &error)
{
    void *object = nullptr;
    const HRESULT made =
        ::CoCreateInstance(CLSID_FileOperation, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOperation, &object);
    if (made == REGDB_E_CLASSNOTREG || made == E_NOINTERFACE)
        return nullptr;
    error = fileErrorOfShell(made);
    if (error.isError())
        return nullptr;
    ComPointer<IFileOperation> operation(static_cast<IFileOperation *>(object));
    const HRESULT set =
        operation->SetOperationFlags(toTheBin | FOFX_RECYCLEONDELETE | FOFX_ADDUNDORECORD | FOFX_EARLYFAILURE);
    if (set == E_NOTIMPL)
        return nullptr;
    error = fileErrorOfShell(set);
    return error.isError() ? nullptr : std::move(operation);
}

RecycleResult recycleBy(IFileOperation &operation, const std::wstring &path)
{
    void *object = nullptr;
    HRESULT result = ::SHCreateItemFromParsingName(path.c_str(), nullptr, IID_IShellItem, &object);
    if (FAILED(result))
        return {{}, fileErrorOfShell(result)};
    const ComPointer<IShellItem> item(static_cast<IShellItem *>(object));
    RecycleSink sink;
    DWORD cookie = 0;
    result = operation.Advise(&sink, &cookie);
    if (FAILED(result)) // nobody would say no
        return {{}, fileErrorOfShell(result)};
    result = operation.DeleteItem(item.get(), nullptr);
    if (SUCCEEDED(result))
        result = operation.PerformOperations();
    BOOL isAborted = FALSE;
    (void)operation.GetAnyOperationsAborted(&isAborted);
    (void)operation.Unadvise(cookie);
    if (sink.hasRefused())
        return {{}, unsupported(ERROR_NOT_SUPPORTED)};
    if (FAILED(sink.end()))
        return {{}, fileErrorOfShell(sink.end())};
    if (FAILED(result))
        return {{}, fileErrorOfShell(result)};
    return isAborted ? RecycleResult{{}, unsupported(ERROR_CANCELLED)} : RecycleResult{sink.binPath(), {}};
}

/// For systems that have the newer way in name only. Does not tell where the entry went.
RecycleResult recycleTheOldWay(const std::wstring &path)
{
    const std::wstring list = path + L'\0'; // ends with two of them
    SHFILEOPSTRUCTW operation{};
    operation.wFunc = FO_DELETE;
    operation.pFrom = list.c_str();
    operation.fFlags = FILEOP_FLAGS(toTheBin);
    const int result = ::SHFileOperationW(&operation);
    if (result != 0) {
        // Numbers of its own mix with those of the system there.
        const FileError error = fileErrorOf(DWORD(result));
        return {{}, error.kind == FileErrorKind::Other ? unsupported(ERROR_NOT_SUPPORTED) : error};
    }
    return {{}, operation.fAnyOperationsAborted ? unsupported(ERROR_CANCELLED) : FileError()};
}

/// The path as the shell takes it; empty where it would take that for something else or for nothing: it drops dots and
/// blanks at the end of names, sees devices in some, patterns in others, and knows no paths of `MAX_PATH` or more.
std::wstring shellPath(const QString &path)
{
    const std::wstring native = QString(path).replace(u'/', u'\\').toStdWString();
    if (native.size() + 1 >= MAX_PATH || native.find_first_of(L"*?\"<>|") != std::wstring::npos)
        return {};
    std::wstring taken(MAX_PATH, L'\0');
    const DWORD length = ::GetFullPathNameW(native.c_str(), DWORD(taken.size()), taken.data(), nullptr);
    taken.resize(length < taken.size() ? length : 0);
    return taken == native ? native : std::wstring();
}

bool isThere(const QString &path)
{
    return ::GetFileAttributesW(longPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace

RecycleResult moveToRecycleBin(const QString &path)
{
    if (!isThere(path))
        return {{}, fileErrorOf(::GetLastError())};
    const std::wstring native = shellPath(path);
    if (native.empty())
        return {{}, unsupported(ERROR_INVALID_NAME)};
    const ComUse com;
    FileError error = fileErrorOfShell(com.result());
    if (error.isError())
        return {{}, error};
    const ComPointer<IFileOperation> operation = shellOperation(error);
    if (error.isError())
        return {{}, error};
    const RecycleResult result = operation ? recycleBy(*operation, native) : recycleTheOldWay(native);
    if (!result.error.isError() && isThere(path))
        return {{}, unsupported(ERROR_NOT_SUPPORTED)};
    return result;
}

void forgetInRecycleBin(const QString &binPath)
{
    // Beside the contents "$R…" the bin keeps a note "$I…", which would show an entry that is no longer there.
    QString note = binPath;
    const qsizetype mark = note.lastIndexOf(QLatin1String("$R"));
    if (mark <= 0 || note.indexOf(u'/', mark) >= 0 || note.indexOf(u'\\', mark) >= 0)
        return;
    note[mark + 1] = u'I';
    (void)::DeleteFileW(longPath(note).c_str());
}

} // namespace velmora

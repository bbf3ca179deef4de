#include "vfs/archive/archive_stream.h"

#include "vfs/archive/archive_library.h"

#include <algorithm>
#include <cerrno>

namespace velmora {

namespace {

constexpr qint64 inputBlock = 256 * 1024;
constexpr qsizetype outputBlock = 256 * 1024;

QByteArray orElse(const char *wanted, const char *other)
{
    return QByteArray(wanted ? wanted : other);
}

ArchiveEntryKind kindOf(const ArchiveLibrary &library, archive_entry *entry)
{
    if (library.archive_entry_hardlink(entry))
        return ArchiveEntryKind::HardLink;
    switch (library.archive_entry_filetype(entry)) {
    case AE_IFDIR:
        return ArchiveEntryKind::Folder;
    case AE_IFLNK:
        return ArchiveEntryKind::Link;
    case AE_IFREG:
    case 0: // formats without kinds
        return ArchiveEntryKind::File;
    default:
        return ArchiveEntryKind::Special;
    }
}

/// Whether names are bytes in no encoding that the archive tells.
bool hasBareNames(int format)
{
    return format == ARCHIVE_FORMAT_TAR || format == ARCHIVE_FORMAT_TAR_USTAR || format == ARCHIVE_FORMAT_TAR_GNUTAR;
}

// The bytes of names that are in no encoding the library knows of; else UTF-8, which is exact on every system. Where
// Windows has a code page of single bytes, the library would take bare names for its own.
ArchiveEntry entryOf(const ArchiveLibrary &library, archive_entry *entry, bool isBare)
{
    const auto text = [isBare](const char *utf8, const char *bytes) {
        return isBare ? orElse(bytes, utf8) : orElse(utf8, bytes);
    };
    ArchiveEntry result;
    result.name = text(library.archive_entry_pathname_utf8(entry), library.archive_entry_pathname(entry));
    result.kind = kindOf(library, entry);
    if (result.kind == ArchiveEntryKind::Link)
        result.target = text(library.archive_entry_symlink_utf8(entry), library.archive_entry_symlink(entry));
    else if (result.kind == ArchiveEntryKind::HardLink)
        result.target = text(library.archive_entry_hardlink_utf8(entry), library.archive_entry_hardlink(entry));
    result.size =
        library.archive_entry_size_is_set(entry) ? std::max<qint64>(library.archive_entry_size(entry), 0) : -1;
    // Further away than this no calendar goes, and seconds would not fit as milliseconds.
    constexpr qint64 farthest = qint64(1) << 43;
    if (library.archive_entry_mtime_is_set(entry)) {
        const qint64 seconds = std::clamp<qint64>(library.archive_entry_mtime(entry), -farthest, farthest);
        result.modifiedMs = seconds * 1000 + library.archive_entry_mtime_nsec(entry) / 1'000'000;
    }
    if (library.archive_entry_perm(entry) != 0)
        result.mode = library.archive_entry_perm(entry) & 07777U;
    result.isEncrypted = library.archive_entry_is_encrypted(entry) > 0;
    return result;
}

void supportFormats(const ArchiveLibrary &library, archive *reader)
{
    library.archive_read_support_filter_gzip(reader);
    library.archive_read_support_filter_bzip2(reader);
    library.archive_read_support_filter_compress(reader);
    library.archive_read_support_filter_lzma(reader);
    library.archive_read_support_filter_xz(reader);
    library.archive_read_support_filter_lzip(reader);
    library.archive_read_support_filter_lz4(reader);
    library.archive_read_support_filter_zstd(reader);
    library.archive_read_support_filter_rpm(reader);
    library.archive_read_support_format_tar(reader);
    library.archive_read_support_format_zip(reader);
    library.archive_read_support_format_7zip(reader);
    library.archive_read_support_format_cab(reader);
    library.archive_read_support_format_iso9660(reader);
    library.archive_read_support_format_cpio(reader);
    library.archive_read_support_format_ar(reader);
    library.archive_read_support_format_rar(reader);
    library.archive_read_support_format_rar5(reader);
    library.archive_read_support_format_lha(reader);
    library.archive_read_support_format_xar(reader);
    library.archive_read_support_format_raw(reader); // takes what nothing else does: one compressed file
}

} // namespace

/// The reader of the library, and where it reads.
class ArchiveStream::Handle {
public:
    Handle(const ArchiveLibrary &library, std::shared_ptr<OpenFile> file, CancelFlag cancel)
        : m_library(library),
          m_reader(library.archive_read_new()),
          m_file(std::move(file)),
          m_cancel(std::move(cancel)),
          m_block(inputBlock, Qt::Uninitialized)
    {}
    ~Handle() { m_library.archive_read_free(m_reader); }
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;

    [[nodiscard]] const ArchiveLibrary &library() const { return m_library; }
    [[nodiscard]] archive *reader() const { return m_reader; }
    [[nodiscard]] bool isCancelled() const { return m_cancel.isCancelled(); }

    [[nodiscard]] int open()
    {
        m_library.archive_read_set_callback_data(m_reader, this);
        m_library.archive_read_set_read_callback(m_reader, [](archive *, void *self, const void **block) {
            return static_cast<Handle *>(self)->read(block);
        });
        m_library.archive_read_set_seek_callback(m_reader, [](archive *, void *self, la_int64_t offset, int whence) {
            return static_cast<Handle *>(self)->seek(offset, whence);
        });
        m_library.archive_read_set_skip_callback(m_reader, [](archive *, void *self, la_int64_t length) {
            return static_cast<Handle *>(self)->skip(length);
        });
        return m_library.archive_read_open1(m_reader);
    }

private:
    la_ssize_t read(const void **block)
    {
        if (m_cancel.isCancelled())
            return fail(ECANCELED);
        const FilePiece piece = m_file->readAt(m_offset, m_block.data(), m_block.size());
        if (piece.failed && piece.length == 0)
            return fail(EIO);
        m_offset += piece.length;
        *block = m_block.constData();
        return la_ssize_t(piece.length);
    }

    la_int64_t seek(la_int64_t offset, int whence)
    {
        const qint64 size = m_file->size().value_or(0);
        const qint64 from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? m_offset : size;
        m_offset = std::clamp<qint64>(from + std::clamp<qint64>(offset, -size, size), 0, size);
        return m_offset;
    }

    la_int64_t skip(la_int64_t length)
    {
        const qint64 rest = m_file->size().value_or(0) - m_offset;
        const qint64 skipped = std::clamp<qint64>(length, 0, std::max<qint64>(rest, 0));
        m_offset += skipped;
        return skipped;
    }

    la_ssize_t fail(int number)
    {
        m_library.archive_set_error(m_reader, number, "%s", number == EIO ? "cannot read the file" : "stopped");
        return -1;
    }

    const ArchiveLibrary &m_library;
    archive *m_reader;
    std::shared_ptr<OpenFile> m_file;
    CancelFlag m_cancel;
    QByteArray m_block;
    qint64 m_offset = 0;
};

bool ArchiveStream::isPossible()
{
    return ArchiveLibrary::get() != nullptr;
}

ArchiveStream::ArchiveStream(std::shared_ptr<OpenFile> file, const QByteArray &password, CancelFlag cancel)
{
    const ArchiveLibrary *library = ArchiveLibrary::get();
    m_isBroken = !library;
    if (!library)
        return;
    m_handle = std::make_unique<Handle>(*library, std::move(file), std::move(cancel));
    supportFormats(*library, m_handle->reader());
    if (!password.isEmpty())
        m_handle->library().archive_read_add_passphrase(m_handle->reader(), password.constData());
    m_isBroken = m_handle->open() != ARCHIVE_OK;
}

ArchiveStream::~ArchiveStream() = default;

ArchiveStream::Step ArchiveStream::next()
{
    if (m_isBroken)
        return Step::Broken;
    archive_entry *entry = nullptr;
    const int result = m_handle->library().archive_read_next_header(m_handle->reader(), &entry);
    if (result == ARCHIVE_EOF)
        return Step::End;
    const bool isPlainFile = m_handle->library().archive_format(m_handle->reader()) == ARCHIVE_FORMAT_RAW &&
                             m_handle->library().archive_filter_count(m_handle->reader()) < 2;
    m_isBroken = result < ARCHIVE_WARN || m_handle->isCancelled() || isPlainFile;
    if (m_isBroken)
        return Step::Broken;
    const ArchiveLibrary &library = m_handle->library();
    m_entry = entryOf(library, entry, hasBareNames(library.archive_format(m_handle->reader())));
    m_entry.position = m_count++;
    return Step::Entry;
}

bool ArchiveStream::readContent(const Sink &sink)
{
    m_buffer.resize(outputBlock);
    qint64 count = 0;
    do
        count = readSome(m_buffer.data(), m_buffer.size());
    while (count > 0 && sink(QByteArrayView(m_buffer.constData(), count)));
    return count == 0;
}

qint64 ArchiveStream::readSome(char *buffer, qint64 length)
{
    if (m_handle->isCancelled())
        return -1;
    const la_ssize_t count = m_handle->library().archive_read_data(m_handle->reader(), buffer, std::size_t(length));
    m_isBroken = m_isBroken || count == ARCHIVE_FATAL;
    return count < 0 ? -1 : qint64(count);
}

bool ArchiveStream::canDecrypt() const
{
    constexpr int family = 0xFF0000; // of formats
    return m_handle && (m_handle->library().archive_format(m_handle->reader()) & family) == ARCHIVE_FORMAT_ZIP;
}

bool ArchiveStream::hidesNames() const
{
    // The library looks for the format, which there is none of when the file could not even be begun.
    return m_isBroken && m_count == 0 && m_handle && m_handle->library().archive_format(m_handle->reader()) != 0 &&
           m_handle->library().archive_read_has_encrypted_entries(m_handle->reader()) > 0;
}

bool ArchiveStream::endsEncrypted() const
{
    // The library has no number for it, and its words are never translated.
    return m_isBroken && m_handle && m_handle->library().archive_read_has_encrypted_entries(m_handle->reader()) > 0 &&
           error().contains(QLatin1String("encrypted"));
}

QString ArchiveStream::error() const
{
    if (!m_handle)
        return QStringLiteral("libarchive cannot be loaded");
    const char *text = m_handle->library().archive_error_string(m_handle->reader());
    return text ? QString::fromLocal8Bit(text) : QString();
}

QByteArray ArchiveStream::format() const
{
    return m_handle ? orElse(m_handle->library().archive_format_name(m_handle->reader()), "") : QByteArray();
}

QByteArray ArchiveStream::compression() const
{
    QByteArray names;
    for (int i = 0; m_handle && i + 1 < m_handle->library().archive_filter_count(m_handle->reader()); ++i)
        names +=
            (names.isEmpty() ? "" : ", ") + orElse(m_handle->library().archive_filter_name(m_handle->reader(), i), "");
    return names;
}

qint64 ArchiveStream::consumed() const
{
    return m_handle ? m_handle->library().archive_filter_bytes(m_handle->reader(), -1) : 0;
}

} // namespace velmora

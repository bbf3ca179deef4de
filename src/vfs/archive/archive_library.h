#pragma once

#include <archive.h>
#include <archive_entry.h>

namespace velmora {

// Everything that is called in libarchive.
#define VELMORA_ARCHIVE_FUNCTIONS(FUNCTION)                                                                            \
    FUNCTION(archive_entry_filetype)                                                                                   \
    FUNCTION(archive_entry_hardlink)                                                                                   \
    FUNCTION(archive_entry_hardlink_utf8)                                                                              \
    FUNCTION(archive_entry_is_encrypted)                                                                               \
    FUNCTION(archive_entry_mtime)                                                                                      \
    FUNCTION(archive_entry_mtime_is_set)                                                                               \
    FUNCTION(archive_entry_mtime_nsec)                                                                                 \
    FUNCTION(archive_entry_pathname)                                                                                   \
    FUNCTION(archive_entry_pathname_utf8)                                                                              \
    FUNCTION(archive_entry_perm)                                                                                       \
    FUNCTION(archive_entry_size)                                                                                       \
    FUNCTION(archive_entry_size_is_set)                                                                                \
    FUNCTION(archive_entry_symlink)                                                                                    \
    FUNCTION(archive_entry_symlink_utf8)                                                                               \
    FUNCTION(archive_error_string)                                                                                     \
    FUNCTION(archive_filter_bytes)                                                                                     \
    FUNCTION(archive_filter_count)                                                                                     \
    FUNCTION(archive_filter_name)                                                                                      \
    FUNCTION(archive_format)                                                                                           \
    FUNCTION(archive_format_name)                                                                                      \
    FUNCTION(archive_read_add_passphrase)                                                                              \
    FUNCTION(archive_read_data)                                                                                        \
    FUNCTION(archive_read_free)                                                                                        \
    FUNCTION(archive_read_has_encrypted_entries)                                                                       \
    FUNCTION(archive_read_new)                                                                                         \
    FUNCTION(archive_read_next_header)                                                                                 \
    FUNCTION(archive_read_open1)                                                                                       \
    FUNCTION(archive_read_set_callback_data)                                                                           \
    FUNCTION(archive_read_set_read_callback)                                                                           \
    FUNCTION(archive_read_set_seek_callback)                                                                           \
    FUNCTION(archive_read_set_skip_callback)                                                                           \
    FUNCTION(archive_read_support_filter_bzip2)                                                                        \
    FUNCTION(archive_read_support_filter_compress)                                                                     \
    FUNCTION(archive_read_support_filter_gzip)                                                                         \
    FUNCTION(archive_read_support_filter_lz4)                                                                          \
    FUNCTION(archive_read_support_filter_lzip)                                                                         \
    FUNCTION(archive_read_support_filter_lzma)                                                                         \
    FUNCTION(archive_read_support_filter_rpm)                                                                          \
    FUNCTION(archive_read_support_filter_xz)                                                                           \
    FUNCTION(archive_read_support_filter_zstd)                                                                         \
    FUNCTION(archive_read_support_format_7zip)                                                                         \
    FUNCTION(archive_read_support_format_ar)                                                                           \
    FUNCTION(archive_read_support_format_cab)                                                                          \
    FUNCTION(archive_read_support_format_cpio)                                                                         \
    FUNCTION(archive_read_support_format_iso9660)                                                                      \
    FUNCTION(archive_read_support_format_lha)                                                                          \
    FUNCTION(archive_read_support_format_rar)                                                                          \
    FUNCTION(archive_read_support_format_rar5)                                                                         \
    FUNCTION(archive_read_support_format_raw)                                                                          \
    FUNCTION(archive_read_support_format_tar)                                                                          \
    FUNCTION(archive_read_support_format_xar)                                                                          \
    FUNCTION(archive_read_support_format_zip)                                                                          \
    FUNCTION(archive_set_error)

/// libarchive, fetched when the first archive is met: with what it needs itself it would take longer to load than most
/// commands of the command-line program take as a whole. Where it is linked statically the functions are at hand.
struct ArchiveLibrary {
#define VELMORA_ARCHIVE_FIELD(name) decltype(&::name) name = nullptr;
    VELMORA_ARCHIVE_FUNCTIONS(VELMORA_ARCHIVE_FIELD)
#undef VELMORA_ARCHIVE_FIELD

    /// Null when this system has no such library. Loads once; may be called on any thread.
    [[nodiscard]] static const ArchiveLibrary *get();
};

} // namespace velmora

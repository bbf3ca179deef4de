#pragma once

#include <QByteArray>
#include <QList>

#include <utility>

#include <archive.h>
#include <archive_entry.h>

namespace velmora::test {

struct Made {
    QByteArray name;
    QByteArray content = {};
    QByteArray link = {};
};

inline const QList<Made> plainFiles{{"docs/a.txt", "alpha\n"},
                                    {"docs/deep/b.bin", QByteArray(300'000, 'b')},
                                    {"empty", ""},
                                    {"link", "", "docs/a.txt"}};

/// An archive of `files`, by the library's names of formats and compressions; a zip may have a password. Empty where
/// the library was built without the format.
inline QByteArray packed(const QList<Made> &files, const char *format, const char *filter = "none",
                         const char *password = nullptr)
{
    QByteArray bytes(8 << 20, '\0');
    std::size_t used = 0;
    archive *writer = archive_write_new();
    if (archive_write_set_format_by_name(writer, format) != ARCHIVE_OK) {
        archive_write_free(writer);
        return {};
    }
    if (qstrcmp(filter, "none") != 0)
        archive_write_add_filter_by_name(writer, filter);
    if (password) {
        archive_write_set_options(writer, "zip:encryption=aes256");
        archive_write_set_passphrase(writer, password);
    }
    archive_write_set_bytes_in_last_block(writer, 1);
    archive_write_open_memory(writer, bytes.data(), std::size_t(bytes.size()), &used);
    for (const Made &file : files) {
        archive_entry *entry = archive_entry_new();
        archive_entry_set_pathname(entry, file.name.constData());
        archive_entry_set_mtime(entry, 1'600'000'000, 0);
        archive_entry_set_filetype(entry, file.link.isEmpty() ? AE_IFREG : AE_IFLNK);
        archive_entry_set_perm(entry, 0644);
        archive_entry_set_ino64(entry, 1 + &file - files.constData()); // cpio takes those of one number for one file
        archive_entry_set_size(entry, file.content.size());
        if (!file.link.isEmpty())
            archive_entry_set_symlink(entry, file.link.constData());
        archive_write_header(writer, entry);
        if (!file.content.isEmpty())
            archive_write_data(writer, file.content.constData(), std::size_t(file.content.size()));
        archive_entry_free(entry);
    }
    archive_write_close(writer);
    archive_write_free(writer);
    bytes.truncate(qsizetype(used));
    return bytes;
}

} // namespace velmora::test

#include "folder/browse/archive_view_words.h"

#include "folder/actions/action_words.h"
#include "session/translate.h"

#include <QLocale>

namespace velmora {

QString ratioText(qint64 packed, qint64 size)
{
    return packed < 0 || size <= 0 ? QString() : QString::number(packed * 100 / size) + u'%';
}

QString archiveFactsText(const ArchiveListing &listing)
{
    const ArchiveParts &parts = listing.source().parts();
    const ArchiveTotals &totals = listing.totals();
    QStringList facts{QString::fromUtf8(parts.format),
                      Velmora::tr("Files: %1, folders: %2")
                          .arg(QLocale().toString(totals.files), QLocale().toString(totals.folders))};
    if (totals.size >= 0)
        facts.append(Velmora::tr("%1 unpacked, %2 packed (%3)")
                         .arg(sizeText(totals.size), sizeText(parts.size),
                              totals.size > 0 ? ratioText(parts.size, totals.size) : QStringLiteral("—")));
    return facts.join(totalsSeparator);
}

QString folderFactsText(const ArchiveListing &listing, qint32 row)
{
    qint64 files = 0;
    qint64 folders = 0;
    for (qint32 at = row + 1; at < listing.count() && listing.row(at).depth > listing.row(row).depth; ++at)
        (listing.row(at).isFolder ? folders : files) += 1;
    QString text = Velmora::tr("Files: %1, folders: %2").arg(QLocale().toString(files), QLocale().toString(folders));
    if (listing.row(row).size > 0)
        text += u'\n' + sizeText(listing.row(row).size);
    return text;
}

QString modeText(const ArchiveEntry &entry)
{
    if (!entry.mode)
        return {};
    const char16_t kind = entry.kind == ArchiveEntryKind::Folder    ? u'd'
                          : entry.kind == ArchiveEntryKind::Link    ? u'l'
                          : entry.kind == ArchiveEntryKind::Special ? u'?'
                                                                    : u'-';
    QString text(kind);
    // Beside the last bit of each three stands what else it may say: run as the owner, as the group, and in folders
    // that only owners delete.
    for (int who = 2; who >= 0; --who) {
        const unsigned bits = *entry.mode >> unsigned(3 * who);
        const bool isSpecial = ((*entry.mode >> unsigned(9 + who)) & 1U) != 0;
        const bool runs = (bits & 1U) != 0;
        const char16_t special = who == 0 ? u't' : u's';
        text += (bits & 4U) != 0 ? u'r' : u'-';
        text += (bits & 2U) != 0 ? u'w' : u'-';
        if (isSpecial)
            text += runs ? QChar(special) : QChar(special).toUpper();
        else
            text += runs ? u'x' : u'-';
    }
    return text;
}

QString testText(const ArchiveTest &test, bool isDamaged)
{
    const QString files = QLocale().toString(test.files);
    if (test.failed > 0)
        return Velmora::tr("Files that cannot be read whole: %1 of %2").arg(QLocale().toString(test.failed), files);
    if (!test.isComplete)
        return Velmora::tr("Stopped at the limit of what is unpacked; files read before it: %1").arg(files);
    if (isDamaged)
        return Velmora::tr("The archive is damaged or cut off; files that are left and can be read: %1").arg(files);
    QString size = sizeText(test.bytes - test.bytesWithin);
    if (test.bytesWithin > 0)
        size = Velmora::tr("%1, and %2 in archives within").arg(size, sizeText(test.bytesWithin));
    return test.hasChecksums
               ? Velmora::tr("All files can be read, and their checksums hold: %1 (%2)").arg(files, size)
               : Velmora::tr("All files can be read; the format has no checksums: %1 (%2)").arg(files, size);
}

} // namespace velmora

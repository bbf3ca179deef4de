#include "filetypes/table/table_remarks.h"

#include "filetypes/table/table_scene.h"
#include "session/translate.h"

#include <QLocale>
#include <QStringList>

namespace velmora {

namespace {

/// "3 (records 2, 5, 9)", with the first ones only where there are many.
QString listed(const std::vector<ReplacedRow> &rows)
{
    constexpr std::size_t most = 5;
    QStringList records;
    for (std::size_t k = 0; k < std::min(rows.size(), most); ++k)
        records.append(QString::number(rows[k].row + 1));
    if (rows.size() > most)
        records.append(QString(QChar(0x2026)));
    return Velmora::tr("%1 (rows %2)").arg(QLocale().toString(qint64(rows.size())), records.join(QStringLiteral(", ")));
}

} // namespace

QString tableDuplicates(const TableDocument &document)
{
    const Sides<std::vector<ReplacedRow>> &replaced = document.alignment.replaced;
    if (replaced.left.empty() && replaced.right.empty())
        return {};
    if (replaced.right.empty())
        return Velmora::tr("Left out, since a later row has the same key: %1 on the left.").arg(listed(replaced.left));
    if (replaced.left.empty())
        return Velmora::tr("Left out, since a later row has the same key: %1 on the right.")
            .arg(listed(replaced.right));
    return Velmora::tr("Left out, since a later row has the same key: %1 on the left, %2 on the right.")
        .arg(listed(replaced.left), listed(replaced.right));
}

QString tableRemarks(const TableDocument &document)
{
    QStringList sentences;
    if (const QString &error = document.sources.left.error; !error.isEmpty())
        sentences.append(Velmora::tr("The left file cannot be read and counts as empty: %1").arg(error));
    if (const QString &error = document.sources.right.error; !error.isEmpty())
        sentences.append(Velmora::tr("The right file cannot be read and counts as empty: %1").arg(error));
    if (!document.missingKeys.isEmpty())
        sentences.append(Velmora::tr("There is no column to match rows by: %1.")
                             .arg(document.missingKeys.join(QStringLiteral(", "))));
    if (document.alignment.columns.arePairedByName())
        sentences.append(Velmora::tr("The columns are named differently; those of the same name are compared."));
    else if (document.alignment.columns.namesDiffer())
        sentences.append(Velmora::tr("The columns are named differently; cells are compared by their position."));
    if (document.hasLongerRows)
        sentences.append(
            Velmora::tr("Some rows have more fields than the first one has names: what stands behind the last "
                        "column is not compared."));
    if (const qint32 columns = document.alignment.columns.count(); columns > TableScene::columnLimit)
        sentences.append(Velmora::tr("Only the first %1 of %2 columns are shown.")
                             .arg(QLocale().toString(TableScene::columnLimit), QLocale().toString(columns)));
    return sentences.join(u' ');
}

QString tableCounts(const TableAlignment &alignment)
{
    const TableCounts &counts = alignment.counts;
    return Velmora::tr("Same: %1  |  Modified: %2  |  Left only: %3  |  Right only: %4  |  Total rows: %5")
        .arg(counts.same)
        .arg(counts.modified)
        .arg(counts.leftOnly)
        .arg(counts.rightOnly)
        .arg(alignment.rows.size());
}

QString tableEncodings(const TableDocument &document)
{
    const auto nameOf = [](const TableSource &source) {
        QString name =
            source.encodingGuessed ? Velmora::tr("%1 (guessed)").arg(source.encoding.name()) : source.encoding.name();
        if (source.undecodable > 0)
            name += QStringLiteral(", ") + Velmora::tr("%1 places are not readable in it").arg(source.undecodable);
        return name;
    };
    const QString left = nameOf(document.sources.left);
    const QString right = nameOf(document.sources.right);
    return left == right ? left : left + QStringLiteral(" | ") + right;
}

} // namespace velmora

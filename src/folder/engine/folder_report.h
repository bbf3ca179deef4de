#pragma once

#include "core/cancel_flag.h"
#include "core/output_buffer.h"
#include "folder/engine/folder_diff_item.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <array>

class QIODevice;

namespace velmora {

/// The texts of a report, as they are shown: translated and, except for the summary, filled in.
struct FolderReportLabels {
    QString title;                   ///< "Velmora — folder diff report"
    QString heading;                 ///< "Velmora folder diff report"
    QString left;                    ///< "Left: %1"
    QString right;                   ///< "Right: %1"
    QString generatedAt;             ///< "Generated at"
    std::array<QString, 6> columns;  ///< "Name", "Status", "Left size", "Right size", "Left modified", "Right modified"
    std::array<QString, 4> statuses; ///< by `FolderDiffStatus`: "Same", "Left only", "Right only", "Different"
    /// "Total: %1 items | Same: %2 | Different: %3 | Left only: %4 | Right only: %5", to be filled in with the numbers
    QString summary;
    QString unread;      ///< "not read", behind the status of a file that nobody has read
    QString unreadTotal; ///< "Of the same files these were not read: %1", to be filled in with their number
};

/// Writes the entries of a folder comparison as one HTML page in UTF-8, row by row, so that a long one is never in
/// memory whole. Used by one thread; the device outlives the writer.
///
/// Sizes are bytes with "," between groups of three digits, times local ones; what a side does not have is "-".
class FolderReportWriter {
public:
    FolderReportWriter(QIODevice &device, FolderReportLabels labels);

    /// First.
    void begin(const QDateTime &time);

    void addRow(const FolderDiffItem &item);

    /// Last. False when any part of the page could not be written.
    [[nodiscard]] bool finish();

private:
    void addSize(const QString &path, qint64 size);
    void addTime(const QDateTime &time);

    OutputBuffer m_page;
    FolderReportLabels m_labels;
    std::array<qint64, 4> m_counts{}; ///< by status
    qint64 m_unread = 0;              ///< files
};

/// The whole report, one row for each item in their order. False when it could not be written or `cancel` is set.
[[nodiscard]] bool writeFolderReport(QIODevice &device, const QList<FolderDiffItem> &items,
                                     const FolderReportLabels &labels, const QDateTime &time,
                                     const CancelFlag &cancel = {});

} // namespace velmora

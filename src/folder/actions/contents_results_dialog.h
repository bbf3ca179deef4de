#pragma once

#include <QDialog>
#include <QStringList>

namespace velmora {

/// How comparing the contents of a selection ended.
struct ContentsResults {
    int same = 0;      ///< pairs of files
    int different = 0; ///< the same
    int unmatched = 0; ///< files on one side only
    int untold = 0;    ///< pairs of files of which a side has neither the contents nor a checksum
    bool cancelled = false;
    QStringList differing;  ///< names of the pairs that differ, relative to the compared folders
    QStringList unreadable; ///< native paths of files that could not be read to the end; their pairs count as different
};

/// Says how comparing the contents of a selection ended. Opened with open().
class ContentsResultsDialog final : public QDialog {
    Q_OBJECT
public:
    explicit ContentsResultsDialog(const ContentsResults &results, QWidget *parent = nullptr);
};

} // namespace velmora

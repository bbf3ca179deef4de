#pragma once

#include "folder/engine/folder_diff_item.h"

#include <QDialog>
#include <QList>

#include <functional>

class QListView;

namespace velmora {

/// The entries that `item`, which is on one side only, can be aligned with: those on the other side only, of the same
/// level. Entries of the same sort (file, folder) first, then those with the most similar names. Empty when `item` is
/// on both sides. `items` are those of the comparison.
[[nodiscard]] QList<FolderDiffItem> alignmentCandidates(const FolderDiffItem &item, const QList<FolderDiffItem> &items);

/// Asks for the entry of the other side that belongs to one which is on one side only. Opened with open(); the choice
/// counts when `accepted` comes.
class ManualAlignmentDialog final : public QDialog {
    Q_OBJECT
public:
    /// Precondition: `candidates` is not empty.
    explicit ManualAlignmentDialog(const QList<FolderDiffItem> &candidates, QWidget *parent = nullptr);

    /// The row chosen, of the candidates.
    [[nodiscard]] int chosen() const;

private:
    QListView *m_list;
};

/// Opens the dialog for the selection, or tells why there is nothing to choose. `aligned(left name, right name)`, bare
/// names, comes when a person has chosen.
void askManualAlignment(QWidget &parent, const QList<FolderDiffItem> &selection, const QList<FolderDiffItem> &items,
                        std::function<void(const QString &leftName, const QString &rightName)> aligned);

} // namespace velmora

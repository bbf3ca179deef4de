#pragma once

#include "core/runner.h"
#include "folder/engine/folder_diff_item.h"
#include "settings/options/folder_session_options.h"
#include "vfs/tree_source.h"

#include <QDialog>
#include <QList>

class QButtonGroup;
class QCheckBox;
class QGroupBox;
class QLabel;

namespace velmora {

/// Asks how the contents of the selected files and folders are to be compared.
///
/// Counts meanwhile what lies in the selected folders, of each the left one where there is one, until it is closed.
/// Opened with open(); the answers count when `accepted` comes ("Start (S)").
class CompareContentsDialog final : public QDialog {
    Q_OBJECT
public:
    /// `method` is the choice to begin with.
    CompareContentsDialog(const SourcePair &sources, const QList<FolderDiffItem> &selection, CompareMethod method,
                          QWidget *parent = nullptr);

    [[nodiscard]] CompareMethod method() const;
    /// Remembered from one dialog to the next.
    [[nodiscard]] bool showsResults() const;

public Q_SLOTS:
    void done(int result) override;

private:
    [[nodiscard]] QGroupBox *makeMethods(CompareMethod chosen);
    void count(const SourcePair &sources, const QList<FolderDiffItem> &selection);
    void showTotals(const FolderTotals &totals);

    QLabel *m_totals;
    QButtonGroup *m_methods;
    QCheckBox *m_results;
    Runner m_runner;
};

} // namespace velmora

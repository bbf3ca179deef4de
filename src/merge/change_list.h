#pragma once

#include "merge/merge_list.h"
#include "merge/view/merge_document.h"

#include <QTimer>

class QCheckBox;
class QLineEdit;

namespace velmora {

/// All parts of a merge that are not the same in all texts: what each is, what was decided and by whom, and its first
/// line; to be filtered by words, or to what is open or worth a look.
class ChangeList final : public MergeList {
    Q_OBJECT
public:
    explicit ChangeList(QWidget *parent);

    /// Shows the parts of a merge; null for none. A long list follows when nothing has changed for a moment.
    void setMerge(std::shared_ptr<const MergeDocument> merge);
    /// Makes that part the current row, where it is shown.
    void showCurrent(qsizetype part);

Q_SIGNALS:
    /// A person has chosen this part.
    void partChosen(qsizetype part);

private:
    void tellChosen(int row) override;
    void showMerge();
    void showCurrentRow();

    QLineEdit *m_filter;
    QCheckBox *m_openOnly;
    std::shared_ptr<const MergeDocument> m_merge; ///< to be shown, at the latest after a pause
    MergeDocument::Parts m_shown;
    qsizetype m_current = -1; ///< the part whose row is to be the current one
    QTimer m_pause;
};

} // namespace velmora

#pragma once

#include "merge/merge_list.h"
#include "merge/view/merge_document.h"

class QLabel;
class QPushButton;

namespace velmora {

/// The lines of the versions that merging line by line has left out, each with the offer to put it in. Hidden while
/// there are none.
class LeftOutList final : public MergeList {
    Q_OBJECT
public:
    explicit LeftOutList(QWidget *parent);

    /// Shows the lines that the parts of a merge have left out; null for none.
    void setMerge(std::shared_ptr<const MergeDocument> merge);

Q_SIGNALS:
    /// A person looks at this line.
    void lineChosen(qsizetype part, SourceLine line);
    /// A person wants this line in the result.
    void lineWanted(qsizetype part, SourceLine line);

private:
    struct Entry {
        qsizetype part = 0;
        SourceLine line;
    };
    class Rows;

    [[nodiscard]] Entry entryAt(int row) const;
    void tellChosen(int row) override;
    void wantSelected();

    std::shared_ptr<const MergeDocument> m_merge;
    MergeDocument::Parts m_shown;
    QLabel *m_title;
    QPushButton *m_putIn;
};

} // namespace velmora

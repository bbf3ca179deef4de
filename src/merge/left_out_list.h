#pragma once

#include "merge/view/merge_document.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace velmora {

class ListModel;
class ListView;

/// The lines of the versions that merging line by line has left out, each with the offer to put it in. Hidden while
/// there are none.
class LeftOutList final : public QWidget {
    Q_OBJECT
public:
    explicit LeftOutList(QWidget *parent);
    ~LeftOutList() override;

    /// Shows the lines that the parts of a merge have left out; null for none.
    void setMerge(std::shared_ptr<const MergeDocument> merge);
    /// Takes up a changed theme.
    void refreshTheme();

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
    void tellChosen();
    void wantSelected();

    std::shared_ptr<const MergeDocument> m_merge;
    MergeDocument::Parts m_shown;
    ListModel *m_rows;
    ListView *m_view;
    QLabel *m_title;
    QPushButton *m_putIn;
    bool m_follows = false; ///< the current row is being changed by this
};

} // namespace velmora

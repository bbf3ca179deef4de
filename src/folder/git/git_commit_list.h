#pragma once

#include "vfs/git/git_history.h"

#include <QModelIndex>
#include <QWidget>

#include <memory>

class QLabel;
class QLineEdit;

namespace velmora {

class TreeModel;
class TreeView;

/// The commits between two states, with a line that looks for words in them.
class GitCommitList final : public QWidget {
    Q_OBJECT
public:
    explicit GitCommitList(QWidget *parent = nullptr);

    void setCommits(const GitCommits &commits);
    /// Says in place of the number of commits why there are none.
    void setNote(const QString &text);

Q_SIGNALS:
    /// A commit was clicked, or Return pressed on it.
    void wanted(const velmora::GitCommit &commit);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    class Rows;

    void want(const QModelIndex &index);

    QLabel *m_title;
    QLineEdit *m_filter;
    TreeModel *m_rows;
    TreeView *m_view;
};

} // namespace velmora

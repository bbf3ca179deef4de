#pragma once

#include "folder/git/git_rows.h"

#include <QWidget>

#include <array>

class QAction;
class QLineEdit;

namespace velmora {

/// What of a Git comparison is shown: a line for words, and a button for each status with the number of its files, in a
/// menu where there is no room for them.
class GitFilterBar final : public QWidget {
    Q_OBJECT
public:
    explicit GitFilterBar(QWidget *parent = nullptr);

    void setCounts(const std::array<qint64, gitStatusCount> &counts);
    [[nodiscard]] GitStatusSet statuses() const;
    void focusWords();

Q_SIGNALS:
    void wordsChanged(const QString &words);
    void statusesChanged();
    /// The keyboard is to go on to the rows.
    void leaveWanted();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QLineEdit *m_words;
    std::array<QAction *, gitStatusCount> m_actions{};
};

} // namespace velmora

#pragma once

#include "session/pane/text_search.h"

#include <QWidget>

class QBoxLayout;
class QCheckBox;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace velmora {

class ElidedLabel;

/// The bar under the texts in which a person says what to look for. Takes two lines where one has too little room.
class FindBar final : public QWidget {
    Q_OBJECT
public:
    /// What depends on how many texts there are; translated.
    struct Words {
        QString placeholder;    ///< of what is looked for
        QString replaceAllHint; ///< tool tip of the button; without it nothing can be replaced
    };

    explicit FindBar(const Words &words, QWidget *parent = nullptr);

    /// Shows the bar and takes the keyboard; `text` becomes what is looked for unless it is empty.
    void open(const QString &text);

    /// Shows the line for replacing, or hides it.
    void showReplace(bool shown);

    [[nodiscard]] SearchQuery query() const;
    /// What a match is to be replaced by, as it was typed.
    [[nodiscard]] QString replacement() const;

    /// While all matches are being replaced the button that began it gives it up.
    void showReplacing(bool replacing);
    /// Shows how much of that is done, 0 to 1.
    void showReplaced(double fraction);

    /// Says where the search stands: match `current` (from 0, -1 for none) of `count`.
    void showPosition(qsizetype current, qsizetype count);
    void showSearching();
    /// Says that the expression was too slow for `lines` lines, behind the position.
    void showGivenUp(qint64 lines);
    /// Says that the query is no valid regular expression.
    void showInvalid(const QString &why);

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void queryChanged(const QString &text);
    void nextWanted();
    void previousWanted();
    void closeWanted();
    void replaceWanted();
    void replaceAllWanted();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void layOut();
    [[nodiscard]] QWidget *makeReplaceRow(const QString &replaceAllHint);

    QLineEdit *m_text;
    QCheckBox *m_matchCase;
    QCheckBox *m_wholeWords;
    QCheckBox *m_isExpression;
    ElidedLabel *m_position;
    QToolButton *m_previous;
    QToolButton *m_next;
    QToolButton *m_close;
    QToolButton *m_showReplace;
    QLineEdit *m_with;
    QPushButton *m_replace;
    QPushButton *m_replaceAll;
    QWidget *m_replaceRow;
    QBoxLayout *m_rows; ///< what is looked for, and how
};

} // namespace velmora

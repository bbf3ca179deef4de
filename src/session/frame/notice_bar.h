#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QToolButton;

namespace velmora {

/// A line above the views with a remark and a button for the way on; hidden while there is nothing to say. Its parts
/// are found by its object name with "Text", "Action" and "Close" behind it.
class NoticeBar : public QWidget {
    Q_OBJECT
public:
    enum class Tone {
        Remark,  ///< worth knowing
        Verdict, ///< what a comparison has found
        Warning  ///< easily overlooked, at a price
    };

    explicit NoticeBar(const QString &objectName, QWidget *parent = nullptr);

    /// Names the button, and says in its tool tip what it does; without a text there is none.
    void setAction(const QString &text, const QString &toolTip = {});
    /// Lets a person close the bar; `toolTip` says what that means.
    void setClosable(const QString &toolTip);

    /// Shows `text`; an empty one hides the bar.
    void tell(const QString &text, Tone tone);
    void clear() { hide(); }

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void actionWanted();
    /// The bar was closed, and is hidden already.
    void closed();

private:
    QLabel *m_text;
    QPushButton *m_action;
    QToolButton *m_close;
    Tone m_tone = Tone::Remark;
};

} // namespace velmora

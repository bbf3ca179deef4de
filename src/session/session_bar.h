#pragma once

#include <QKeySequence>
#include <QToolBar>

#include <utility>

namespace velmora {

/// The tool bar of a session: its commands as actions with keys, and those with a picture as buttons.
///
/// A session's bar derives from it, says in its constructor what its commands are called and look like, and leaves to
/// the session what they do.
class SessionBar : public QToolBar {
    Q_OBJECT
public:
    /// The actions' keys work everywhere in `session`, which owns the bar.
    explicit SessionBar(QWidget *session);

    /// Takes up a changed theme.
    void refreshTheme();

    /// Lets what runs be cancelled until it is asked to stop. A command that compares or cancels changes over.
    void showRunning(bool running, bool cancelling);

    // Null in a bar without them.
    QAction *compare = nullptr;
    QAction *cancel = nullptr; ///< off at first
    QAction *swapSides = nullptr;
    QAction *previousDifference = nullptr;
    QAction *nextDifference = nullptr;

protected:
    /// How an action is presented: its name, the icon's file, its keys.
    struct Look {
        const char *objectName;
        QString text;
        QString icon = {};             ///< of the button and the menu entry
        QList<QKeySequence> keys = {}; ///< beside those of `differenceKeys`
        QString hint = {};             ///< instead of the text in the tool tip
        bool hasButton = true;         ///< where there is an icon
    };

    /// A new action, with a button or only in menus and by its keys.
    [[nodiscard]] QAction *add(const Look &look);
    /// Adds the command that compares; its button has a text.
    void addCompare(const QString &hint);
    /// Adds the command that cancels, with a button of its own.
    void addCancel(const QString &hint = {});
    /// Adds both with one button, which compares, and cancels while that runs.
    void addCompareOrCancel(const QString &text, const QString &icon);
    void addSwapSides(const QString &hint);
    /// Adds the two that every comparison has, with the same keys everywhere.
    void addDifferenceSteps();
    /// Adds commands of which one is on, at first the first; their buttons have texts.
    void addChoice(const QList<std::pair<QAction **, Look>> &choice);
    /// Gives an action that has an icon another one.
    void changeIcon(QAction *action, const QString &icon);
    /// Lets the keys of all actions added so far work wherever the focus is in the window, as long as the session is in
    /// sight; a text field elsewhere keeps them for itself.
    void letKeysWorkInWindow();
    /// Shows the text of a button beside its picture.
    void showTextBeside(QAction *action);
    /// What a tool tip says of a command with keys.
    [[nodiscard]] static QString hintWithKeys(const QString &hint, const QList<QKeySequence> &keys);

private:
    static void showIcon(QAction *action, const QString &name);

    QList<std::pair<QAction *, QString>> m_icons;
    QString m_compareText; ///< while the button does not cancel; empty for one that never does
    QString m_compareIcon;
};

} // namespace velmora

#include "session/session_bar.h"

#include "session/difference_keys.h"
#include "session/field_keys.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QActionGroup>
#include <QToolButton>

#include <algorithm>

namespace velmora {

SessionBar::SessionBar(QWidget *session) : QToolBar(session)
{
    setObjectName(QStringLiteral("underIconToolBar"));
    setMovable(false);
    setFloatable(false);
    setIconSize(QSize(20, 20));
    new FieldKeys(session);
}

QAction *SessionBar::add(const Look &look)
{
    auto *action = new QAction(look.text, this);
    action->setObjectName(QLatin1String(look.objectName));
    const QList<QKeySequence> keys = differenceKeys(QLatin1String(look.objectName)) + look.keys;
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setToolTip(hintWithKeys(look.hint.isEmpty() ? look.text : look.hint, keys));
    parentWidget()->addAction(action);
    if (look.icon.isEmpty())
        return action;
    m_icons.append({action, look.icon});
    if (look.hasButton)
        addAction(action);
    return action;
}

void SessionBar::addCompare(const QString &hint)
{
    compare = add(
        {"compareAction", Velmora::tr("Compare"), QStringLiteral("compare.png"), {Qt::CTRL | Qt::Key_Return}, hint});
    showTextBeside(compare);
}

void SessionBar::addCancel(const QString &hint)
{
    cancel = add({"cancelAction", Velmora::tr("Cancel"), QStringLiteral("stop.png"), {}, hint});
    cancel->setEnabled(false);
}

void SessionBar::addCompareOrCancel(const QString &text, const QString &icon)
{
    compare = add({"compareAction", text, icon});
    showTextBeside(compare);
    cancel = add({"cancelAction", Velmora::tr("Cancel")});
    m_compareText = text;
    m_compareIcon = icon;
    // As wide as it ever is, so that nothing moves when it changes its name.
    QWidget *button = widgetForAction(compare);
    showRunning(true, false);
    const int running = button->sizeHint().width();
    showRunning(false, false);
    button->setMinimumWidth(std::max(running, button->sizeHint().width()));
}

void SessionBar::addSwapSides(const QString &hint)
{
    swapSides = add({"swapAction", Velmora::tr("Swap"), QStringLiteral("swap.png"), {}, hint});
}

void SessionBar::showRunning(bool running, bool cancelling)
{
    cancel->setEnabled(running && !cancelling);
    if (m_compareText.isEmpty())
        return;
    compare->setText(running ? Velmora::tr("Cancel") : m_compareText);
    compare->setToolTip(hintWithKeys(running ? Velmora::tr("Cancel the comparison") : m_compareText,
                                     running ? cancel->shortcuts() : compare->shortcuts()));
    compare->setEnabled(!cancelling);
    changeIcon(compare, running ? QStringLiteral("cancel.png") : m_compareIcon);
}

void SessionBar::addDifferenceSteps()
{
    previousDifference = add({"previousAction",
                              Velmora::tr("Previous"),
                              QStringLiteral("prev_diff.png"),
                              {},
                              Velmora::tr("Previous difference")});
    nextDifference =
        add({"nextAction", Velmora::tr("Next"), QStringLiteral("next_diff.png"), {}, Velmora::tr("Next difference")});
}

void SessionBar::addChoice(const QList<std::pair<QAction **, Look>> &choice)
{
    auto *group = new QActionGroup(this);
    for (const auto &[action, look] : choice) {
        *action = add(look);
        (*action)->setCheckable(true);
        showTextBeside(*action);
        group->addAction(*action);
    }
    group->actions().constFirst()->setChecked(true);
}

void SessionBar::showTextBeside(QAction *action)
{
    if (auto *button = qobject_cast<QToolButton *>(widgetForAction(action)))
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
}

void SessionBar::letKeysWorkInWindow()
{
    const QList<QAction *> actions = parentWidget()->actions();
    for (QAction *action : actions)
        action->setShortcutContext(Qt::WindowShortcut);
}

QString SessionBar::hintWithKeys(const QString &hint, const QList<QKeySequence> &keys)
{
    QStringList names;
    for (const QKeySequence &key : keys)
        names.append(key.toString(QKeySequence::NativeText));
    return names.isEmpty() ? hint : Velmora::tr("%1 (%2)").arg(hint, names.join(QStringLiteral(", ")));
}

void SessionBar::changeIcon(QAction *action, const QString &icon)
{
    for (auto &[known, name] : m_icons) {
        if (known == action)
            name = icon;
    }
    showIcon(action, icon);
}

void SessionBar::refreshTheme()
{
    for (const auto &[action, name] : std::as_const(m_icons))
        showIcon(action, name);
    // The style's own sign is black in both themes.
    if (auto *more = findChild<QToolButton *>(QStringLiteral("qt_toolbar_ext_button"))) {
        more->setIcon(themedIcon(QStringLiteral("chevron_down.png")));
        more->setIconSize(QSize(12, 12));
    }
}

void SessionBar::showIcon(QAction *action, const QString &name)
{
    const QIcon icon = themedIcon(name);
    // Without its picture a button shows its text.
    action->setIcon(icon.availableSizes().isEmpty() ? QIcon() : icon);
}

} // namespace velmora

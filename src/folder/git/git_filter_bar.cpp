#include "folder/git/git_filter_bar.h"

#include "folder/git/git_words.h"
#include "session/translate.h"

#include <QAction>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QToolBar>

namespace velmora {

GitFilterBar::GitFilterBar(QWidget *parent) : QWidget(parent), m_words(new QLineEdit)
{
    m_words->setObjectName(QStringLiteral("gitFilter"));
    m_words->setPlaceholderText(Velmora::tr("Filter by name"));
    m_words->setClearButtonEnabled(true);
    constexpr int leastWidth = 110;
    m_words->setMinimumWidth(leastWidth);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(m_words, 2);
    auto *buttons = new QToolBar;
    buttons->setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (int status = 0; status < gitStatusCount; ++status) {
        QAction *action = buttons->addAction(QString());
        action->setCheckable(true);
        action->setChecked(true);
        action->setVisible(false);
        action->setObjectName(QStringLiteral("gitStatus%1").arg(status));
        action->setToolTip(Velmora::tr("Show files of this status: %1").arg(gitStatusText(GitStatus(status))));
        if (QWidget *button = buttons->widgetForAction(action))
            button->setFocusPolicy(Qt::TabFocus);
        connect(action, &QAction::toggled, this, &GitFilterBar::statusesChanged);
        m_actions[std::size_t(status)] = action;
    }
    row->addWidget(buttons, 3);
    connect(m_words, &QLineEdit::textChanged, this, &GitFilterBar::wordsChanged);
    connect(m_words, &QLineEdit::returnPressed, this, &GitFilterBar::leaveWanted);
}

void GitFilterBar::setCounts(const std::array<qint64, gitStatusCount> &counts)
{
    for (std::size_t status = 0; status < counts.size(); ++status) {
        m_actions[status]->setText(
            QStringLiteral("%1 %2").arg(gitStatusText(GitStatus(status)), QLocale().toString(counts[status])));
        m_actions[status]->setVisible(counts[status] > 0);
    }
}

GitStatusSet GitFilterBar::statuses() const
{
    GitStatusSet set;
    for (int status = 0; status < gitStatusCount; ++status)
        set.set(GitStatus(status), m_actions[std::size_t(status)]->isChecked());
    return set;
}

void GitFilterBar::focusWords()
{
    m_words->setFocus(Qt::ShortcutFocusReason);
    m_words->selectAll();
}

void GitFilterBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Down)
        Q_EMIT leaveWanted();
    else
        QWidget::keyPressEvent(event);
}

} // namespace velmora

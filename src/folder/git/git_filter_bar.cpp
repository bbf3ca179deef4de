#include "folder/git/git_filter_bar.h"

#include "folder/git/git_words.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QToolButton>

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
    row->addWidget(m_words, 1);
    for (int status = 0; status < gitStatusCount; ++status) {
        auto *button = new QToolButton;
        button->setCheckable(true);
        button->setChecked(true);
        button->setObjectName(QStringLiteral("gitStatus%1").arg(status));
        button->setToolTip(Velmora::tr("Show files of this status: %1").arg(gitStatusText(GitStatus(status))));
        button->setFocusPolicy(Qt::TabFocus);
        button->hide();
        row->addWidget(button);
        connect(button, &QToolButton::toggled, this, &GitFilterBar::statusesChanged);
        m_buttons[std::size_t(status)] = button;
    }
    connect(m_words, &QLineEdit::textChanged, this, &GitFilterBar::wordsChanged);
    connect(m_words, &QLineEdit::returnPressed, this, &GitFilterBar::leaveWanted);
}

void GitFilterBar::setCounts(const std::array<qint64, gitStatusCount> &counts)
{
    for (std::size_t status = 0; status < counts.size(); ++status) {
        m_buttons[status]->setText(
            QStringLiteral("%1 %2").arg(gitStatusText(GitStatus(status)), QLocale().toString(counts[status])));
        m_buttons[status]->setVisible(counts[status] > 0);
    }
}

GitStatusSet GitFilterBar::statuses() const
{
    GitStatusSet set;
    for (int status = 0; status < gitStatusCount; ++status)
        set.set(GitStatus(status), m_buttons[std::size_t(status)]->isChecked());
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

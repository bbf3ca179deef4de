#include "session/find/find_bar.h"

#include "session/frame/elided_label.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QToolButton>

namespace velmora {

namespace {

constexpr int textWidth = 320;

QToolButton *makeButton(QWidget *parent, const QString &name, const QString &hint)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(name);
    button->setAutoRaise(true);
    button->setToolTip(hint);
    button->setAccessibleName(hint);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace

FindBar::FindBar(const Words &words, QWidget *parent)
    : QWidget(parent),
      m_text(new QLineEdit(this)),
      m_matchCase(new QCheckBox(Velmora::tr("Match case"), this)),
      m_wholeWords(new QCheckBox(Velmora::tr("Whole words"), this)),
      m_isExpression(new QCheckBox(Velmora::tr("Regular expression"), this)),
      m_position(new ElidedLabel(QString(), this)),
      m_previous(makeButton(this, QStringLiteral("findPrevious"), Velmora::tr("Previous match (Shift+F3)"))),
      m_next(makeButton(this, QStringLiteral("findNext"), Velmora::tr("Next match (F3)"))),
      m_close(makeButton(this, QStringLiteral("findClose"), Velmora::tr("Close (Esc)"))),
      m_showReplace(makeButton(this, QStringLiteral("findReplace"), Velmora::tr("Replace (Ctrl+H)"))),
      m_with(new QLineEdit),
      m_replace(new QPushButton(Velmora::tr("Replace"))),
      m_replaceAll(new QPushButton(Velmora::tr("Replace all"))),
      m_replaceRow(makeReplaceRow(words.replaceAllHint)),
      m_rows(new QBoxLayout(QBoxLayout::LeftToRight))
{
    m_text->setObjectName(QStringLiteral("findText"));
    m_text->setPlaceholderText(words.placeholder);
    m_text->setAccessibleName(m_text->placeholderText());
    m_text->setClearButtonEnabled(true);
    m_text->setMaximumWidth(textWidth);
    m_position->setObjectName(QStringLiteral("findPosition"));

    layOut();
    setFocusProxy(m_text);

    const auto tellQuery = [this] { Q_EMIT queryChanged(m_text->text()); };
    connect(m_text, &QLineEdit::textChanged, this, tellQuery);
    for (QCheckBox *box : {m_matchCase, m_wholeWords, m_isExpression}) {
        box->setFocusPolicy(Qt::TabFocus);
        connect(box, &QCheckBox::toggled, this, tellQuery);
    }
    connect(m_previous, &QToolButton::clicked, this, &FindBar::previousWanted);
    connect(m_next, &QToolButton::clicked, this, &FindBar::nextWanted);
    connect(m_close, &QToolButton::clicked, this, &FindBar::closeWanted);
    connect(m_showReplace, &QToolButton::toggled, this, &FindBar::showReplace);
    connect(m_replace, &QPushButton::clicked, this, &FindBar::replaceWanted);
    connect(m_replaceAll, &QPushButton::clicked, this, &FindBar::replaceAllWanted);
    refreshTheme();
}

QWidget *FindBar::makeReplaceRow(const QString &replaceAllHint)
{
    m_showReplace->setCheckable(true);
    m_showReplace->setVisible(!replaceAllHint.isEmpty());
    m_with->setObjectName(QStringLiteral("replaceText"));
    m_with->setPlaceholderText(Velmora::tr("Replace with"));
    m_with->setAccessibleName(m_with->placeholderText());
    m_with->setToolTip(
        Velmora::tr("With a regular expression, \\1 or $1 stands for its first group, \\n for a line break "
                    "and \\t for a tabulator"));
    m_with->setClearButtonEnabled(true);
    m_with->setMaximumWidth(textWidth);
    m_replace->setObjectName(QStringLiteral("replaceOne"));
    m_replace->setToolTip(Velmora::tr("Replace the selected match and go to the next one"));
    m_replaceAll->setObjectName(QStringLiteral("replaceAll"));
    m_replaceAll->setToolTip(replaceAllHint);
    auto *whole = new QWidget(this);
    auto *row = new QHBoxLayout(whole);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    row->addWidget(m_with, 2);
    for (QPushButton *button : {m_replace, m_replaceAll}) {
        button->setFocusPolicy(Qt::TabFocus);
        button->setEnabled(false);
        row->addWidget(button);
    }
    row->addStretch(3);
    whole->hide();
    return whole;
}

void FindBar::showReplace(bool shown)
{
    m_showReplace->setChecked(shown);
    m_replaceRow->setVisible(shown);
    if (shown && isVisible())
        (m_text->text().isEmpty() ? m_text : m_with)->setFocus(Qt::ShortcutFocusReason);
}

QString FindBar::replacement() const
{
    return m_with->text();
}

void FindBar::showReplacing(bool replacing)
{
    m_replaceAll->setText(replacing ? Velmora::tr("Cancel") : Velmora::tr("Replace all"));
    if (replacing)
        m_position->setText(Velmora::tr("Replacing..."));
}

void FindBar::showReplaced(double fraction)
{
    constexpr int hundred = 100;
    m_position->setText(Velmora::tr("Replacing: %1 %").arg(int(fraction * hundred)));
}

void FindBar::layOut()
{
    auto *what = new QHBoxLayout;
    what->setSpacing(6);
    what->addWidget(m_text, 2);
    what->addWidget(m_previous);
    what->addWidget(m_next);
    what->addWidget(m_showReplace);
    what->addWidget(m_position, 1);
    auto *how = new QHBoxLayout;
    how->setSpacing(8);
    for (QCheckBox *box : {m_matchCase, m_wholeWords, m_isExpression})
        how->addWidget(box);
    how->addStretch(1);
    m_rows->addLayout(what, 1);
    m_rows->addLayout(how, 1);
    auto *whole = new QHBoxLayout(this);
    whole->setContentsMargins(6, 3, 6, 3);
    auto *lines = new QVBoxLayout;
    lines->setSpacing(3);
    lines->addLayout(m_rows);
    lines->addWidget(m_replaceRow);
    whole->addLayout(lines, 1);
    whole->addWidget(m_close, 0, Qt::AlignTop);
}

void FindBar::resizeEvent(QResizeEvent * /*event*/)
{
    int how = 0;
    for (const QCheckBox *box : {m_matchCase, m_wholeWords, m_isExpression})
        how += box->sizeHint().width();
    const bool isNarrow = width() < how + 2 * textWidth;
    m_rows->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_rows->setSpacing(isNarrow ? 2 : 12);
}

void FindBar::open(const QString &text)
{
    if (!text.isEmpty())
        m_text->setText(text);
    show();
    m_text->selectAll();
    m_text->setFocus(Qt::ShortcutFocusReason);
}

SearchQuery FindBar::query() const
{
    return {m_text->text(), m_matchCase->isChecked(), m_wholeWords->isChecked(), m_isExpression->isChecked()};
}

void FindBar::showPosition(qsizetype current, qsizetype count)
{
    const QLocale locale;
    if (m_text->text().isEmpty())
        m_position->clear();
    else if (count == 0)
        m_position->setText(Velmora::tr("No match"));
    else if (current < 0)
        m_position->setText(Velmora::tr("Matches: %1").arg(locale.toString(count)));
    else
        m_position->setText(Velmora::tr("%1 of %2").arg(locale.toString(current + 1), locale.toString(count)));
    m_previous->setEnabled(count > 0);
    m_next->setEnabled(count > 0);
    m_replace->setEnabled(count > 0);
    m_replaceAll->setEnabled(count > 0);
}

void FindBar::showSearching()
{
    m_position->setText(Velmora::tr("Searching..."));
}

void FindBar::showGivenUp(qint64 lines)
{
    const QString remark = Velmora::tr("too slow an expression for %1 lines").arg(QLocale().toString(lines));
    m_position->setText(m_position->text() + QStringLiteral(" · ") + remark);
}

void FindBar::showInvalid(const QString &why)
{
    showPosition(-1, 0);
    m_position->setText(Velmora::tr("Not a regular expression: %1").arg(why));
}

void FindBar::refreshTheme()
{
    m_previous->setIcon(themedIcon(QStringLiteral("chevron_up.png")));
    m_next->setIcon(themedIcon(QStringLiteral("chevron_down.png")));
    m_close->setIcon(themedIcon(QStringLiteral("close.png")));
    m_showReplace->setIcon(themedIcon(QStringLiteral("edit.png")));
}

void FindBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (focusWidget() == m_with)
        Q_EMIT replaceWanted();
    else if (event->modifiers().testFlag(Qt::ShiftModifier))
        Q_EMIT previousWanted();
    else
        Q_EMIT nextWanted();
}

} // namespace velmora

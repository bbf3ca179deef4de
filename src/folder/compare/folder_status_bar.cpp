#include "folder/compare/folder_status_bar.h"

#include "session/translate.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QToolButton>

namespace velmora {

FolderStatusBar::FolderStatusBar(QWidget *parent)
    : QFrame(parent),
      m_message(new QLabel(this)),
      m_progressText(new QLabel(this)),
      m_progress(new QProgressBar(this)),
      m_selection(new QLabel(this)),
      m_counts(new QLabel(this)),
      m_read(new QToolButton(this))
{
    constexpr int progressWidth = 140;
    m_message->setObjectName(QStringLiteral("statusLabel"));
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A long message must not make the window wider.
    m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_counts->setObjectName(QStringLiteral("countsLabel"));
    m_counts->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_selection->setObjectName(QStringLiteral("selectionLabel"));
    m_progressText->setObjectName(QStringLiteral("progressLabel"));
    for (QLabel *label : {m_message, m_progressText, m_selection, m_counts})
        label->setTextFormat(Qt::PlainText); // a file may be called "<b>"
    m_read->setObjectName(QStringLiteral("readUnreadButton"));
    m_read->setText(Velmora::tr("Read them"));
    m_read->setToolTip(Velmora::tr("Read the files that are the same by size and time alone"));
    m_read->setAccessibleName(m_read->toolTip());
    m_read->setFocusPolicy(Qt::TabFocus);
    m_read->hide();
    connect(m_read, &QToolButton::clicked, this, &FolderStatusBar::readWanted);
    m_progress->setTextVisible(false);
    m_progress->setFixedSize(progressWidth, fontMetrics().height() - 2);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 3, 8, 3);
    row->setSpacing(16);
    row->addWidget(m_message, 1);
    row->addWidget(m_progressText);
    row->addWidget(m_progress);
    row->addWidget(m_selection);
    row->addWidget(m_counts);
    row->addWidget(m_read);
    constexpr int momentMs = 200;
    m_appearance.setSingleShot(true);
    m_appearance.setInterval(momentMs);
    connect(&m_appearance, &QTimer::timeout, this, &FolderStatusBar::showProgressParts);
    clearProgress();
}

void FolderStatusBar::showMessage(const QString &message)
{
    m_message->setText(message);
    m_message->setToolTip(message);
}

QString FolderStatusBar::message() const
{
    return m_message->text();
}

void FolderStatusBar::showProgress(qint64 done, qint64 total, const QString &text)
{
    constexpr int steps = 1000;
    m_progressText->setText(text);
    m_progress->setRange(0, total > 0 ? steps : 0);
    if (total > 0)
        m_progress->setValue(int(double(std::min(done, total)) / double(total) * steps));
    if (!m_progress->isHidden())
        showProgressParts();
    else if (!m_appearance.isActive())
        m_appearance.start();
}

void FolderStatusBar::showProgressParts()
{
    m_progressText->setVisible(!m_progressText->text().isEmpty());
    m_progress->show();
}

void FolderStatusBar::clearProgress()
{
    m_appearance.stop();
    m_progressText->hide();
    m_progress->hide();
}

void FolderStatusBar::showCounts(const FolderCounts &counts)
{
    const QLocale locale;
    QStringList parts;
    const auto add = [&](const QString &text, qint64 number) { parts.append(text.arg(locale.toString(number))); };
    if (counts.files() > 0 || counts.folders > 0) {
        add(Velmora::tr("Same: %1"), counts.same);
        if (counts.unread > 0)
            add(Velmora::tr("of these not read: %1"), counts.unread);
        add(Velmora::tr("Different: %1"), counts.different);
        add(Velmora::tr("Left only: %1"), counts.leftOnly);
        add(Velmora::tr("Right only: %1"), counts.rightOnly);
    }
    if (counts.unknown > 0)
        add(Velmora::tr("Not compared: %1"), counts.unknown);
    if (counts.hidden > 0)
        add(Velmora::tr("Hidden: %1"), counts.hidden);
    m_read->setVisible(counts.unread > 0);
    m_counts->setText(parts.join(QStringLiteral("   ")));
    m_counts->setToolTip(Velmora::tr("Files that are shown, and entries that filters hide"));
}

void FolderStatusBar::showSelection(const QString &text)
{
    m_selection->setText(text);
    m_selection->setVisible(!text.isEmpty());
}

} // namespace velmora

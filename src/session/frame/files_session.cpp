#include "session/frame/files_session.h"

#include "session/difference_keys.h"

#include <QBoxLayout>
#include <QPushButton>

namespace velmora {

FilesSession::FilesSession(SessionHost &host, const QList<PathsBar::Field> &fields, QWidget *parent)
    : SessionWidget(host, parent),
      m_inputs(new PathsBar(fields)),
      m_commands(new QHBoxLayout),
      m_content(new QVBoxLayout),
      m_cancel(new QPushButton(Velmora::tr("Cancel"))),
      m_status(new StatusLine)
{
    m_cancel->setObjectName(QStringLiteral("cancelButton"));
    m_cancel->setShortcut(differenceKeys(QLatin1String("cancelAction")).constFirst());
    m_cancel->setEnabled(false);
    m_commands->addWidget(m_cancel);
    m_commands->addStretch();
    m_content->setSpacing(8);
    auto *body = new QVBoxLayout;
    body->setContentsMargins(12, 12, 12, 8);
    body->setSpacing(8);
    body->addWidget(m_inputs);
    body->addLayout(m_commands);
    body->addLayout(m_content, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(body, 1);
    column->addWidget(m_status);
    setFocusProxy(m_inputs);
    connect(m_inputs, &PathsBar::submitted, this, [this] { start(); });
    connect(m_cancel, &QPushButton::clicked, this, &FilesSession::onCancel);
    connect(&m_runner, &Runner::runningChanged, this, &FilesSession::showRunning);
}

QPushButton *FilesSession::addCommand(const QString &text, const QString &objectName)
{
    auto *button = new QPushButton(text);
    button->setObjectName(objectName);
    m_commands->insertWidget(m_commands->indexOf(m_cancel), button);
    return button;
}

void FilesSession::dropPaths(const QStringList &paths, QPoint position)
{
    m_inputs->take(paths, m_inputs->mapFrom(this, position));
    start();
}

void FilesSession::refreshTheme()
{
    m_inputs->refreshTheme();
    m_status->refreshTheme();
}

void FilesSession::onCancel()
{
    m_runner.cancel();
}

void FilesSession::showRunning()
{
    const bool runs = isBusy();
    m_cancel->setEnabled(runs);
    if (runs) {
        m_status->showProgress({});
    } else {
        m_status->clearProgress();
        Q_EMIT readingEnded();
    }
}

} // namespace velmora

#include "folder/sftp/sftp_inputs.h"

#include "session/dialogs.h"
#include "session/frame/path_edit.h"
#include "session/translate.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

namespace velmora {

namespace {

constexpr int widest = 6; ///< the columns of host, port and user, each with its label

QLabel *labelFor(const QString &text, QWidget *buddy)
{
    auto *label = new QLabel(text, buddy->parentWidget());
    label->setBuddy(buddy);
    buddy->setAccessibleName(text);
    return label;
}

} // namespace

SftpInputs::SftpInputs(QWidget *parent) : QWidget(parent), m_port(new QSpinBox(this))
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(10, 8, 10, 8);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(5, 2);

    m_host = addLine(*grid, 0, 0, Velmora::tr("Host:"), "hostField");
    m_host->setPlaceholderText(QStringLiteral("files.example.com"));
    constexpr int lastPort = 65535;
    m_port->setObjectName(QStringLiteral("portField"));
    m_port->setRange(1, lastPort);
    m_port->setValue(RemotePlace().port);
    grid->addWidget(labelFor(Velmora::tr("Port:"), m_port), 0, 2);
    grid->addWidget(m_port, 0, 3);
    m_user = addLine(*grid, 0, 4, Velmora::tr("User:"), "userField");
    setTabOrder(m_host, m_port);
    setTabOrder(m_port, m_user);
    m_remote = addLine(*grid, 1, 0, Velmora::tr("Remote folder:"), "remoteField");
    m_remote->setPlaceholderText(Velmora::tr("A path on the host; a relative one begins in the home folder"));
    grid->addWidget(m_remote, 1, 1, 1, widest - 1);
    m_local = new PathEdit({}, Velmora::tr("Browse local folder"), this);
    m_local->lineEdit().setObjectName(QStringLiteral("localField"));
    grid->addWidget(labelFor(Velmora::tr("Local folder:"), &m_local->lineEdit()), 2, 0);
    grid->addWidget(m_local, 2, 1, 1, widest - 1);
    auto *hint =
        new QLabel(Velmora::tr("Lists remote files via OpenSSH (ssh/scp) and compares with local. Requires ssh "
                               "and scp on PATH and key-based or agent login."),
                   this);
    hint->setObjectName(QStringLiteral("chromeHint"));
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->setWordWrap(true);
    grid->addWidget(hint, 3, 0, 1, widest);

    connect(m_local, &PathEdit::submitted, this, &SftpInputs::submitted);
    connect(m_local, &PathEdit::browseRequested, this, [this] {
        Dialogs::instance().openFolder(this, Velmora::tr("Browse local folder"), localFolder(),
                                       [this](const QString &folder) { setLocalFolder(folder); });
    });
    setFocusProxy(m_host);
}

QLineEdit *SftpInputs::addLine(QGridLayout &grid, int row, int column, const QString &label, const char *name)
{
    auto *line = new QLineEdit(this);
    line->setObjectName(QLatin1String(name));
    line->setAcceptDrops(false);
    grid.addWidget(labelFor(label, line), row, column);
    grid.addWidget(line, row, column + 1);
    connect(line, &QLineEdit::returnPressed, this, &SftpInputs::submitted);
    return line;
}

RemotePlace SftpInputs::place() const
{
    return {m_host->text().trimmed(), m_port->value(), m_user->text().trimmed(), m_remote->text()};
}

void SftpInputs::setPlace(const RemotePlace &place)
{
    m_host->setText(place.host);
    m_user->setText(place.user);
    m_remote->setText(place.folder);
    setPort(place.port);
}

QString SftpInputs::localFolder() const
{
    return m_local->path();
}

void SftpInputs::setLocalFolder(const QString &folder)
{
    m_local->setPath(folder);
}

int SftpInputs::port() const
{
    return m_port->value();
}

void SftpInputs::setPort(int port)
{
    m_port->setValue(port);
}

void SftpInputs::setReadOnly(bool readOnly)
{
    for (QLineEdit *line : {m_host, m_user, m_remote})
        line->setReadOnly(readOnly);
    m_port->setReadOnly(readOnly);
    m_local->setReadOnly(readOnly);
}

void SftpInputs::focusFirstEmpty()
{
    for (QLineEdit *line : {m_host, m_user, &m_local->lineEdit()}) {
        if (line->text().trimmed().isEmpty()) {
            line->setFocus();
            return;
        }
    }
}

void SftpInputs::refreshTheme()
{
    m_local->refreshTheme();
}

} // namespace velmora

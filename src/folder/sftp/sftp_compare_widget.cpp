#include "folder/sftp/sftp_compare_widget.h"

#include "folder/sftp/sftp_bar.h"
#include "folder/sftp/sftp_inputs.h"
#include "folder/sftp/sftp_rows.h"
#include "folder/sftp/sftp_words.h"
#include "session/frame/status_line.h"
#include "session/list/list_pane.h"
#include "session/list/list_view.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QFileInfo>
#include <QJsonObject>
#include <QLabel>

namespace velmora {

namespace {

constexpr QLatin1String portKey("port");
constexpr QLatin1String onlyDifferencesKey("onlyDifferences");

} // namespace

SftpCompareWidget::SftpCompareWidget(SessionHost &host, QWidget *parent)
    : SessionWidget(host, parent),
      m_bar(new SftpBar(this)),
      m_inputs(new SftpInputs(this)),
      m_list(new ListPane(*m_bar, std::make_unique<SftpRows>(), this)),
      m_status(new StatusLine(this)),
      m_clock(m_status->addFact(QStringLiteral("clockLabel"))),
      m_counts(m_status->addFact(QStringLiteral("countsLabel")))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_inputs);
    column->addWidget(m_list, 1);
    column->addWidget(m_status);
    setFocusProxy(m_inputs);
    m_list->view().setNumberColumns({RowSource::Left, RowSource::Right});
    m_clock->setToolTip(Velmora::tr("How far the clock of the host is from that of this computer"));
    m_list->setNotice(Velmora::tr("Nothing is compared yet. Name the host, the user and both folders."));
    for (QAction *command : {m_bar->open, m_bar->compareContents, m_bar->fetch})
        m_list->addRowCommand(command);
    connectBar();
    showState();
}

SftpCompareWidget::~SftpCompareWidget() = default;

void SftpCompareWidget::connectBar()
{
    const auto onTrigger = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    onTrigger(m_bar->compare, &SftpCompareWidget::onCompare);
    onTrigger(m_bar->open, &SftpCompareWidget::onFetchAndCompare);
    onTrigger(m_bar->compareContents, &SftpCompareWidget::onCompareContents);
    onTrigger(m_bar->fetch, &SftpCompareWidget::onFetchFiles);
    onTrigger(m_bar->cancel, [this] { m_runner.cancel(); });
    connect(m_inputs, &SftpInputs::submitted, this, &SftpCompareWidget::onCompare);
    connect(m_list, &ListPane::shownRowsChanged, this, [this] {
        const PairCounts &counts = rows().counts();
        m_counts->setText(countsText(counts, counts.all() - rows().rowCount(),
                                     m_compared.comparison ? m_compared.comparison->unlisted : 0));
    });
    connect(m_list, &ListPane::told, this, [this](const QString &message) { m_status->showMessage(message); });
    connect(&m_runner, &Runner::runningChanged, this, &SftpCompareWidget::showState);
}

SessionPaths SftpCompareWidget::paths() const
{
    const RemotePlace place = m_inputs->place();
    const bool isNamed = !place.host.isEmpty() || !place.user.isEmpty() || !place.folder.isEmpty();
    return {m_inputs->localFolder(), isNamed ? place.text() : QString(), {}};
}

void SftpCompareWidget::setPaths(const SessionPaths &paths)
{
    RemotePlace place = RemotePlace::ofText(paths.right);
    place.port = m_inputs->port();
    m_inputs->setPlace(place);
    m_inputs->setLocalFolder(paths.left);
}

void SftpCompareWidget::start()
{
    if (faultOf(m_inputs->place()) == RemotePlaceFault::None && !m_inputs->localFolder().isEmpty())
        onCompare();
}

QJsonObject SftpCompareWidget::options() const
{
    QJsonObject options;
    if (m_inputs->port() != RemotePlace().port)
        options.insert(portKey, m_inputs->port());
    if (rows().view() == RowsView::Differences)
        options.insert(onlyDifferencesKey, true);
    return options;
}

void SftpCompareWidget::setOptions(const QJsonObject &options)
{
    m_inputs->setPort(options.value(portKey).toInt(RemotePlace().port));
    m_list->setRowsView(options.value(onlyDifferencesKey).toBool() ? RowsView::Differences : RowsView::All);
}

void SftpCompareWidget::dropPaths(const QStringList &paths, QPoint /*position*/)
{
    if (m_runner.isRunning() || paths.isEmpty())
        return;
    const QFileInfo dropped(paths.first());
    m_inputs->setLocalFolder(dropped.isDir() ? paths.first() : dropped.path());
    start();
}

void SftpCompareWidget::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_list->refreshTheme();
    m_status->refreshTheme();
}

const ListModel &SftpCompareWidget::rows() const
{
    return m_list->model();
}

void SftpCompareWidget::showState()
{
    const bool busy = m_runner.isRunning();
    m_bar->showRunning(busy, m_runner.isCancelling());
    m_bar->compare->setEnabled(!busy);
    m_inputs->setReadOnly(busy);
}

} // namespace velmora

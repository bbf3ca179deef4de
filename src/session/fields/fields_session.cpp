#include "session/fields/fields_session.h"

#include "session/fields/fields_bar.h"
#include "session/frame/path_edit.h"
#include "session/list/rows_view_option.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QFileInfo>
#include <QJsonObject>
#include <QLabel>
#include <QLocale>
#include <QSplitter>

namespace velmora {

FieldsSession::FieldsSession(SessionHost &host, const std::function<Parts(QWidget *session)> &makeParts,
                             QWidget *parent)
    : SessionWidget(host, parent),
      m_verdict(new NoticeBar(QStringLiteral("verdictBar"), this)),
      m_views(new QSplitter(Qt::Horizontal, this)),
      m_status(new StatusLine(this)),
      m_counts(m_status->addFact(QStringLiteral("countsLabel"))),
      m_column(new QBoxLayout(QBoxLayout::TopToBottom, this))
{
    Parts parts = makeParts(this);
    m_bar = parts.bar;
    m_inputs = new PairInputs(parts.fields, this);
    m_inputs->setContentsMargins(10, 2, 10, 6);
    m_list = new ListPane(*m_bar, std::move(parts.headings), this);
    m_list->setNotice(parts.invitation);
    m_views->addWidget(m_list);
    m_views->setChildrenCollapsible(false);
    m_views->setHandleWidth(3);
    m_verdict->hide();
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(0);
    m_column->addWidget(m_bar);
    m_column->addWidget(m_inputs);
    m_column->addWidget(m_verdict);
    m_column->addSpacing(6);
    m_column->addWidget(m_views, 1);
    m_column->addWidget(m_status);
    setFocusProxy(m_inputs);
    connectParts();
}

FieldsSession::~FieldsSession() = default;

void FieldsSession::connectParts()
{
    connect(m_bar->compare, &QAction::triggered, this, [this] { start(); });
    connect(m_bar->cancel, &QAction::triggered, this, &FieldsSession::onCancel);
    connect(m_bar->swapSides, &QAction::triggered, this, &FieldsSession::onSwapSides);
    connect(m_inputs, &PairInputs::submitted, this, [this] { start(); });
    connect(m_list, &ListPane::shownRowsChanged, this, [this] { m_counts->setText(m_list->countsText()); });
    connect(m_list, &ListPane::told, this, [this](const QString &message) { m_status->showMessage(message); });
    connect(&m_runner, &Runner::runningChanged, this, &FieldsSession::showRunning);
}

void FieldsSession::setPaths(const SessionPaths &paths)
{
    m_runner.abandon();
    m_inputs->setPaths(paths);
}

void FieldsSession::start()
{
    const SessionPaths files = paths();
    if (files.left.isEmpty() || files.right.isEmpty()) {
        m_status->showMessage(files.left.isEmpty() ? Velmora::tr("Choose the left file")
                                                   : Velmora::tr("Choose the right file"));
        m_inputs->at(files.left.isEmpty() ? Side::Left : Side::Right).setFocus();
        return;
    }
    m_status->showMessage(Velmora::tr("Comparing..."));
    Q_EMIT comparisonStarted();
    compare({files.left, files.right});
}

QJsonObject FieldsSession::options() const
{
    QJsonObject options;
    keepRowsView(rows().view(), options);
    return options;
}

void FieldsSession::setOptions(const QJsonObject &options)
{
    m_list->setRowsView(keptRowsView(options));
}

void FieldsSession::dropPaths(const QStringList &paths, QPoint position)
{
    if (paths.isEmpty())
        return;
    m_inputs->take(paths, m_inputs->mapFrom(this, position).x());
    const SessionPaths files = this->paths();
    if (!files.left.isEmpty() && !files.right.isEmpty())
        start();
}

void FieldsSession::onCancel()
{
    m_runner.cancel();
}

void FieldsSession::onSwapSides()
{
    const SessionPaths files = paths();
    setPaths({files.right, files.left, {}});
    if (m_list->hasResult() && !files.left.isEmpty() && !files.right.isEmpty())
        start();
}

void FieldsSession::showRunning()
{
    const bool runs = m_runner.isRunning();
    m_bar->showRunning(runs, m_runner.isCancelling());
    if (runs) {
        m_status->showProgress({});
    } else {
        m_status->clearProgress();
        Q_EMIT readingEnded();
    }
}

void FieldsSession::showRows(const Sides<QString> &files, std::unique_ptr<const RowSource> rows, const QString &verdict,
                             NoticeBar::Tone tone)
{
    const qsizetype count = rows->count();
    m_list->setResult(std::move(rows));
    m_verdict->tell(verdict, tone);
    m_status->showMessage(Velmora::tr("Compare finished (%1 item(s))").arg(QLocale().toString(qint64(count))));
    const QWidget *focus = focusWidget();
    if (!focus || m_inputs->isAncestorOf(focus))
        m_list->setFocus();
    showTitle(files);
    Q_EMIT comparisonFinished(files.left, files.right);
}

void FieldsSession::showTitle(const Sides<QString> &files, const Sides<bool> &changed)
{
    const auto name = [&](Side side) {
        const QString file = QFileInfo(files[side]).fileName();
        return changed[side] ? u'*' + file : file;
    };
    Q_EMIT tabTitleChanged(Velmora::tr("%1 <-> %2").arg(name(Side::Left), name(Side::Right)));
}

void FieldsSession::showFailure(const QString &text, const QString &detail)
{
    m_status->showFailure(text, detail);
    m_list->setNotice(detail.isEmpty() ? text : text + u'\n' + detail);
}

void FieldsSession::refreshTheme()
{
    m_bar->refreshTheme();
    m_inputs->refreshTheme();
    m_verdict->refreshTheme();
    m_list->refreshTheme();
    m_status->refreshTheme();
}

} // namespace velmora

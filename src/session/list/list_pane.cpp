#include "session/list/list_pane.h"

#include "session/list/list_bar.h"
#include "session/list/list_view.h"
#include "session/list/row_details.h"
#include "session/translate.h"

#include <QAction>
#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>

#include <algorithm>

namespace velmora {

namespace {

void copyText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace

ListPane::ListPane(ListBar &bar, std::unique_ptr<const RowSource> source, QWidget *parent)
    : QWidget(parent),
      m_bar(bar),
      m_model(new ListModel(std::move(source), this)),
      m_view(new ListView(*m_model, this)),
      m_details(new RowDetails(this)),
      m_filter(new QLineEdit(this)),
      m_parts(new QSplitter(Qt::Vertical, this))
{
    m_parts->addWidget(m_view);
    m_parts->addWidget(m_details);
    m_parts->setStretchFactor(0, 1);
    m_parts->setStretchFactor(1, 0);
    m_parts->setCollapsible(0, false);
    m_parts->setHandleWidth(3);
    connect(m_parts, &QSplitter::splitterMoved, this, [this] { m_hasOwnHeights = true; });

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeFilterRow());
    column->addWidget(m_parts, 1);
    setFocusProxy(m_view);
    connectBar();
    connectView();
    showSelection();
}

// The view tells of its rows as it goes, and children outlive members.
ListPane::~ListPane()
{
    m_view->disconnect(this);
}

void ListPane::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fitDetails();
}

/// The list keeps most of the room in a low window.
void ListPane::fitDetails()
{
    constexpr int detailsHeight = 150;
    constexpr double share = 0.3;
    const int height = m_parts->height();
    const int details = std::min(detailsHeight, int(height * share));
    if (!m_hasOwnHeights)
        m_parts->setSizes({height - details, details});
}

QWidget *ListPane::makeFilterRow()
{
    auto *bar = new QWidget(this);
    auto *label = new QLabel(Velmora::tr("Filter:"), bar);
    label->setBuddy(m_filter);
    m_filter->setObjectName(QStringLiteral("rowFilter"));
    m_filter->setPlaceholderText(Velmora::tr("Words in names and values"));
    m_filter->setToolTip(Velmora::tr("Shows the rows that hold all of these words (Ctrl+F)"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setAcceptDrops(false);
    constexpr int widestFilter = 420;
    m_filter->setMaximumWidth(widestFilter);
    m_filterRow = new QHBoxLayout(bar);
    m_filterRow->setContentsMargins(10, 0, 10, 6);
    m_filterRow->setSpacing(6);
    m_filterRow->addWidget(label);
    m_filterRow->addWidget(m_filter, 1);
    m_filterRow->addStretch(1);
    return bar;
}

void ListPane::setWiderSearch(QAction *search, const QString &notice)
{
    auto *button = new QPushButton(search->text(), m_filter->parentWidget());
    button->setObjectName(QStringLiteral("widerSearchButton"));
    button->setToolTip(search->toolTip());
    connect(button, &QPushButton::clicked, search, &QAction::trigger);
    connect(search, &QAction::changed, this, &ListPane::showNotice);
    m_filterRow->insertWidget(m_filterRow->indexOf(m_filter) + 1, button);
    m_widerSearch = search;
    m_widerButton = button;
    m_widerNotice = notice;
    showWiderSearch();
}

bool ListPane::offersWiderSearch() const
{
    return m_widerSearch && m_widerSearch->isEnabled() && m_hasResult && !m_filter->text().trimmed().isEmpty();
}

void ListPane::showWiderSearch()
{
    if (m_widerButton)
        m_widerButton->setVisible(offersWiderSearch());
}

void ListPane::connectBar()
{
    const auto onTrigger = [this](QAction *action, auto slot) { connect(action, &QAction::triggered, this, slot); };
    onTrigger(m_bar.previousDifference, [this] { goToDifference(false); });
    onTrigger(m_bar.nextDifference, [this] { goToDifference(true); });
    onTrigger(m_bar.showAll, [this] { setRowsView(RowsView::All); });
    onTrigger(m_bar.showDifferences, [this] { setRowsView(RowsView::Differences); });
    onTrigger(m_bar.showIdentical, [this] { setRowsView(RowsView::Same); });
    onTrigger(m_bar.copyRows, [this] { copyText(m_model->text(m_view->selectedRows())); });
    onTrigger(m_bar.focusFilter, [this] {
        m_filter->setFocus(Qt::ShortcutFocusReason);
        m_filter->selectAll();
    });
    connect(m_bar.showDetails, &QAction::toggled, m_details, &QWidget::setVisible);
}

void ListPane::connectView()
{
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString &words) {
        m_model->setFilter(words);
        takeShownRows();
    });
    connect(m_filter, &QLineEdit::returnPressed, this, [this] { m_view->setFocus(); });
    connect(m_view, &ListView::currentRowChanged, this, &ListPane::showCurrentRow);
    connect(m_view, &ListView::selectedRowsChanged, this, &ListPane::showSelection);
    connect(m_view, &QTreeView::activated, this, [this] {
        if (m_rowCommands.isEmpty())
            m_bar.showDetails->setChecked(true);
        else
            m_rowCommands.first()->trigger();
    });
    connect(m_view, &QWidget::customContextMenuRequested, this, &ListPane::openMenu);
}

void ListPane::setResult(std::unique_ptr<const RowSource> source)
{
    m_hasResult = true;
    m_model->setSource(std::move(source));
    takeShownRows();
}

void ListPane::setRowsView(RowsView view)
{
    QAction *narrowed = view == RowsView::Same ? m_bar.showIdentical : m_bar.showDifferences;
    (view == RowsView::All ? m_bar.showAll : narrowed)->setChecked(true);
    m_model->setView(view);
    takeShownRows();
}

void ListPane::takeShownRows()
{
    showNotice();
    showSelection();
    if (m_hasResult)
        Q_EMIT shownRowsChanged();
}

void ListPane::setNotice(const QString &notice)
{
    m_notice = notice;
    showNotice();
}

void ListPane::showNotice()
{
    showWiderSearch();
    if (!m_hasResult)
        m_view->setNotice(m_notice);
    else if (m_model->source().count() == 0)
        m_view->setNotice(Velmora::tr("Neither side holds an item."));
    else if (!m_filter->text().trimmed().isEmpty())
        m_view->setNotice(offersWiderSearch() ? m_widerNotice : Velmora::tr("No row holds these words."));
    else if (m_model->view() == RowsView::Same)
        m_view->setNotice(Velmora::tr("Nothing is the same on both sides."));
    else if (m_model->noise() > 0)
        m_view->setNotice(Velmora::tr("Nothing differs but noise."));
    else
        m_view->setNotice(Velmora::tr("Both sides are the same."));
}

QString ListPane::countsText() const
{
    const QLocale locale;
    const auto number = [&locale](qsizetype value) { return locale.toString(qint64(value)); };
    const PairCounts &counts = m_model->counts();
    QStringList parts{Velmora::tr("Same: %1").arg(number(counts.same)),
                      Velmora::tr("Changed: %1").arg(number(counts.changed)),
                      Velmora::tr("Left only: %1").arg(number(counts.leftOnly)),
                      Velmora::tr("Right only: %1").arg(number(counts.rightOnly))};
    if (m_model->noise() > 0)
        parts.append(Velmora::tr("Noise: %1").arg(number(m_model->noise())));
    if (const qsizetype all = m_model->source().count(); m_model->rowCount() < all)
        parts.append(Velmora::tr("Hidden: %1").arg(number(all - m_model->rowCount())));
    return parts.join(QStringLiteral("   "));
}

void ListPane::addRowCommand(QAction *command)
{
    m_rowCommands.append(command);
    showCurrentRow();
}

void ListPane::showCurrentRow()
{
    const int row = m_view->currentIndex().row();
    for (QAction *command : m_rowCommands)
        command->setEnabled(row >= 0);
    if (row >= 0)
        m_details->showRow(m_model->rowAt(row), m_model->index(row, RowSource::Status).data().toString());
    else
        m_details->clear();
}

void ListPane::showSelection()
{
    m_bar.copyRows->setEnabled(m_view->selectionModel()->hasSelection());
    m_bar.previousDifference->setEnabled(m_hasResult);
    m_bar.nextDifference->setEnabled(m_hasResult);
}

void ListPane::goToDifference(bool forward)
{
    const int row = m_model->nextDifference(m_view->currentIndex().row(), forward);
    if (row < 0) {
        Q_EMIT told(forward ? Velmora::tr("No further difference") : Velmora::tr("No earlier difference"));
        return;
    }
    m_view->goToRow(row);
    m_view->setFocus();
}

void ListPane::openMenu(const QPoint &point)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(m_rowCommands);
    menu->addAction(m_bar.copyRows);
    if (const QModelIndex index = m_view->indexAt(point); index.isValid()) {
        const KeyedRow row = m_model->rowAt(index.row());
        const auto offer = [this, menu](const QString &command, const QString &text, bool isThere) {
            menu->addAction(command, this, [text] { copyText(text); })->setEnabled(isThere);
        };
        offer(Velmora::tr("Copy the name"), row.key, true);
        offer(Velmora::tr("Copy the left value"), row.left, isOn(row.status, Side::Left));
        offer(Velmora::tr("Copy the right value"), row.right, isOn(row.status, Side::Right));
    }
    menu->addSeparator();
    menu->addActions({m_bar.showAll, m_bar.showDifferences, m_bar.showIdentical, m_bar.showDetails});
    menu->popup(m_view->viewport()->mapToGlobal(point));
}

void ListPane::refreshTheme()
{
    m_model->refreshTheme();
    m_view->viewport()->update();
    m_details->refreshTheme();
}

} // namespace velmora

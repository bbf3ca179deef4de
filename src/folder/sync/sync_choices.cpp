#include "folder/sync/sync_choices.h"

#include "core/wildcard.h"
#include "folder/actions/action_words.h"
#include "session/translate.h"

#include <QAction>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

namespace velmora {

namespace {

constexpr QLatin1String modeKey("mode");
constexpr QLatin1String filterKey("filter");
constexpr QLatin1String contentsKey("compareContents");
constexpr QLatin1String movesKey("findMoves");
constexpr QLatin1String hoursKey("ignoreHours");

QStringList directionHints()
{
    return {Velmora::tr("Make the right side like the left; what only the right has is deleted"),
            Velmora::tr("Make the left side like the right; what only the left has is deleted"),
            Velmora::tr("Copy both ways; of changed files the newer wins, of equal times the right one"),
            Velmora::tr("Copy both ways; of changed files the newer wins, of equal times none")};
}

} // namespace

SyncChoices::SyncChoices(QWidget *parent)
    : QWidget(parent),
      m_direction(new QComboBox),
      m_filter(new QComboBox),
      m_contents(new QCheckBox(Velmora::tr("Compare contents"))),
      m_moves(option("findMovesAction", Velmora::tr("Find moved and renamed files"),
                     Velmora::tr("Read files that are on one side only, and move those that the other side has "
                                 "elsewhere instead of copying and deleting them"))),
      m_hours(option("ignoreHoursAction", Velmora::tr("Ignore whole hours between times"),
                     Velmora::tr("Files of equal size whose times are whole hours apart count as equal without being "
                                 "read, and neither of two such files is newer")))
{
    fillDirections();
    fillFilters();
    m_contents->setObjectName(QStringLiteral("contentsBox"));
    m_contents->setToolTip(Velmora::tr("Read files of the same size and time, too, at the next analysis"));
    auto *more = new QToolButton;
    more->setObjectName(QStringLiteral("moreChoices"));
    more->setText(Velmora::tr("More"));
    more->setPopupMode(QToolButton::InstantPopup);
    more->setAutoRaise(true);
    more->setFocusPolicy(Qt::TabFocus);
    auto *menu = new QMenu(more);
    menu->setToolTipsVisible(true);
    menu->addActions({m_moves, m_hours});
    more->setMenu(menu);
    auto *filterLabel = new QLabel(Velmora::tr(" Filter: "));
    filterLabel->setBuddy(m_filter);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_direction);
    row->addSpacing(8);
    row->addWidget(filterLabel);
    row->addWidget(m_filter);
    row->addSpacing(8);
    row->addWidget(m_contents);
    row->addWidget(more);
    row->addStretch();
}

QAction *SyncChoices::option(const char *name, const QString &text, const QString &hint)
{
    auto *action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    action->setCheckable(true);
    action->setToolTip(toolTipText(hint));
    connect(action, &QAction::toggled, this, &SyncChoices::inputChanged);
    return action;
}

void SyncChoices::fillDirections()
{
    m_direction->setObjectName(QStringLiteral("directionBox"));
    m_direction->addItems({Velmora::tr("Left → Right"), Velmora::tr("Right → Left"), Velmora::tr("Mirror sync"),
                           Velmora::tr("Update newer")});
    const QStringList hints = directionHints();
    for (int i = 0; i < int(hints.size()); ++i)
        m_direction->setItemData(i, toolTipText(hints.at(i)), Qt::ToolTipRole);
    m_direction->setToolTip(hints.first());
    connect(m_direction, &QComboBox::currentIndexChanged, this, [this, hints](int index) {
        m_direction->setToolTip(hints.value(index));
        Q_EMIT directionChanged();
    });
}

void SyncChoices::fillFilters()
{
    m_filter->setObjectName(QStringLiteral("filterBox"));
    m_filter->setEditable(true);
    m_filter->addItems({QString(), QStringLiteral("*.cpp;*.h"), QStringLiteral("*.txt")});
    m_filter->setToolTip(Velmora::tr("File name filter pattern"));
    m_filter->setMinimumContentsLength(14);
    m_filter->lineEdit()->setPlaceholderText(Velmora::tr("All files"));
    connect(m_filter, &QComboBox::currentTextChanged, this,
            [this](const QString &text) { Q_EMIT filterChanged(splitMasks(text)); });
}

SyncRules SyncChoices::rules() const
{
    return {syncModeOf(m_direction->currentIndex()), m_hours->isChecked()};
}

bool SyncChoices::readsContents() const
{
    return m_contents->isChecked();
}

bool SyncChoices::findsMoves() const
{
    return m_moves->isChecked();
}

void SyncChoices::findMoves()
{
    m_moves->setChecked(true);
}

void SyncChoices::ignoreHours()
{
    m_hours->setChecked(true);
}

QJsonObject SyncChoices::options() const
{
    QJsonObject options{{modeKey, m_direction->currentIndex()}};
    if (!m_filter->currentText().trimmed().isEmpty())
        options.insert(filterKey, m_filter->currentText());
    for (const auto &[key, isChosen] :
         {std::pair(contentsKey, m_contents->isChecked()), std::pair(movesKey, m_moves->isChecked()),
          std::pair(hoursKey, m_hours->isChecked())}) {
        if (isChosen)
            options.insert(key, true);
    }
    return options;
}

void SyncChoices::setOptions(const QJsonObject &options)
{
    m_direction->setCurrentIndex(int(syncModeOf(options.value(modeKey).toInt())));
    m_filter->setCurrentText(options.value(filterKey).toString());
    m_contents->setChecked(options.value(contentsKey).toBool());
    m_moves->setChecked(options.value(movesKey).toBool());
    m_hours->setChecked(options.value(hoursKey).toBool());
}

} // namespace velmora

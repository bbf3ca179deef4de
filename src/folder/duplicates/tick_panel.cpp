#include "folder/duplicates/tick_panel.h"

#include "folder/actions/action_words.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace velmora {

TickPanel::TickPanel(QWidget *parent)
    : QWidget(parent), m_rules(new QToolButton), m_sum(new QLabel), m_delete(new QPushButton(Velmora::tr("Delete")))
{
    auto *hint = new QLabel(Velmora::tr("Check copies to delete (keep one per group)."));
    hint->setObjectName(QStringLiteral("tickHint"));
    hint->setWordWrap(true);
    m_sum->setObjectName(QStringLiteral("tickSum"));
    m_delete->setObjectName(QStringLiteral("deleteButton"));
    m_rules->setObjectName(QStringLiteral("rulesButton"));
    m_rules->setText(Velmora::tr("Check by rule"));
    m_rules->setToolTip(Velmora::tr("Check the other copies of every group that is shown"));
    m_rules->setPopupMode(QToolButton::InstantPopup);
    auto *menu = new QMenu(m_rules);
    const auto add = [&](const QString &text, KeepRule rule) {
        connect(menu->addAction(text), &QAction::triggered, this, [this, rule] { Q_EMIT ruleChosen(rule); });
    };
    add(Velmora::tr("Keep the newest"), KeepRule::Newest);
    add(Velmora::tr("Keep the oldest"), KeepRule::Oldest);
    add(Velmora::tr("Keep the shortest path"), KeepRule::ShortestPath);
    add(Velmora::tr("Keep those in folders…"), KeepRule::InFolders);
    menu->addSeparator();
    connect(menu->addAction(Velmora::tr("Uncheck all")), &QAction::triggered, this, &TickPanel::clearWanted);
    m_rules->setMenu(menu);
    connect(m_delete, &QPushButton::clicked, this, &TickPanel::deleteWanted);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(10, 4, 10, 6);
    row->addWidget(hint, 1);
    row->addWidget(m_sum);
    row->addSpacing(8);
    row->addWidget(m_rules);
    row->addWidget(m_delete);
    showTicks(0, 0, 0);
}

void TickPanel::showTicks(qint64 files, qint64 bytes, qint64 staying)
{
    m_hasTicks = files > 0;
    const QLocale locale;
    m_sum->setText(m_hasTicks ? Velmora::tr("%1 to delete (%2), %3 of the same groups stay")
                                    .arg(locale.toString(files), sizeText(bytes), locale.toString(staying))
                              : Velmora::tr("Nothing is checked"));
    setBusy(m_busy);
}

void TickPanel::setBusy(bool busy)
{
    m_busy = busy;
    m_rules->setEnabled(!busy);
    m_delete->setEnabled(!busy && m_hasTicks);
}

} // namespace velmora

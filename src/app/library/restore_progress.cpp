#include "app/library/restore_progress.h"

#include "session/translate.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>

namespace velmora {

namespace {

constexpr int barWidth = 160;

} // namespace

RestoreProgress::RestoreProgress(QWidget *parent) : QWidget(parent), m_bar(new QProgressBar(this))
{
    m_bar->setFixedWidth(barWidth);
    m_bar->setFormat(Velmora::tr("Tabs: %1 of %2").arg(QStringLiteral("%v"), QStringLiteral("%m")));
    m_bar->setAccessibleName(Velmora::tr("Restored tabs"));
    auto *stop = new QPushButton(Velmora::tr("Stop"), this);
    connect(stop, &QPushButton::clicked, this, &RestoreProgress::stopRequested);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    row->addWidget(m_bar);
    row->addWidget(stop);
    hide();
}

void RestoreProgress::show(qsizetype done, qsizetype total)
{
    m_bar->setRange(0, static_cast<int>(total));
    m_bar->setValue(static_cast<int>(done));
    setVisible(true);
}

} // namespace velmora

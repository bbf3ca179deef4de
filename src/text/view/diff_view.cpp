#include "text/view/diff_view.h"

#include "session/pane/text_pane.h"
#include "session/translate.h"
#include "text/view/merge_splitter.h"
#include "text/view/overview_strip.h"

#include <QEvent>

#include <algorithm>

namespace velmora {

DiffView::DiffView(QWidget *parent)
    : PaneView(2, {{Side::Left, Side::Right}}, parent),
      m_splitter(new MergeSplitter(scene())),
      m_overview(new OverviewStrip(scene(), this))
{
    pane(Side::Left).setObjectName(QStringLiteral("leftPane"));
    pane(Side::Left).setAccessibleName(Velmora::tr("Left text"));
    pane(Side::Right).setObjectName(QStringLiteral("rightPane"));
    pane(Side::Right).setAccessibleName(Velmora::tr("Right text"));
    m_splitter->setObjectName(QStringLiteral("diffSplitter"));
    fill(*m_splitter);
    arrange(m_splitter, m_overview);
}

double DiffView::leftShare() const
{
    const QList<int> sizes = m_splitter->sizes();
    const int both = sizes.at(0) + sizes.at(1);
    return both > 0 ? double(sizes.at(0)) / both : 0.5;
}

void DiffView::setLeftShare(double share)
{
    // The splitter spreads what room there is in proportion.
    constexpr int parts = 10'000;
    const int left = int(std::clamp(share, 0.1, 0.9) * parts);
    m_splitter->setSizes({left, parts - left});
}

void DiffView::refreshTheme()
{
    m_overview->refresh();
    PaneView::refreshTheme();
}

void DiffView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        m_overview->refresh();
    PaneView::changeEvent(event);
}

} // namespace velmora

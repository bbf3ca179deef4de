#include "merge/view/merge_view.h"

#include "session/pane/text_pane.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QSplitter>

namespace velmora {

namespace {

constexpr PanePair besideLeft{paneOf(MergeSource::Base), paneOf(MergeSource::Left)};
constexpr PanePair besideRight{paneOf(MergeSource::Base), paneOf(MergeSource::Right)};

} // namespace

MergeView::MergeView(const std::array<QWidget *, mergePaneCount> &heads, QWidget *list, QWidget *parent)
    : PaneView(int(mergePaneCount), {besideLeft, besideRight}, parent)
{
    const char *names[] = {"leftPane", "basePane", "rightPane", "resultPane"};
    const QString spoken[] = {Velmora::tr("Left text"), Velmora::tr("Base text"), Velmora::tr("Right text"),
                              Velmora::tr("Result text")};
    auto *sources = new QSplitter(Qt::Horizontal, this);
    auto *below = new QSplitter(Qt::Horizontal, this);
    for (int index = 0; index < paneCount(); ++index) {
        pane(index).setObjectName(QLatin1String(names[index]));
        pane(index).setAccessibleName(spoken[index]);
        QWidget *box = boxed(index, heads[std::size_t(index)]);
        QSplitter *row = index == paneOfResult.number() ? below : sources;
        row->addWidget(box);
        row->setStretchFactor(row->count() - 1, 1);
        if (index == paneOf(MergeSource::Base).number())
            m_base = box;
    }
    below->addWidget(list);
    constexpr int resultShare = 62;
    constexpr int listShare = 38;
    below->setStretchFactor(0, resultShare);
    below->setStretchFactor(1, listShare);
    below->setSizes({10 * resultShare, 10 * listShare});
    auto *rows = new QSplitter(Qt::Vertical, this);
    rows->addWidget(sources);
    rows->addWidget(below);
    for (QSplitter *splitter : {sources, below, rows})
        splitter->setChildrenCollapsible(false);
    rows->setStretchFactor(0, 1);
    rows->setStretchFactor(1, 1);
    arrange(rows, nullptr);
}

QWidget *MergeView::boxed(PaneIndex index, QWidget *head)
{
    auto *box = new QWidget(this);
    auto *column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(head);
    column->addWidget(&pane(index), 1);
    return box;
}

void MergeView::setBaseShown(bool shown)
{
    const bool hadFocus = pane(paneOf(MergeSource::Base)).hasFocus();
    m_base->setVisible(shown);
    if (!shown && hadFocus)
        pane(paneOfResult).setFocus();
}

bool MergeView::isBaseShown() const
{
    return !m_base->isHidden();
}

} // namespace velmora

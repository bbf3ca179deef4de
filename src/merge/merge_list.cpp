#include "merge/merge_list.h"

#include "session/list/list_model.h"
#include "session/list/list_view.h"

#include <QBoxLayout>
#include <QHeaderView>

#include <utility>

namespace velmora {

MergeList::MergeList(std::unique_ptr<const RowSource> rows, const QString &name, QWidget *parent)
    : QWidget(parent),
      m_rows(new ListModel(std::move(rows), this)),
      m_view(new ListView(*m_rows, this)),
      m_head(new QHBoxLayout)
{
    m_view->setAccessibleName(name);
    m_view->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_head->setContentsMargins(6, 3, 6, 3);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(m_head);
    column->addWidget(m_view, 1);
    setFocusProxy(m_view);
    connect(m_view, &ListView::currentRowChanged, this, &MergeList::tellCurrent);
    connect(m_view, &QTreeView::clicked, this, &MergeList::tellCurrent);
}

// The view tells of its rows as it goes, and children outlive members.
MergeList::~MergeList()
{
    m_view->disconnect(this);
}

void MergeList::tellCurrent()
{
    const int row = m_view->currentIndex().row();
    if (!m_follows && row >= 0)
        tellChosen(row);
}

void MergeList::refreshTheme()
{
    m_rows->refreshTheme();
    m_view->viewport()->update();
}

} // namespace velmora

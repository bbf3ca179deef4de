#include "filetypes/checksum/checksum_list_view.h"

#include <QAction>
#include <QBoxLayout>

namespace velmora {

class ChecksumListView::Bar final : public ListBar {
public:
    explicit Bar(QWidget *view) : ListBar(view)
    {
        addListCommands();
        refreshTheme();
    }
};

ChecksumListView::ChecksumListView(QWidget *parent)
    : QWidget(parent), m_bar(new Bar(this)), m_pane(new ListPane(*m_bar, std::make_unique<ChecksumRows>(), this))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(m_bar);
    column->addWidget(m_pane, 1);
    connect(m_pane, &ListPane::told, this, &ChecksumListView::told);
}

void ChecksumListView::setCheck(const ChecksumCheck &check)
{
    m_pane->setResult(std::make_unique<ChecksumRows>(check.files));
    m_pane->setRowsView(check.failures() > 0 ? RowsView::Differences : RowsView::All);
}

void ChecksumListView::refreshTheme()
{
    m_bar->refreshTheme();
    m_pane->refreshTheme();
}

} // namespace velmora

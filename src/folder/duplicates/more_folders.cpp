#include "folder/duplicates/more_folders.h"

#include "folder/actions/action_words.h"
#include "session/frame/elided_label.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QToolButton>

#include <algorithm>

namespace velmora {

MoreFolders::MoreFolders(QWidget *parent) : QWidget(parent), m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(2);
    hide();
}

QList<MoreFolder> MoreFolders::folders() const
{
    QList<MoreFolder> folders;
    for (const Row &row : m_rows)
        folders.append({row.path, row.role->currentIndex() == 1});
    return folders;
}

void MoreFolders::setFolders(const QList<MoreFolder> &folders)
{
    while (!m_rows.isEmpty())
        remove(m_rows.last().widget);
    for (const MoreFolder &folder : folders)
        add(folder);
}

void MoreFolders::add(const MoreFolder &folder)
{
    const bool isThere =
        std::any_of(m_rows.begin(), m_rows.end(), [&](const Row &row) { return row.path == folder.path; });
    if (folder.path.isEmpty() || isThere || m_rows.size() >= most)
        return;
    auto *widget = new QWidget;
    auto *path = new ElidedLabel;
    path->setText(shownPath(folder.path));
    path->setToolTip(toolTipText(shownPath(folder.path)));
    auto *role = new QComboBox;
    role->addItems({Velmora::tr("Look for copies"), Velmora::tr("Only as reference")});
    role->setItemData(0, toolTipText(Velmora::tr("Copies in this folder may be deleted")), Qt::ToolTipRole);
    role->setItemData(1, toolTipText(Velmora::tr("Nothing in this folder is deleted")), Qt::ToolTipRole);
    role->setAccessibleName(shownPath(folder.path));
    role->setCurrentIndex(folder.isReference ? 1 : 0);
    auto *removal = new QToolButton;
    removal->setText(QStringLiteral("✕"));
    removal->setAutoRaise(true);
    removal->setToolTip(Velmora::tr("Do not look in this folder"));
    removal->setAccessibleName(removal->toolTip());
    connect(removal, &QToolButton::clicked, this, [this, widget] { remove(widget); });
    auto *row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(path, 1);
    row->addWidget(role);
    row->addWidget(removal);
    m_column->addWidget(widget);
    m_rows.append({widget, folder.path, role});
    show();
}

void MoreFolders::remove(const QWidget *widget)
{
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [=](const Row &one) { return one.widget == widget; });
    if (row == m_rows.end())
        return;
    row->widget->hide();
    row->widget->deleteLater(); // its own button may be what is pressed
    m_rows.erase(row);
    setVisible(!m_rows.isEmpty());
}

} // namespace velmora

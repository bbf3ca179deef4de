#include "folder/compare/folder_compare_side_pane.h"

#include "session/theme.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace velmora {

FolderCompareSidePane::FolderCompareSidePane(Side side, QWidget *parent)
    : QWidget(parent),
      m_edit(new PathEdit(side == Side::Left ? Velmora::tr("Left folder path...") : Velmora::tr("Right folder path..."),
                          side == Side::Left ? Velmora::tr("Browse left folder") : Velmora::tr("Browse right folder"),
                          this)),
      m_up(new QToolButton(this)),
      m_lock(new QLabel(this))
{
    setObjectName(side == Side::Left ? QStringLiteral("leftPathPane") : QStringLiteral("rightPathPane"));
    m_up->setAutoRaise(true);
    m_up->setFocusPolicy(Qt::TabFocus);
    m_up->setToolTip(Velmora::tr("Go up to the folders around (Backspace)"));
    m_up->setAccessibleName(m_up->toolTip());
    m_lock->setToolTip(Velmora::tr("This side is read-only"));
    m_lock->setVisible(false);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(4, 4, 4, 4);
    row->setSpacing(4);
    row->addWidget(m_up);
    row->addWidget(m_lock);
    row->addWidget(m_edit, 1);
    connect(m_up, &QToolButton::clicked, this, &FolderCompareSidePane::upRequested);
    connect(m_edit, &PathEdit::browseRequested, this, &FolderCompareSidePane::browseRequested);
    connect(m_edit, &PathEdit::submitted, this, &FolderCompareSidePane::submitted);
    refreshTheme();
}

QString FolderCompareSidePane::path() const
{
    return m_edit->path();
}

void FolderCompareSidePane::setPath(const QString &path)
{
    m_edit->setPath(path);
}

QList<QWidget *> FolderCompareSidePane::focusParts() const
{
    QList<QWidget *> parts{m_up};
    for (QWidget *part : m_edit->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if ((part->focusPolicy() & Qt::TabFocus) != 0)
            parts.append(part);
    }
    return parts;
}

void FolderCompareSidePane::setReadOnly(bool readOnly)
{
    m_lock->setVisible(readOnly);
}

void FolderCompareSidePane::refreshTheme()
{
    m_edit->refreshTheme();
    m_up->setIcon(themedIcon(QStringLiteral("up.png")));
    m_lock->setPixmap(themedIcon(QStringLiteral("lock.png")).pixmap(16));
}

} // namespace velmora

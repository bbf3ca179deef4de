#include "folder/duplicates/keep_folders_dialog.h"

#include "folder/actions/action_words.h"
#include "session/dialogs.h"
#include "session/shown_path.h"
#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"

#include <QBoxLayout>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QUrl>

namespace velmora {

namespace {

constexpr QSize usualSize(520, 320);

QStringList droppedFolders(const QMimeData &data)
{
    QStringList folders;
    const QList<QUrl> urls = data.urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isDir())
            folders.append(url.toLocalFile());
    }
    return folders;
}

} // namespace

KeepFoldersDialog::KeepFoldersDialog(const QStringList &folders, const QString &start, QWidget *parent)
    : QDialog(parent), m_start(start), m_list(new QListWidget), m_remove(new QPushButton(Velmora::tr("Remove")))
{
    setWindowTitle(Velmora::tr("Keep the copies in these folders"));
    setModal(true);
    setAcceptDrops(true);
    m_list->setObjectName(QStringLiteral("keepFolders"));
    m_list->setAccessibleName(windowTitle());
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *what = new QLabel(Velmora::tr("What lies in one of these folders or below stays, and the other copies of its "
                                        "group are checked. Groups with no copy there are left as they are."));
    what->setWordWrap(true);
    what->setBuddy(m_list);
    auto *addition = new QPushButton(Velmora::tr("Add a folder…"));
    addition->setObjectName(QStringLiteral("addKeepFolder"));
    addition->setAutoDefault(false);
    m_remove->setObjectName(QStringLiteral("removeKeepFolder"));
    m_remove->setAutoDefault(false);
    connect(addition, &QPushButton::clicked, this, &KeepFoldersDialog::chooseFolder);
    connect(m_remove, &QPushButton::clicked, this, &KeepFoldersDialog::removeSelected);
    connect(m_list, &QListWidget::itemSelectionChanged, this, &KeepFoldersDialog::showState);

    auto *buttons = new QVBoxLayout;
    buttons->addWidget(addition);
    buttons->addWidget(m_remove);
    buttons->addStretch(1);
    auto *middle = new QHBoxLayout;
    middle->addWidget(m_list, 1);
    middle->addLayout(buttons);
    auto *whole = new QVBoxLayout(this);
    whole->addWidget(what);
    whole->addLayout(middle, 1);
    whole->addLayout(makeConfirmButtons(*this));
    for (const QString &folder : folders)
        add(folder);
    addition->setFocus();
    resize(usualSize);
    showState();
}

void KeepFoldersDialog::chooseFolder()
{
    Dialogs::instance().openFolder(this, Velmora::tr("Select folder"), m_folders.isEmpty() ? m_start : m_folders.last(),
                                   [self = QPointer(this)](const QString &folder) {
                                       if (self)
                                           self->add(folder);
                                   });
}

void KeepFoldersDialog::add(const QString &folder)
{
    const QString clean = QDir::cleanPath(folder);
    if (folder.isEmpty() || m_folders.contains(clean))
        return;
    m_folders.append(clean);
    auto *row = new QListWidgetItem(shownPath(clean), m_list);
    row->setToolTip(toolTipText(shownPath(clean)));
    m_list->setCurrentItem(row, QItemSelectionModel::ClearAndSelect);
    showState();
}

void KeepFoldersDialog::removeSelected()
{
    // Found beforehand: where the current one is taken out, another one becomes selected.
    const QList<QListWidgetItem *> selected = m_list->selectedItems();
    for (QListWidgetItem *item : selected) {
        m_folders.removeAt(m_list->row(item));
        delete item;
    }
    showState();
}

void KeepFoldersDialog::showState()
{
    m_remove->setEnabled(!m_list->selectedItems().isEmpty());
    findChild<QPushButton *>(QStringLiteral("settingsOk"))->setEnabled(!m_folders.isEmpty());
}

void KeepFoldersDialog::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedFolders(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void KeepFoldersDialog::dropEvent(QDropEvent *event)
{
    const QStringList folders = droppedFolders(*event->mimeData());
    for (const QString &folder : folders)
        add(folder);
    event->acceptProposedAction();
}

void KeepFoldersDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Delete) && m_list->hasFocus())
        removeSelected();
    else
        QDialog::keyPressEvent(event);
}

} // namespace velmora

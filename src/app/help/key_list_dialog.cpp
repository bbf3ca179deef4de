#include "app/help/key_list_dialog.h"

#include "session/translate.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

namespace velmora {

namespace {

constexpr QSize usualSize(560, 600);

} // namespace

KeyListDialog::KeyListDialog(const QList<KeyGroup> &groups, QWidget *parent)
    : QDialog(parent), m_wanted(new QLineEdit), m_list(new QTreeWidget)
{
    setWindowTitle(Velmora::tr("Keyboard shortcuts"));
    m_wanted->setObjectName(QStringLiteral("keySearch"));
    m_wanted->setPlaceholderText(Velmora::tr("Search for a command or a key"));
    m_wanted->setAccessibleName(m_wanted->placeholderText());
    m_wanted->setClearButtonEnabled(true);

    m_list->setObjectName(QStringLiteral("keyList"));
    m_list->setHeaderLabels({Velmora::tr("Command"), Velmora::tr("Keys")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    for (const KeyGroup &group : groups) {
        auto *head = new QTreeWidgetItem(m_list, {group.title});
        QFont bold = head->font(0);
        bold.setBold(true);
        head->setFont(0, bold);
        head->setFirstColumnSpanned(true);
        head->setFlags(Qt::ItemIsEnabled);
        for (const KeyEntry &entry : group.entries)
            new QTreeWidgetItem(head, {entry.command, entry.keys});
    }
    m_list->expandAll();
    m_list->setItemsExpandable(false);
    m_list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_list->header()->setStretchLastSection(false);

    auto *close = new QPushButton(Velmora::tr("Close"));
    close->setObjectName(QStringLiteral("keyListClose"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_wanted, &QLineEdit::textChanged, this, &KeyListDialog::showMatching);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_wanted);
    column->addWidget(m_list, 1);
    column->addLayout(buttons);
    m_wanted->setFocus();
    resize(usualSize);
}

void KeyListDialog::showMatching(const QString &wanted)
{
    for (int group = 0; group < m_list->topLevelItemCount(); ++group) {
        QTreeWidgetItem *head = m_list->topLevelItem(group);
        bool anything = false;
        for (int entry = 0; entry < head->childCount(); ++entry) {
            QTreeWidgetItem *item = head->child(entry);
            const bool matches = item->text(0).contains(wanted, Qt::CaseInsensitive) ||
                                 item->text(1).contains(wanted, Qt::CaseInsensitive);
            item->setHidden(!matches);
            anything = anything || matches;
        }
        head->setHidden(!anything);
    }
}

} // namespace velmora

#include "app/session_panel.h"

#include "app/session_kinds.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QHeaderView>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr int narrowest = 180;
constexpr int widest = 320;
constexpr int usual = 230;
constexpr int indentation = 20;
constexpr int iconSize = 20;

// The panel's own order: kinds that work on the same thing stand together.
constexpr const char *newKinds[] = {
    "folder",   "foldermerge", "sync",     "text",      "textedit", "merge",   "table",    "binary",
    "mp3",      "image",       "registry", "version",   "git",      "archive", "checksum", "duplicate",
    "snapshot", "sftp",        "env",      "diskusage", "service",  "startup",
};

QTreeWidgetItem *addCategory(QTreeWidget *tree, const QString &text, const QString &id)
{
    auto *item = new QTreeWidgetItem(tree, {text});
    item->setData(0, SessionPanel::idRole, id);
    item->setExpanded(true);
    return item;
}

} // namespace

SessionPanel::SessionPanel(QWidget *parent) : QWidget(parent), m_tree(new QTreeWidget(this))
{
    setObjectName(QStringLiteral("sessionPanel"));
    setMinimumWidth(narrowest);
    setMaximumWidth(widest);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);

    auto *header = new QLabel(Velmora::tr("Sessions"), this);
    header->setObjectName(QStringLiteral("sessionHeader"));
    QFont font = header->font();
    font.setWeight(QFont::DemiBold);
    header->setFont(font);
    header->setMargin(8);

    m_tree->setObjectName(QStringLiteral("sessionTree"));
    m_tree->setHeaderHidden(true);
    m_tree->setRootIsDecorated(true);
    m_tree->setIndentation(indentation);
    m_tree->setIconSize({iconSize, iconSize});
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->setExpandsOnDoubleClick(false);
    m_tree->setAccessibleName(header->text());
    addNewKinds();
    refreshTheme();

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header);
    column->addWidget(m_tree, 1);

    connect(m_tree, &QTreeWidget::itemClicked, this, &SessionPanel::chooseOnce);
    connect(m_tree, &QTreeWidget::itemDoubleClicked, this, [this] { m_secondClick = true; });
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *shortcut = new QShortcut(QKeySequence(key), m_tree, nullptr, nullptr, Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, [this] {
            if (QTreeWidgetItem *item = m_tree->currentItem())
                Q_EMIT itemChosen(item, 0);
        });
    }
}

void SessionPanel::refreshTheme()
{
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it) {
        const QString id = (*it)->data(0, idRole).toString();
        if (id.startsWith(QLatin1String("new_")))
            (*it)->setIcon(0, sessionKindIcon(id.mid(4)));
        else if (id == QLatin1String("category_new"))
            (*it)->setIcon(0, themedIcon(QStringLiteral("new.png")));
    }
}

QSize SessionPanel::sizeHint() const
{
    return {usual, QWidget::sizeHint().height()};
}

void SessionPanel::addNewKinds()
{
    QTreeWidgetItem *root = addCategory(m_tree, Velmora::tr("New"), QStringLiteral("category_new"));
    for (const char *id : newKinds) {
        const SessionKindRow &kind = sessionKind(QLatin1String(id));
        auto *item = new QTreeWidgetItem(root, {Velmora::tr(kind.displayName)});
        item->setData(0, idRole, QString(QLatin1String("new_") + kind.id));
        item->setToolTip(0, Velmora::tr(kind.summary));
    }
}

void SessionPanel::chooseOnce(QTreeWidgetItem *item, int column)
{
    // The second half of a double click is reported as a click of its own.
    if (std::exchange(m_secondClick, false))
        return;
    Q_EMIT itemChosen(item, column);
}

} // namespace velmora

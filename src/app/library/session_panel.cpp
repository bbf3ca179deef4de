#include "app/library/session_panel.h"

#include "app/session_kinds.h"
#include "core/visible_name.h"
#include "session/plain_text.h"
#include "session/shown_path.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
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

template <typename Parent>
QTreeWidgetItem *addCategory(Parent *parent, const QString &text, const QString &id)
{
    auto *item = new QTreeWidgetItem(parent, {text});
    item->setData(0, SessionPanel::idRole, id);
    item->setExpanded(true);
    return item;
}

} // namespace

QString historyDayLabel(const QDate &day, const QDate &today)
{
    if (day == today)
        return Velmora::tr("Today");
    if (day == today.addDays(-1))
        return Velmora::tr("Yesterday");
    return day.toString(QStringLiteral("yyyy/M/d"));
}

SessionPanel::SessionPanel(QWidget *parent) : QWidget(parent), m_tree(new QTreeWidget(this)), m_history(nullptr)
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
    m_history = addCategory(m_tree, Velmora::tr("Auto-save"), QStringLiteral("category_autosave"));
    refreshTheme();

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header);
    column->addWidget(m_tree, 1);

    connect(m_tree, &QTreeWidget::itemClicked, this, &SessionPanel::chooseOnce);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *before, QWidget *now) {
        if (now == m_tree)
            m_before = before;
    });
    connect(m_tree, &QTreeWidget::itemPressed, this, [this] { m_secondClick = false; });
    connect(m_tree, &QTreeWidget::itemDoubleClicked, this, [this] {
        m_secondClick = true;
        if (m_before) // what the first click has opened
            m_before->setFocus();
    });
    addKey(Qt::Key_Return, &SessionPanel::chooseCurrent);
    addKey(Qt::Key_Enter, &SessionPanel::chooseCurrent);
    addKey(Qt::Key_F2, &SessionPanel::editCurrent);
    addKey(Qt::Key_Delete, &SessionPanel::deleteCurrent);
}

void SessionPanel::setHistory(const QList<SessionHistory::Entry> &history)
{
    const qsizetype row = entryItems().indexOf(m_tree->currentItem());
    const std::optional<quint64> current = entryOf(m_tree->currentItem());
    rebuildHistory(history);
    const QList<QTreeWidgetItem *> items = entryItems();
    if (row < 0 || items.isEmpty())
        return;
    // Whoever works with the keys goes on from the same entry or, when it is gone, from the one in its place.
    const auto same = std::find_if(items.begin(), items.end(),
                                   [&current](const QTreeWidgetItem *item) { return entryOf(item) == current; });
    m_tree->setCurrentItem(same != items.end() ? *same : items[std::min(row, items.size() - 1)]);
}

QList<QTreeWidgetItem *> SessionPanel::entryItems() const
{
    QList<QTreeWidgetItem *> items;
    for (QTreeWidgetItemIterator it(m_history); *it; ++it) {
        if (entryOf(*it))
            items.append(*it);
    }
    return items;
}

void SessionPanel::rebuildHistory(const QList<SessionHistory::Entry> &history)
{
    qDeleteAll(m_history->takeChildren());
    const QDate today = QDate::currentDate();
    QTreeWidgetItem *group = nullptr;
    for (auto entry = history.crbegin(); entry != history.crend(); ++entry) {
        const SessionRecord &record = entry->record;
        const QString label = historyDayLabel(record.timestamp.date(), today);
        if (!group || group->text(0) != label)
            group = addCategory(m_history, label, QStringLiteral("category_date"));
        auto *item = new QTreeWidgetItem(group, {visibleName(record.name)});
        item->setData(0, idRole, QStringLiteral("history"));
        item->setData(0, entryRole, entry->id);
        item->setData(0, kindRole, record.type);
        item->setData(0, leftRole, record.paths.left);
        item->setData(0, rightRole, record.paths.right);
        item->setData(0, baseRole, record.paths.base);
        item->setIcon(0, sessionKindIcon(record.type));
        QStringList lines{shownPath(record.paths.left), shownPath(record.paths.right)};
        if (!record.paths.base.isEmpty())
            lines.prepend(shownPath(record.paths.base));
        item->setToolTip(0, plainToolTip(lines.join(u'\n')));
    }
}

std::optional<quint64> SessionPanel::entryOf(const QTreeWidgetItem *item)
{
    if (!item || item->data(0, idRole).toString() != QLatin1String("history"))
        return std::nullopt;
    return item->data(0, entryRole).toULongLong();
}

void SessionPanel::refreshTheme()
{
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it) {
        const QString id = (*it)->data(0, idRole).toString();
        if (id.startsWith(QLatin1String("new_")))
            (*it)->setIcon(0, sessionKindIcon(id.mid(4)));
        else if (id == QLatin1String("category_new"))
            (*it)->setIcon(0, themedIcon(QStringLiteral("new.png")));
        else if (id == QLatin1String("category_autosave"))
            (*it)->setIcon(0, themedIcon(QStringLiteral("drawer.png")));
        else if (id == QLatin1String("history"))
            (*it)->setIcon(0, sessionKindIcon((*it)->data(0, kindRole).toString()));
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

void SessionPanel::addKey(const QKeySequence &key, void (SessionPanel::*act)())
{
    auto *shortcut = new QShortcut(key, m_tree, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, act);
}

void SessionPanel::chooseCurrent()
{
    if (QTreeWidgetItem *item = m_tree->currentItem())
        Q_EMIT itemChosen(item, 0);
}

void SessionPanel::editCurrent()
{
    Q_EMIT editRequested(m_tree->currentItem());
}

void SessionPanel::deleteCurrent()
{
    if (const auto entry = entryOf(m_tree->currentItem()))
        Q_EMIT deleteRequested(*entry);
}

void SessionPanel::chooseOnce(QTreeWidgetItem *item, int column)
{
    // Some versions of Qt report the second half of a double click as a click of its own.
    if (std::exchange(m_secondClick, false))
        return;
    Q_EMIT itemChosen(item, column);
}

} // namespace velmora

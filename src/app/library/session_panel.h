#pragma once

#include "app/library/session_history.h"

#include <QPointer>
#include <QWidget>

#include <optional>

class QTreeWidget;
class QTreeWidgetItem;

namespace velmora {

/// What a day is called in the history: "Today", "Yesterday", or its date as in "2026/3/7".
[[nodiscard]] QString historyDayLabel(const QDate &day, const QDate &today);

/// The panel beside the tabs: a tree with all kinds of session under "New" and the history, by days, under "Auto-save".
///
/// Each item carries its identifier as `idRole`: "category_…" for what only groups others, "new_" and the kind for what
/// opens an empty session, "history" for an entry of the history, which carries the other roles too.
class SessionPanel final : public QWidget {
    Q_OBJECT
public:
    static constexpr int idRole = Qt::UserRole;
    static constexpr int entryRole = Qt::UserRole + 1; ///< the number of a history entry
    static constexpr int kindRole = Qt::UserRole + 2;
    static constexpr int leftRole = Qt::UserRole + 3;
    static constexpr int rightRole = Qt::UserRole + 4;
    static constexpr int baseRole = Qt::UserRole + 5;

    explicit SessionPanel(QWidget *parent = nullptr);

    [[nodiscard]] QTreeWidget *tree() const noexcept { return m_tree; }

    /// Shows `history`, which is ordered oldest first, under the days as they are called now.
    void setHistory(const QList<SessionHistory::Entry> &history);
    void refreshTheme();

    /// The history entry of an item; nothing for any other item, or null.
    [[nodiscard]] static std::optional<quint64> entryOf(const QTreeWidgetItem *item);

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    /// A click, once for a double click too, or a key.
    void itemChosen(QTreeWidgetItem *item, int column);
    /// The key for editing was pressed, on a history entry or elsewhere.
    void editRequested(QTreeWidgetItem *item);
    /// The key for deleting was pressed on a history entry.
    void deleteRequested(quint64 entry);

private:
    void rebuildHistory(const QList<SessionHistory::Entry> &history);
    /// The items of the history, newest first.
    [[nodiscard]] QList<QTreeWidgetItem *> entryItems() const;
    void addNewKinds();
    void addKey(const QKeySequence &key, void (SessionPanel::*act)());
    void chooseCurrent();
    void editCurrent();
    void deleteCurrent();
    void chooseOnce(QTreeWidgetItem *item, int column);

    QTreeWidget *m_tree;
    QTreeWidgetItem *m_history;
    bool m_secondClick = false;
    QPointer<QWidget> m_before; ///< what had the focus before the tree
};

} // namespace velmora

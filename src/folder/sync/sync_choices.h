#pragma once

#include "folder/engine/sync_planner.h"

#include <QJsonObject>
#include <QStringList>
#include <QWidget>

class QAction;
class QCheckBox;
class QComboBox;

namespace velmora {

/// How a person wants two folders to agree: the direction, the filter, and what is looked at.
class SyncChoices final : public QWidget {
    Q_OBJECT
public:
    explicit SyncChoices(QWidget *parent = nullptr);

    [[nodiscard]] SyncRules rules() const;
    [[nodiscard]] bool readsContents() const;
    [[nodiscard]] bool findsMoves() const;

    /// Each of the two tells `inputChanged`.
    void findMoves();
    void ignoreHours();

    /// As session records have it.
    [[nodiscard]] QJsonObject options() const;
    void setOptions(const QJsonObject &options);

Q_SIGNALS:
    /// The plan is another; what was found is the same.
    void directionChanged();
    /// What a plan is made from would be something else.
    void inputChanged();
    void filterChanged(const QStringList &masks);

private:
    void fillDirections();
    void fillFilters();
    [[nodiscard]] QAction *option(const char *name, const QString &text, const QString &hint);

    QComboBox *m_direction;
    QComboBox *m_filter;
    QCheckBox *m_contents;
    QAction *m_moves;
    QAction *m_hours;
};

} // namespace velmora

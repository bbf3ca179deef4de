#pragma once

#include "core/recovery_store.h"
#include "session/session_widget.h"

#include <QStringList>

/// A session that does what a test sets and writes down what is asked of it.
class ProbeSession final : public velmora::SessionWidget {
    Q_OBJECT
public:
    using SessionWidget::SessionWidget;

    [[nodiscard]] QString kind() const override { return QStringLiteral("text"); }
    [[nodiscard]] velmora::SessionPaths paths() const override { return sides; }
    void setPaths(const velmora::SessionPaths &paths) override { sides = paths; }
    void start() override { log.append(QStringLiteral("start")); }
    [[nodiscard]] bool canEdit(velmora::EditCommand command) const override { return editable.contains(command); }
    void edit(velmora::EditCommand command) override
    {
        log.append(QStringLiteral("edit %1").arg(static_cast<int>(command)));
    }
    [[nodiscard]] bool canEnableEditing() const override { return true; }
    [[nodiscard]] bool isEditingEnabled() const override { return unlocked; }
    void setEditingEnabled(bool enabled) override { unlocked = enabled; }
    [[nodiscard]] bool hasUnsavedChanges() const override { return unsaved; }
    void confirmClose(std::function<void(bool)> answered) override
    {
        if (unsaved)
            answer = std::move(answered);
        else
            answered(true);
    }
    /// How to answer whether the session may be closed, once.
    std::function<void(bool)> takeAnswer() { return std::exchange(answer, {}); }
    void recover(const velmora::RecoveryRecord &record, std::function<void()> kept) override
    {
        recovered = record;
        recoveredIsKept = std::move(kept);
    }
    [[nodiscard]] bool acceptsDroppedPaths() const override { return takesDrops; }
    void dropPaths(const QStringList &paths, QPoint position) override
    {
        log.append(QStringLiteral("drop %1 at %2,%3").arg(paths.join(u' ')).arg(position.x()).arg(position.y()));
    }

    velmora::SessionPaths sides;
    QList<velmora::EditCommand> editable;
    QStringList log;
    velmora::RecoveryRecord recovered;
    std::function<void()> recoveredIsKept;
    std::function<void(bool)> answer; ///< a question that waits for it
    bool unlocked = false;
    bool unsaved = false;
    bool takesDrops = true;
};

#include "text/view/pane_accessible.h"

#include "text/view/diff_pane.h"

#include <QAccessibleWidget>

namespace velmora {

namespace {

class PaneAccessible final : public QAccessibleWidget {
public:
    explicit PaneAccessible(DiffPane *pane) : QAccessibleWidget(pane, QAccessible::EditableText), m_pane(pane) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? m_pane->describeCurrentRow() : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        state.multiLine = true;
        return state;
    }

private:
    DiffPane *m_pane;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *pane = qobject_cast<DiffPane *>(object);
    return pane ? new PaneAccessible(pane) : nullptr;
}

} // namespace

void installPaneAccessibility()
{
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
}

} // namespace velmora

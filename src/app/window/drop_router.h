#pragma once

#include <QObject>

namespace velmora {

class SessionTabs;

/// Takes files and folders dragged over the session in front to that session, when it wants them dropped anywhere on
/// it, whichever of its parts lies under the mouse. Everything else that is dragged over it is refused, but for text
/// over a widget whose property "takesDroppedText" is true. Watches the whole application while it lives.
class DropRouter final : public QObject {
    Q_OBJECT
public:
    /// `tabs` outlives the router.
    explicit DropRouter(SessionTabs &tabs, QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    SessionTabs &m_tabs;
};

} // namespace velmora

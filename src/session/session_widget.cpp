#include "session/session_widget.h"

namespace velmora {

SessionWidget::SessionWidget(SessionHost &host, QWidget *parent) : QWidget(parent), m_host(host) {}

SessionWidget::~SessionWidget() = default;

SessionRecord SessionWidget::record() const
{
    return {
        .name = {}, .type = kind(), .paths = paths(), .options = options(), .timestamp = QDateTime::currentDateTime()};
}

} // namespace velmora

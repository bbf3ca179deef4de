#pragma once

#include "session/session_widget.h"

class QLabel;
class QPushButton;

namespace velmora {

struct SessionKindRow;

/// Stands in for a kind whose session is not part of the program yet. Says so, offers the session that shows its files
/// or folders meanwhile, and keeps the paths it was opened with, so that its tab is titled, remembered and saved like
/// any other.
class PendingSession final : public SessionWidget {
    Q_OBJECT
public:
    /// `row` lives as long as the program.
    PendingSession(SessionHost &host, const SessionKindRow &row, QWidget *parent = nullptr);

    [[nodiscard]] QString kind() const override;
    [[nodiscard]] SessionPaths paths() const override { return m_paths; }
    void setPaths(const SessionPaths &paths) override;
    void start() override {}
    [[nodiscard]] QJsonObject options() const override { return m_options; }
    void setOptions(const QJsonObject &options) override { m_options = options; }
    /// What it stands in for might have had to be done.
    [[nodiscard]] int waitStatus() const override { return 1; }
    void refreshTheme() override;

private:
    const SessionKindRow &m_row;
    SessionPaths m_paths;
    QJsonObject m_options;
    QLabel *m_icon;
    QLabel *m_inputs;
    QPushButton *m_instead;
};

} // namespace velmora

#pragma once

#include "core/progress.h"

#include <QWidget>

class QLabel;

namespace velmora {

class ProgressStrip;

/// The line at the foot of a session, under a strip that fills while it works. Shows messages as plain text; what was
/// shown is not what a session knows, so there is no way to ask for it but by object name: "statusLabel".
class StatusLine final : public QWidget {
    Q_OBJECT
public:
    explicit StatusLine(QWidget *parent = nullptr);

    void showMessage(const QString &message);

    /// Shows that something runs, at first without saying how far it is.
    void setBusy(bool busy);
    /// Shows how far it is, with `message`.
    void showProgress(const ProgressState &state, const QString &message);

private:
    ProgressStrip *m_strip;
    QLabel *m_message;
};

} // namespace velmora

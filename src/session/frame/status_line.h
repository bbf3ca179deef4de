#pragma once

#include "core/progress.h"

#include <QTimer>
#include <QWidget>

class QBoxLayout;
class QLabel;
class QProgressBar;

namespace velmora {

class ElidedLabel;

/// The line at the foot of a session: what happened last, how far a run is, and the facts that the session keeps in
/// sight; in two rows where there is no room for one. Shows plain text, with what is invisible in names made visible.
/// What is shown is not what a session knows, so there is no way to ask for it but by object name: "statusLabel".
class StatusLine final : public QWidget {
    Q_OBJECT
public:
    explicit StatusLine(QWidget *parent = nullptr);

    /// Adds a text to the end of the line, to be filled in by the session. It ends in an ellipsis where room is short.
    QLabel *addFact(const QString &objectName);
    /// Adds any other part, such as a button, to the end of the line.
    void addPart(QWidget *part);

    /// Shows `message`, with `detail` beside it.
    void showMessage(const QString &message, const QString &detail = {});
    /// The same for something that went wrong.
    void showFailure(const QString &message, const QString &detail = {});

    /// Shows how far a run is, or only that something runs while its total is 0, with `text` beside it. What is over in
    /// a moment is not shown at all, so that nothing flickers.
    void showProgress(const ProgressState &state, const QString &text = {});
    void clearProgress();

    /// Takes up a changed theme.
    void refreshTheme();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void showProgressParts();

    QLabel *m_sign;
    ElidedLabel *m_message;
    ElidedLabel *m_detail;
    ElidedLabel *m_progressText;
    QProgressBar *m_progress;
    QBoxLayout *m_rows;
    QBoxLayout *m_facts;
    QTimer m_appearance; ///< of the progress
};

} // namespace velmora

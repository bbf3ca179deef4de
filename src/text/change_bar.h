#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QToolButton;

namespace velmora {

/// The bar above the texts that says that files have changed on disk, and offers to read them again.
class ChangeBar final : public QWidget {
    Q_OBJECT
public:
    explicit ChangeBar(QWidget *parent = nullptr);

    /// Shows `text`; an empty one hides the bar. Without `canReload` there is nothing that could be read again.
    void say(const QString &text, bool canReload);

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void reloadWanted();
    void dismissed();

private:
    QLabel *m_text;
    QPushButton *m_reload;
    QToolButton *m_dismiss;
};

} // namespace velmora

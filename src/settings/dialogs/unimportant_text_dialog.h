#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace velmora {

/// Asks for one rule of unimportant text. Says at once when what is typed is no regular expression; it is accepted all
/// the same, as a plain text. Opened with open(); the result counts when `accepted` comes.
class UnimportantTextDialog final : public QDialog {
    Q_OBJECT
public:
    UnimportantTextDialog(const QString &text, QWidget *parent);

    /// Not blank once accepted.
    [[nodiscard]] QString text() const;

private:
    void judge();

    QLineEdit *m_text;
    QLabel *m_verdict;
};

} // namespace velmora

#pragma once

#include <QWidget>

#include <optional>

class QComboBox;
class QLineEdit;
class QToolButton;

namespace velmora {

class ElidedLabel;

/// The bar under the views in which a person says what bytes to look for, as digits or as text.
class HexFindBar final : public QWidget {
    Q_OBJECT
public:
    explicit HexFindBar(QWidget *parent = nullptr);

    /// Shows the bar and takes the keyboard.
    void open();
    /// What is looked for; nothing, and the bar says so, when it does not stand for bytes.
    [[nodiscard]] std::optional<QByteArray> pattern();
    void tell(const QString &message);

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void nextWanted();
    void previousWanted();
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] QToolButton *addButton(const char *name, const QString &hint);

    QComboBox *m_form;
    QLineEdit *m_text;
    QToolButton *m_previous;
    QToolButton *m_next;
    QToolButton *m_close;
    ElidedLabel *m_message;
};

} // namespace velmora

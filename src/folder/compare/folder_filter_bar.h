#pragma once

#include <QWidget>

class QComboBox;
class QLabel;
class QToolButton;

namespace velmora {

/// The line with the masks of the files that are shown, and the button for sizes and dates.
class FolderFilterBar final : public QWidget {
    Q_OBJECT
public:
    explicit FolderFilterBar(QWidget *parent = nullptr);

    /// The masks, as `FolderViewLimits::masks` takes them.
    [[nodiscard]] QString masks() const;
    void setMasks(const QString &masks);
    void focusMasks();

    /// Tells how many entries filters hide, and whether sizes or dates are among them.
    void showEffect(qint64 hidden, bool limits);

    void refreshTheme();

Q_SIGNALS:
    void masksChanged();
    void advancedWanted();
    void closeWanted();
    /// The masks are done with: the keyboard is for the rows again.
    void done();

private:
    QComboBox *m_masks;
    QToolButton *m_advanced;
    QLabel *m_effect;
};

/// The masks in an entry like "C++ source (*.cpp;*.h)"; other texts are masks as they are.
[[nodiscard]] QString masksOfEntry(const QString &text);

} // namespace velmora

#pragma once

#include <QWidget>

class QComboBox;
class QLabel;

namespace velmora {

/// The line under the tabs of a settings dialog: where the settings apply, and, where the dialog has no other place for
/// it, which preset they are.
class SettingsFooter final : public QWidget {
    Q_OBJECT
public:
    /// `thisViewOnly` is the text of the first choice, with which the line begins.
    explicit SettingsFooter(const QString &thisViewOnly, QWidget *parent = nullptr);

    /// The settings are to become the stored defaults, too.
    [[nodiscard]] bool savesDefaults() const;

    /// Shows "Preset: %1"; an empty name stands for settings that are no preset.
    void showPreset(const QString &name);

private:
    QComboBox *m_scope;
    QLabel *m_preset;
};

/// The text that names a preset, or, for an empty name, says that the settings are none.
[[nodiscard]] QString presetText(const QString &name);

} // namespace velmora

#pragma once

#include "app/desktop/shell_menu.h"

#include <QDialog>

class QCheckBox;
class QComboBox;

namespace velmora {

class TextAppearanceFields;

/// The options of the interface: theme, language, how texts look, and the entries in the file manager's context menu.
///
/// A theme is worn as soon as it is chosen; Cancel brings the old one back. Apply stores everything and closes, unless
/// the context menu could not be written.
class OptionsDialog final : public QDialog {
    Q_OBJECT
public:
    /// `dark` tells the theme worn now. Where there is no context menu, it cannot be chosen.
    OptionsDialog(bool dark, ShellMenu menu, QWidget *parent = nullptr);

    void reject() override;

Q_SIGNALS:
    /// The application is to wear this theme.
    void themeChosen(bool dark);

private:
    [[nodiscard]] QWidget *makeAppearancePage();
    [[nodiscard]] QWidget *makeIntegrationPage();
    [[nodiscard]] bool isDarkChosen() const;
    void apply();
    void applyTheme();
    void applyLanguage();
    [[nodiscard]] bool applyExplorerMenu();

    ShellMenu m_menu;
    QComboBox *m_theme;
    QComboBox *m_language;
    TextAppearanceFields *m_texts = nullptr;
    QCheckBox *m_explorer;
    bool m_dark;
};

} // namespace velmora

#pragma once

#include "session/session_record.h"
#include "settings/options/folder_session_options.h"

#include <QDialog>
#include <QList>

class QComboBox;
class QLabel;
class QMenu;
class QTabWidget;

namespace velmora {

class FolderMiscPage;
class FolderSettingsPage;
class FolderSpecPage;
struct StoredFolderSet;

/// Edits the options of one folder comparison.
///
/// Works on a copy: the caller opens the dialog with open() and takes `options()` when `accepted` comes. On accepting,
/// the options also become the stored defaults where the person has asked for it. Presets are stored at once.
class FolderSessionSettingsDialog final : public QDialog {
    Q_OBJECT
public:
    /// The tabs by their index.
    enum Tab { Spec, Compare, Handling, NameFilters, OtherFilters, Misc };

    /// `paths` are the compared folders, which are shown and not edited. `initialTab` is a `Tab`; any other number
    /// opens the first.
    explicit FolderSessionSettingsDialog(const FolderSessionOptions &options, const SessionPaths &paths = {},
                                         int initialTab = Spec, QWidget *parent = nullptr);

    /// The options as the controls show them.
    [[nodiscard]] FolderSessionOptions options() const;

public Q_SLOTS:
    void accept() override;

private:
    void addPage(FolderSettingsPage *page, const QString &title);
    [[nodiscard]] QWidget *makeFooter();
    void fillPresetMenu(QMenu &menu);
    void fillDeleteMenu(QMenu &menu);
    void applyBuiltIn(const QString &name);
    void loadPreset(const QString &name);
    void askPresetName();
    void addPreset(const QString &name);
    void deletePreset(const QString &name);
    void showOptions(const FolderSessionOptions &options);
    void showPreset();
    [[nodiscard]] StoredFolderSet currentSet() const;

    FolderSessionOptions m_options; ///< what no control shows comes from here
    QTabWidget *m_tabs;
    QComboBox *m_scope;
    QLabel *m_preset;
    QLabel *m_modified;
    FolderSpecPage *m_spec;
    QList<FolderSettingsPage *> m_pages;
};

} // namespace velmora

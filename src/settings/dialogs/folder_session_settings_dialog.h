#pragma once

#include "session/session_record.h"
#include "settings/dialogs/settings_page.h"
#include "settings/options/folder_settings_store.h"

#include <QDialog>
#include <QList>

class QLabel;
class QMenu;
class QTabWidget;

namespace velmora {

class FolderMiscPage;
class FolderSpecPage;
class SettingsFooter;

/// Edits the options of one folder comparison.
///
/// Works on a copy: the caller opens the dialog with open() and takes `options()` when `accepted` comes. On accepting,
/// the options also become the stored defaults where the person has asked for it. Presets are stored and deleted at
/// once.
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
    /// A set that has a name.
    struct NamedSet {
        QString name;
        StoredFolderSet set;
    };

    void addPages(const SessionPaths &paths);
    void addPage(FolderSettingsPage *page, const QString &title);
    [[nodiscard]] QWidget *makePresetBar();
    void readPresets();
    void fillPresetMenu(QMenu &menu);
    void applyBuiltIn(const QString &name);
    void loadSet(const StoredFolderSet &set);
    void askPresetName();
    void confirmReplacing(const QString &name);
    void addPreset(const QString &name);
    void confirmDeleting(const QString &name);
    void showPreset();
    [[nodiscard]] NamedSet matchingSet(const FolderSessionOptions &options) const;
    [[nodiscard]] StoredFolderSet currentSet() const;

    FolderSessionOptions m_options; ///< what no control shows comes from here
    NamedSet m_defaults;            ///< the stored ones; not saved at any time while there are none
    QList<NamedSet> m_presets;      ///< those that the person made
    QTabWidget *m_tabs;
    SettingsFooter *m_footer;
    QLabel *m_preset;
    QLabel *m_modified;
    FolderSpecPage *m_spec = nullptr;
    FolderMiscPage *m_misc = nullptr;
    QList<FolderSettingsPage *> m_pages;
};

} // namespace velmora

#include "settings/dialogs/folder_session_settings_dialog.h"

#include "core/settings_store.h"
#include "session/dialogs.h"
#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"
#include "settings/dialogs/folder_compare_page.h"
#include "settings/dialogs/folder_handling_page.h"
#include "settings/dialogs/folder_misc_page.h"
#include "settings/dialogs/folder_name_filters_page.h"
#include "settings/dialogs/folder_other_filters_page.h"
#include "settings/dialogs/folder_spec_page.h"
#include "settings/dialogs/settings_footer.h"
#include "settings/options/folder_presets.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace velmora {

namespace {

constexpr QSize usualSize(680, 560);
constexpr QSize windowFrame(16, 48); // about what a desktop puts around a window

/// A preset's name as an entry of a menu, where "&" would underline the next letter.
QString menuText(QString name)
{
    return name.replace(u'&', QLatin1String("&&"));
}

} // namespace

FolderSessionSettingsDialog::FolderSessionSettingsDialog(const FolderSessionOptions &options, const SessionPaths &paths,
                                                         int initialTab, QWidget *parent)
    : QDialog(parent),
      m_options(options),
      m_tabs(new QTabWidget),
      m_footer(new SettingsFooter(Velmora::tr("Only for this view"))),
      m_preset(new QLabel),
      m_modified(new QLabel)
{
    setWindowTitle(Velmora::tr("Session settings — folder compare"));
    setModal(true);
    m_tabs->setObjectName(QStringLiteral("settingsTabs"));
    readPresets();
    addPages(paths);
    m_tabs->setCurrentIndex(initialTab >= 0 && initialTab < m_tabs->count() ? initialTab : int(Spec));

    auto *whole = new QVBoxLayout(this);
    whole->setSpacing(12);
    whole->addWidget(makePresetBar());
    whole->addWidget(m_tabs, 1);
    whole->addWidget(m_footer);
    whole->addLayout(makeConfirmButtons(*this));
    resize(usualSize.expandedTo(sizeHint()).boundedTo(screen()->availableSize() - windowFrame));
    // From here the arrow keys and Ctrl+Tab go from tab to tab.
    m_tabs->setFocus();

    const NamedSet known = matchingSet(options);
    m_spec->setDescription(known.name.isEmpty() ? m_defaults.set.description : known.set.description);
    showPreset();
}

FolderSessionOptions FolderSessionSettingsDialog::options() const
{
    FolderSessionOptions options = m_options;
    for (const FolderSettingsPage *page : m_pages)
        page->store(options);
    return options;
}

void FolderSessionSettingsDialog::accept()
{
    if (m_footer->savesDefaults()) {
        SessionSettings settings;
        FolderSettingsStore(settings).setDefaults(currentSet());
    }
    m_misc->storeKeptCopies();
    QDialog::accept();
}

void FolderSessionSettingsDialog::addPages(const SessionPaths &paths)
{
    m_spec = new FolderSpecPage(paths);
    m_misc = new FolderMiscPage;
    addPage(m_spec, Velmora::tr("Spec"));
    addPage(new FolderComparePage, Velmora::tr("Compare"));
    addPage(new FolderHandlingPage, Velmora::tr("Handling"));
    addPage(new FolderNameFiltersPage, Velmora::tr("Name filters"));
    addPage(new FolderOtherFiltersPage, Velmora::tr("Other filters"));
    addPage(m_misc, Velmora::tr("Misc"));
}

void FolderSessionSettingsDialog::addPage(FolderSettingsPage *page, const QString &title)
{
    page->load(m_options);
    m_tabs->addTab(page, title);
    m_pages.append(page);
    connect(page, &SettingsPageBase::changed, this, &FolderSessionSettingsDialog::showPreset);
}

QWidget *FolderSessionSettingsDialog::makePresetBar()
{
    m_preset->setObjectName(QStringLiteral("settingsPreset"));
    m_modified->setObjectName(QStringLiteral("settingsModified"));
    m_modified->setForegroundRole(QPalette::PlaceholderText);
    // Names of presets can be long and must not widen the dialog.
    m_preset->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_preset->setTextFormat(Qt::PlainText);

    auto *menu = new QMenu(this);
    auto *apply = new QPushButton(Velmora::tr("Apply comparison preset…"));
    apply->setObjectName(QStringLiteral("applyPreset"));
    apply->setToolTip(Velmora::tr("Load a built-in folder compare preset"));
    apply->setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { fillPresetMenu(*menu); });
    auto *add = new QPushButton(Velmora::tr("Add to preset (&P)..."));
    add->setObjectName(QStringLiteral("addPreset"));
    add->setToolTip(Velmora::tr("Store the settings of all tabs under a name"));
    connect(add, &QPushButton::clicked, this, &FolderSessionSettingsDialog::askPresetName);
    for (QPushButton *button : {apply, add})
        button->setAutoDefault(false);

    auto *bar = new QWidget;
    auto *names = new QVBoxLayout;
    names->setSpacing(2);
    names->addWidget(m_preset);
    names->addWidget(m_modified);
    auto *line = new QHBoxLayout(bar);
    line->setContentsMargins(0, 0, 0, 0);
    line->addLayout(names, 1);
    line->addSpacing(12);
    line->addWidget(apply);
    line->addWidget(add);
    return bar;
}

void FolderSessionSettingsDialog::readPresets()
{
    SessionSettings settings;
    const FolderSettingsStore store(settings);
    m_defaults = {Velmora::tr("Default settings"), store.defaults()};
    m_presets.clear();
    for (const QString &name : store.presetNames())
        m_presets.append({name, store.preset(name).value_or(StoredFolderSet())});
}

void FolderSessionSettingsDialog::fillPresetMenu(QMenu &menu)
{
    menu.clear();
    for (const FolderPreset &preset : folderPresets()) {
        const QString name = QLatin1String(preset.name);
        QAction *action = menu.addAction(Velmora::tr(preset.menuText), this, [this, name] { applyBuiltIn(name); });
        action->setObjectName(name);
    }
    if (m_presets.isEmpty())
        return;
    menu.addSeparator();
    auto *removal = new QMenu(Velmora::tr("Delete preset"), &menu);
    for (const NamedSet &preset : m_presets) {
        menu.addAction(menuText(preset.name), this, [this, set = preset.set] { loadSet(set); })
            ->setObjectName(preset.name);
        removal->addAction(menuText(preset.name), this, [this, name = preset.name] { confirmDeleting(name); })
            ->setObjectName(QLatin1String("delete ") + preset.name);
    }
    menu.addSeparator();
    menu.addMenu(removal);
}

void FolderSessionSettingsDialog::applyBuiltIn(const QString &name)
{
    FolderSessionOptions changed = options();
    if (!applyFolderPreset(name, changed))
        return;
    m_pages[Compare]->load(changed);
    showPreset();
}

void FolderSessionSettingsDialog::loadSet(const StoredFolderSet &set)
{
    m_options = set.options;
    for (FolderSettingsPage *page : m_pages)
        page->load(m_options);
    m_spec->setDescription(set.description);
    showPreset();
}

void FolderSessionSettingsDialog::askPresetName()
{
    const auto own = std::find_if(m_presets.begin(), m_presets.end(),
                                  [now = options()](const NamedSet &preset) { return preset.set.options == now; });
    Dialogs::instance().askText(this, Velmora::tr("Add to preset"), Velmora::tr("Preset name:"),
                                own == m_presets.end() ? QString() : own->name, [this](const QString &text) {
                                    const QString name = text.trimmed();
                                    if (!name.isEmpty())
                                        confirmReplacing(name);
                                });
}

void FolderSessionSettingsDialog::confirmReplacing(const QString &name)
{
    const bool taken = std::any_of(m_presets.begin(), m_presets.end(),
                                   [&name](const NamedSet &preset) { return preset.name == name; });
    if (!taken) {
        addPreset(name);
        return;
    }
    Dialogs::instance().askYesNo(this, Velmora::tr("Add to preset"),
                                 Velmora::tr("There is a preset \"%1\". Replace it?").arg(name), false,
                                 [this, name](bool yes) {
                                     if (yes)
                                         addPreset(name);
                                 });
}

void FolderSessionSettingsDialog::addPreset(const QString &name)
{
    SessionSettings settings;
    FolderSettingsStore(settings).setPreset(name, currentSet());
    readPresets();
    showPreset();
}

void FolderSessionSettingsDialog::confirmDeleting(const QString &name)
{
    Dialogs::instance().askYesNo(this, Velmora::tr("Delete preset"), Velmora::tr("Delete the preset \"%1\"?").arg(name),
                                 false, [this, name](bool yes) {
                                     if (!yes)
                                         return;
                                     SessionSettings settings;
                                     FolderSettingsStore(settings).removePreset(name);
                                     readPresets();
                                     showPreset();
                                 });
}

void FolderSessionSettingsDialog::showPreset()
{
    const NamedSet known = matchingSet(options());
    m_preset->setText(presetText(known.name));
    m_preset->setToolTip(known.name);
    const QDateTime saved = known.set.savedAt;
    m_modified->setText(
        saved.isValid()
            ? Velmora::tr("Last modified: %1").arg(saved.toLocalTime().toString(QStringLiteral("yyyy/M/d h:mm:ss")))
            : QString());
    m_modified->setVisible(saved.isValid());
}

FolderSessionSettingsDialog::NamedSet
FolderSessionSettingsDialog::matchingSet(const FolderSessionOptions &options) const
{
    for (const NamedSet &preset : m_presets) {
        if (preset.set.options == options)
            return preset;
    }
    if (m_defaults.set.savedAt.isValid() && m_defaults.set.options == options)
        return m_defaults;
    for (const FolderPreset &preset : folderPresets()) {
        if (preset.method == compareMethod(options.compareBasis) &&
            preset.timeToleranceSec.value_or(options.timeToleranceSec) == options.timeToleranceSec)
            return {Velmora::tr(preset.menuText), {}};
    }
    return {};
}

StoredFolderSet FolderSessionSettingsDialog::currentSet() const
{
    return {m_spec->description(), options(), QDateTime::currentDateTimeUtc()};
}

} // namespace velmora

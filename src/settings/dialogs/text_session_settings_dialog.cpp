#include "settings/dialogs/text_session_settings_dialog.h"

#include "session/translate.h"
#include "settings/dialogs/alignment_page.h"
#include "settings/dialogs/confirm_buttons.h"
#include "settings/dialogs/format_page.h"
#include "settings/dialogs/importance_page.h"
#include "settings/dialogs/replacements_page.h"
#include "settings/dialogs/specs_page.h"
#include "settings/options/text_defaults.h"
#include "settings/options/text_presets.h"

#include <QComboBox>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

namespace velmora {

namespace {

enum Scope { ThisViewOnly, Defaults };

constexpr QSize usualSize(660, 540);

} // namespace

TextSessionSettingsDialog::TextSessionSettingsDialog(const TextSessionOptions &options, int initialTab, QWidget *parent)
    : QDialog(parent), m_options(options), m_tabs(new QTabWidget), m_scope(new QComboBox), m_preset(new QLabel)
{
    setWindowTitle(Velmora::tr("Session Settings - Text Compare"));
    setModal(true);
    m_tabs->setObjectName(QStringLiteral("settingsTabs"));

    auto *importance = new ImportancePage;
    addPage(new SpecsPage, Velmora::tr("Specs"));
    addPage(new FormatPage, Velmora::tr("Format"));
    addPage(importance, Velmora::tr("Importance"));
    addPage(new AlignmentPage, Velmora::tr("Alignment"));
    addPage(new ReplacementsPage, Velmora::tr("Replacements"));
    connect(importance, &ImportancePage::presetChosen, this, &TextSessionSettingsDialog::applyPreset);
    m_tabs->setCurrentIndex(initialTab >= 0 && initialTab < m_tabs->count() ? initialTab : int(Specs));

    auto *whole = new QVBoxLayout(this);
    whole->setSpacing(12);
    whole->addWidget(m_tabs, 1);
    whole->addWidget(makeFooter());
    whole->addLayout(makeConfirmButtons(*this));
    resize(usualSize.expandedTo(sizeHint()));
    showPreset();
}

TextSessionOptions TextSessionSettingsDialog::options() const
{
    TextSessionOptions options = m_options;
    for (const SettingsPage *page : m_pages)
        page->store(options);
    deriveLegacySwitches(options);
    return options;
}

void TextSessionSettingsDialog::accept()
{
    if (m_scope->currentIndex() == Defaults)
        saveDefaultTextOptions(options());
    QDialog::accept();
}

void TextSessionSettingsDialog::addPage(SettingsPage *page, const QString &title)
{
    page->load(m_options);
    m_tabs->addTab(page, title);
    m_pages.append(page);
    connect(page, &SettingsPage::changed, this, &TextSessionSettingsDialog::showPreset);
}

QWidget *TextSessionSettingsDialog::makeFooter()
{
    m_scope->setObjectName(QStringLiteral("settingsScope"));
    m_scope->addItems({Velmora::tr("Use for this view only"), Velmora::tr("Save as default settings")});
    m_preset->setObjectName(QStringLiteral("settingsPreset"));
    auto *label = new QLabel(Velmora::tr("&Where these settings apply"));
    label->setBuddy(m_scope);

    auto *footer = new QWidget;
    auto *line = new QHBoxLayout(footer);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(label);
    line->addWidget(m_scope);
    line->addStretch(1);
    line->addSpacing(16);
    line->addWidget(m_preset);
    return footer;
}

void TextSessionSettingsDialog::applyPreset(const QString &name)
{
    TextSessionOptions changed = options();
    if (!applyTextPreset(name, changed))
        return;
    for (SettingsPage *page : {m_pages[Importance], m_pages[Alignment]})
        page->load(changed);
    showPreset();
}

void TextSessionSettingsDialog::showPreset()
{
    const TextPreset *preset = matchingTextPreset(options());
    const QString name = preset ? Velmora::tr(preset->menuText) : Velmora::tr("Custom");
    m_preset->setText(Velmora::tr("Preset: %1").arg(name));
}

} // namespace velmora

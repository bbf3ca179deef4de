#include "settings/dialogs/text_session_settings_dialog.h"

#include "session/translate.h"
#include "settings/dialogs/alignment_page.h"
#include "settings/dialogs/confirm_buttons.h"
#include "settings/dialogs/format_page.h"
#include "settings/dialogs/importance_page.h"
#include "settings/dialogs/replacements_page.h"
#include "settings/dialogs/settings_footer.h"
#include "settings/dialogs/specs_page.h"
#include "settings/options/text_defaults.h"
#include "settings/options/text_presets.h"

#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr QSize usualSize(660, 540);
constexpr QSize windowFrame(16, 48); // about what a desktop puts around a window

/// Lets a page be scrolled where the screen is too small for it; takes its whole size where there is room.
class PageScroller final : public QScrollArea {
public:
    explicit PageScroller(QWidget *page)
    {
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setWidget(page);
        // The tab behind it has a colour of its own.
        viewport()->setAutoFillBackground(false);
        page->setAutoFillBackground(false);
    }

    [[nodiscard]] QSize sizeHint() const override { return widget()->sizeHint(); }
};

} // namespace

TextSessionSettingsDialog::TextSessionSettingsDialog(const TextSessionOptions &options, int initialTab, QWidget *parent)
    : QDialog(parent),
      m_options(options),
      m_tabs(new QTabWidget),
      m_format(new FormatPage),
      m_footer(new SettingsFooter(Velmora::tr("Use for this view only")))
{
    setWindowTitle(Velmora::tr("Session Settings - Text Compare"));
    setModal(true);
    m_tabs->setObjectName(QStringLiteral("settingsTabs"));

    auto *importance = new ImportancePage;
    addPage(new SpecsPage, Velmora::tr("Specs"));
    addPage(m_format, Velmora::tr("Format"));
    addPage(importance, Velmora::tr("Importance"));
    addPage(new AlignmentPage, Velmora::tr("Alignment"));
    addPage(new ReplacementsPage, Velmora::tr("Replacements"));
    connect(importance, &ImportancePage::presetChosen, this, &TextSessionSettingsDialog::applyPreset);
    m_tabs->setCurrentIndex(initialTab >= 0 && initialTab < m_tabs->count() ? initialTab : int(Specs));

    auto *whole = new QVBoxLayout(this);
    whole->setSpacing(12);
    whole->addWidget(m_tabs, 1);
    whole->addWidget(m_footer);
    whole->addLayout(makeConfirmButtons(*this));
    resize(usualSize.expandedTo(sizeHint()).boundedTo(screen()->availableSize() - windowFrame));
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

void TextSessionSettingsDialog::setOwnLineEnds(const QString &left, const QString &right)
{
    m_format->setOwnLineEnds(left, right);
}

void TextSessionSettingsDialog::accept()
{
    if (m_footer->savesDefaults())
        saveDefaultTextOptions(options());
    QDialog::accept();
}

void TextSessionSettingsDialog::addPage(SettingsPage *page, const QString &title)
{
    page->load(m_options);
    m_tabs->addTab(new PageScroller(page), title);
    m_pages.append(page);
    connect(page, &SettingsPage::changed, this, &TextSessionSettingsDialog::showPreset);
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
    m_footer->showPreset(preset ? Velmora::tr(preset->menuText) : QString());
}

} // namespace velmora

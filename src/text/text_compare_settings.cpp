#include "session/translate.h"
#include "settings/dialogs/text_session_settings_dialog.h"
#include "settings/options/text_presets.h"
#include "text/editing/text_editing.h"
#include "text/text_compare_bar.h"
#include "text/text_compare_widget.h"
#include "text/text_inputs.h"
#include "text/view/diff_view.h"

#include <QMenu>
#include <QToolButton>

namespace velmora {

namespace {

QString rightEncodingOf(const TextSessionOptions &options)
{
    return options.sameAsLeftFileFormat ? options.leftEncoding : options.rightEncoding;
}

} // namespace

void TextCompareWidget::onSessionSettings(int initialTabIndex)
{
    TextSessionOptions shown = m_options;
    shown.leftPath = paths().left;
    shown.rightPath = paths().right;
    auto *dialog = new TextSessionSettingsDialog(shown, initialTabIndex, this);
    dialog->setOwnLineEnds(ownLineEnds(Side::Left), ownLineEnds(Side::Right));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { takeSettings(dialog->options()); });
    dialog->open();
}

QString TextCompareWidget::ownLineEnds(Side side) const
{
    const LoadedText &loaded = m_inputs->at(side).loaded();
    const bool isShown = m_compared.document && !loaded.missing;
    return isShown ? lineEndStyleName(loaded.text.lineEnds) : QString();
}

void TextCompareWidget::addPresets()
{
    auto *menu = new QMenu(this);
    menu->setToolTipsVisible(true);
    for (const TextPreset &preset : textPresets()) {
        QAction *action = menu->addAction(Velmora::tr(preset.menuText));
        action->setToolTip(Velmora::tr("Apply built-in text comparison rules"));
        action->setCheckable(true);
        connect(menu, &QMenu::aboutToShow, action,
                [this, action, &preset] { action->setChecked(matchingTextPreset(m_options) == &preset); });
        connect(action, &QAction::triggered, this, [this, &preset] {
            TextSessionOptions chosen = m_options;
            chosen.leftPath = paths().left;
            chosen.rightPath = paths().right;
            if (applyTextPreset(QLatin1String(preset.name), chosen))
                takeSettings(chosen);
        });
    }
    m_bar->offerBeside(m_bar->settings, menu);
}

void TextCompareWidget::addReportForms()
{
    auto *menu = new QMenu(this);
    menu->addAction(Velmora::tr("All lines"), this, &TextCompareWidget::onExportHtml);
    menu->addAction(Velmora::tr("All lines, with marks and links"), this,
                    [this] { exportReport(markedReportForm({})); });
    menu->addAction(Velmora::tr("Differing parts, with marks and links"), this,
                    [this] { exportReport(markedReportForm(m_view->scene().layout().context())); });
    m_bar->offerBeside(m_bar->exportReport, menu);
}

void TextCompareWidget::takeSettings(const TextSessionOptions &chosen)
{
    // Only another encoding makes a side's file be read again, and so loses edits.
    const bool left = chosen.leftEncoding != m_options.leftEncoding;
    const bool right = rightEncodingOf(chosen) != rightEncodingOf(m_options);
    m_editing->confirmReload(left, right, [this, chosen] {
        m_options = chosen;
        setPaths({chosen.leftPath, chosen.rightPath, {}});
        m_inputs->apply(m_options);
        if (m_compared.document || m_runner.isRunning())
            start();
    });
}

} // namespace velmora

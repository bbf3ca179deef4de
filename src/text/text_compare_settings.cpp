#include "settings/dialogs/text_session_settings_dialog.h"
#include "text/text_compare_widget.h"
#include "text/text_editing.h"
#include "text/text_inputs.h"

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
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { takeSettings(dialog->options()); });
    dialog->open();
}

void TextCompareWidget::takeSettings(const TextSessionOptions &chosen)
{
    // Only another encoding makes a side's file be read again, and so loses edits.
    const bool left = chosen.leftEncoding != m_options.leftEncoding;
    const bool right = rightEncodingOf(chosen) != rightEncodingOf(m_options);
    m_editing->confirmReload(left, right, [this, chosen, left, right] {
        if (left)
            m_editing->discard(Side::Left);
        if (right)
            m_editing->discard(Side::Right);
        m_options = chosen;
        setPaths({chosen.leftPath, chosen.rightPath, {}});
        m_inputs->apply(m_options);
        if (m_compared.document || m_runner.isRunning())
            start();
    });
}

} // namespace velmora

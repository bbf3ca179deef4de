#include "session/document/recovery_keeper.h"
#include "session/translate.h"
#include "text/editing/text_editing.h"
#include "text/text_compare_widget.h"
#include "text/text_inputs.h"
#include "text/view/diff_view.h"

#include <utility>

namespace velmora {

void TextCompareWidget::connectRecovery()
{
    m_keeper->setSource([this] { return unsavedTexts(); });
    connect(&m_editing->editor(), &PaneEditor::stateChanged, m_keeper,
            [this] { m_keeper->takeChange(m_editing->isModified(Side::Left) || m_editing->isModified(Side::Right)); });
    connect(m_keeper, &RecoveryKeeper::failed, this, [this](const QString &why) {
        showMessage(Velmora::tr("Unsaved changes cannot be kept for a restart: %1").arg(why));
    });
}

void TextCompareWidget::keepRecovered()
{
    const std::function<void()> kept = std::exchange(m_recovered, {});
    if (unsavedTexts().texts.empty())
        kept(); // their files hold them already
    else
        m_keeper->keepNow(kept);
}

UnsavedTexts TextCompareWidget::unsavedTexts() const
{
    return {kind(), paths(), options(), m_editing->texts().unsaved()};
}

void TextCompareWidget::recover(const RecoveryRecord &record, std::function<void()> kept)
{
    const std::optional<UnsavedTexts> texts = fromRecoveryRecord(record);
    if (!texts || texts->kind != kind())
        return;
    SessionPaths sides = texts->paths;
    for (const UnsavedText &text : texts->texts)
        (text.pane == Side::Left ? sides.left : sides.right) = text.path;
    setOptions(texts->options);
    setPaths(sides);
    for (const UnsavedText &text : texts->texts) {
        if (!text.isEdited || !isInItsFile(text))
            m_editing->texts().restore(text);
    }
    m_recovered = std::move(kept);
    setEditingEnabled(true);
    m_view->setFocus();
    startComparison(ChangedFile::KeepLoaded);
}

} // namespace velmora

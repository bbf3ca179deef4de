#include "session/translate.h"
#include "text/editing/recovery_keeper.h"
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
    if (unsavedTexts().sides.empty())
        kept(); // their files hold them already
    else
        m_keeper->keepNow(kept);
}

UnsavedTexts TextCompareWidget::unsavedTexts() const
{
    UnsavedTexts texts{paths(), options(), {}};
    for (const Side side : {Side::Left, Side::Right}) {
        const TextSide &input = m_inputs->at(side);
        const EditBuffer &buffer = m_editing->editor().buffer(side);
        if (buffer.isModified() || input.loadedPath() == TextSide::clipboardPath())
            texts.sides.push_back({side, input.loadedPath(), input.loaded(), buffer.isModified(), buffer.snapshot()});
    }
    return texts;
}

void TextCompareWidget::recover(const RecoveryRecord &record, std::function<void()> kept)
{
    const std::optional<UnsavedTexts> texts = fromRecoveryRecord(record);
    if (!texts)
        return;
    SessionPaths sides = texts->paths;
    for (const UnsavedText &text : texts->sides)
        (text.side == Side::Left ? sides.left : sides.right) = text.path;
    setOptions(texts->options);
    setPaths(sides);
    for (const UnsavedText &text : texts->sides) {
        if (!text.isEdited || !isInItsFile(text))
            m_editing->restore(text);
    }
    m_recovered = std::move(kept);
    setEditingEnabled(true);
    m_view->setFocus();
    startComparison(ChangedFile::KeepLoaded);
}

} // namespace velmora

#include "session/document/edited_text.h"

#include "session/document/text_input.h"

#include <QtGlobal>

#include <algorithm>

namespace velmora {

const EditedText &textIn(PaneIndex pane, const std::vector<EditedText> &texts)
{
    const auto found =
        std::find_if(texts.begin(), texts.end(), [pane](const EditedText &text) { return text.pane == pane; });
    Q_ASSERT(found != texts.end());
    return *found;
}

QString describeLoss(const EditedText &text)
{
    switch (lossOfSaving(text.input->loaded())) {
    case TextLoss::NoText:
        return text.words.noText;
    case TextLoss::Undecodable:
        return text.words.undecodable;
    case TextLoss::None:
        break;
    }
    return {};
}

} // namespace velmora

#include "text/editing/external_change.h"

#include "session/dialogs.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QWidget>

namespace velmora {

void askAboutExternalChange(QWidget *parent, const ExternalChange &change,
                            std::function<void(ExternalChangeAnswer)> answered)
{
    QString text = Velmora::tr("Files on disk were modified externally:\n");
    if (!change.leftPath.isEmpty())
        text += Velmora::tr("  · Left: %1\n").arg(shownPath(change.leftPath));
    if (!change.rightPath.isEmpty())
        text += Velmora::tr("  · Right: %1\n").arg(shownPath(change.rightPath));
    text += Velmora::tr("\nReload from disk before comparing?");
    if (change.unsavedEdits) {
        text +=
            Velmora::tr("\nThe editor has unsaved changes; re-comparing without reloading may discard disk changes.");
    }
    const auto choice = [](const QString &name, ExternalChangeAnswer answer) {
        return Dialogs::Choice{name, int(answer), answer == ExternalChangeAnswer::Reload,
                               answer == ExternalChangeAnswer::Cancel};
    };
    Dialogs::instance().ask(parent, Dialogs::Tone::Warning, Velmora::tr("External file changed"), text,
                            {choice(Velmora::tr("&Reload"), ExternalChangeAnswer::Reload),
                             choice(Velmora::tr("Compare &without reloading"), ExternalChangeAnswer::KeepLoaded),
                             choice(Velmora::tr("Cancel"), ExternalChangeAnswer::Cancel)},
                            [answered = std::move(answered)](int answer) { answered(ExternalChangeAnswer(answer)); });
}

} // namespace velmora

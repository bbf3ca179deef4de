#include "filetypes/mp3/mp3_compare_widget.h"
#include "filetypes/mp3/mp3_words.h"
#include "session/dialogs.h"
#include "session/translate.h"

namespace velmora {

void Mp3CompareWidget::onSave()
{
    QList<Side> sides;
    for (const Side side : bothSides) {
        if (m_edits.isModified(side))
            sides.append(side);
    }
    save(sides, Loss::Refused, [](bool) {});
}

void Mp3CompareWidget::save(const QList<Side> &sides, Loss loss, Saved then)
{
    if (sides.isEmpty()) {
        then(true);
        return;
    }
    const Side side = sides.first();
    const QString path = m_files[side];
    run(
        [path, loss, song = m_edits.read(side), tags = m_edits.tags(side)](const CancelFlag &cancel,
                                                                           Progress &progress) {
            progress.report(0, 0, 0, path);
            return saveTags(path, song, tags, loss, cancel);
        },
        [this, sides, then = std::move(then)](TagSave &&save) { takeSave(sides, std::move(save), then); });
    showState();
}

void Mp3CompareWidget::takeSave(const QList<Side> &sides, TagSave &&save, Saved then)
{
    const Side side = sides.first();
    if (save.fault == TagSaveFault::WouldLose) {
        Dialogs::instance().askYesNo(this, Velmora::tr("Save tags"), lossText(save, m_files[side]), false,
                                     [this, sides, then](bool yes) {
                                         if (yes) {
                                             this->save(sides, Loss::Accepted, then);
                                         } else {
                                             status().showMessage(Velmora::tr("Not saved; the file is as it was"));
                                             then(false);
                                         }
                                     });
        showState();
        return;
    }
    if (!save.ok()) {
        status().showFailure(saveFaultText(save, m_files[side]), save.detail);
        showState();
        then(false);
        return;
    }
    m_edits.takeSaved(side, save.song);
    showSongs(false);
    status().showMessage(Velmora::tr("Saved; the sound is the same as before"));
    this->save(sides.mid(1), Loss::Refused, std::move(then));
}

void Mp3CompareWidget::confirmClose(std::function<void(bool mayClose)> answered)
{
    if (!hasUnsavedChanges()) {
        answered(true);
        return;
    }
    enum Answer { Cancel, Save, Discard };
    const auto act = [this, answered = std::move(answered)](int answer) {
        if (answer != Save) {
            answered(answer == Discard);
            return;
        }
        QList<Side> sides;
        for (const Side side : bothSides) {
            if (m_edits.isModified(side))
                sides.append(side);
        }
        save(sides, Loss::Refused, answered);
    };
    Dialogs::instance().ask(this, Dialogs::Tone::Warning, Velmora::tr("Unsaved changes"),
                            Velmora::tr("Tags were changed and are not saved. Save them?"),
                            {{Velmora::tr("&Save"), Save, true, false},
                             {Velmora::tr("&Discard"), Discard, false, false},
                             {Velmora::tr("Cancel"), Cancel, false, true}},
                            act);
}

} // namespace velmora

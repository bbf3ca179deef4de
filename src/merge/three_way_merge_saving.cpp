#include "core/visible_name.h"
#include "merge/merge_editing.h"
#include "merge/merge_heads.h"
#include "merge/three_way_merge_widget.h"
#include "session/dialogs.h"
#include "session/document/change_watcher.h"
#include "session/frame/progress_strip.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QFileInfo>

#include <utility>

namespace velmora {

namespace {

QString openConflictsText(qsizetype open)
{
    return open == 1 ? Velmora::tr("One conflict is still open: the result has nothing in its place.")
                     : Velmora::tr("%1 conflicts are still open: the result has nothing in their places.").arg(open);
}

} // namespace

bool ThreeWayMergeWidget::hasUnsavedChanges() const
{
    return m_texts->hasUnsavedChanges() || m_markedSaver.isRunning();
}

void ThreeWayMergeWidget::onSave()
{
    save([](bool) {});
}

void ThreeWayMergeWidget::onSaveAs()
{
    const Done nothing = [](bool) {};
    whenSaved([this, nothing] {
        askAboutOpen([this, nothing] { askWhereToWriteMarked(nothing); },
                     [this] { m_texts->saving().saveAs(paneOfResult); }, nothing);
    });
}

void ThreeWayMergeWidget::onSaveMarked()
{
    writeMarked([](bool) {});
}

void ThreeWayMergeWidget::save(const Done &done)
{
    whenSaved(
        [this, done] { askAboutOpen([this, done] { writeMarked(done); }, [this, done] { saveWithout(done); }, done); });
}

void ThreeWayMergeWidget::whenSaved(std::function<void()> go)
{
    if (m_markedSaver.isRunning())
        m_afterMarked.push_back(std::move(go));
    else
        m_texts->saving().whenSaved(std::move(go));
}

void ThreeWayMergeWidget::askAboutOpen(std::function<void()> saveMarked, std::function<void()> saveAsItIs,
                                       const Done &refused)
{
    const qsizetype open = m_editing->parts().openConflicts();
    if (!m_view->document() || open == 0) {
        saveAsItIs();
        return;
    }
    enum Answer { Cancel, Marked, Without };
    Dialogs::instance().ask(
        this, Dialogs::Tone::Warning, Velmora::tr("Open conflicts"),
        openConflictsText(open) + QStringLiteral("\n\n") + Velmora::tr("Save the result all the same?"),
        {{Velmora::tr("Save with &markers"), Marked, false, false},
         {Velmora::tr("Save &without"), Without, false, false},
         {Velmora::tr("Cancel"), Cancel, true, true}},
        [saveMarked = std::move(saveMarked), saveAsItIs = std::move(saveAsItIs), refused](int answer) {
            if (answer == Marked)
                saveMarked();
            else if (answer == Without)
                saveAsItIs();
            else
                refused(false);
        });
}

void ThreeWayMergeWidget::takeSaved(bool isWhole)
{
    const QString file = m_heads->result().loadedPath();
    if (isWhole)
        m_savedWhole = file;
    else if (m_savedWhole == file)
        m_savedWhole.clear();
}

void ThreeWayMergeWidget::saveWithout(Done done)
{
    // What was merged without a question is in no file yet.
    if (m_view->document() && m_savedWhole.isEmpty())
        m_texts->editor().markUnsaved(paneOfResult);
    const bool isWhole = m_editing->parts().openConflicts() == 0;
    m_texts->saving().save(paneOfResult, [this, isWhole, done = std::move(done)](bool saved) {
        if (saved)
            takeSaved(isWhole);
        done(saved);
    });
}

// Markers -------------------------------------------------------------------------------------------------------------

MarkerLabels ThreeWayMergeWidget::labels() const
{
    const auto named = [](const QByteArray &label, const QString &path) {
        return label.isEmpty() ? visibleName(QFileInfo(path).fileName()).toUtf8() : label;
    };
    return {named(m_labels.left, m_merged.left), named(m_labels.base, m_merged.base),
            named(m_labels.right, m_merged.right)};
}

void ThreeWayMergeWidget::writeMarked(Done done)
{
    whenSaved([this, done = std::move(done)] {
        if (!m_view->document()) {
            done(false);
        } else if (!m_output.isEmpty()) {
            writeMarkedTo(m_output, TextSaveRequest::Target::AsRead, done);
        } else {
            askWhereToWriteMarked(done);
        }
    });
}

void ThreeWayMergeWidget::askWhereToWriteMarked(const Done &done)
{
    const QString start = m_output.isEmpty() ? m_merged.left : m_output;
    Dialogs::instance().saveFile(
        this, Velmora::tr("Save the result"), start, QString(), [this, done](const QString &path) {
            const bool isSame = path == m_heads->result().loadedPath();
            writeMarkedTo(path, isSame ? TextSaveRequest::Target::Changed : TextSaveRequest::Target::Other, done);
        });
}

void ThreeWayMergeWidget::writeMarkedTo(const QString &path, TextSaveRequest::Target target, Done done)
{
    const EditSnapshot &result = *m_texts->editor().buffer(paneOfResult).snapshot();
    const TextLines marked =
        withConflictMarkers(m_view->document()->merged(), m_editing->parts().all(), result, labels());
    const LoadedText &loaded = m_heads->result().loaded();
    TextSaveRequest request{EditBuffer(marked).snapshot(), loaded.text.encoding, path, target, loaded.stamp};
    m_texts->editor().beginSave(paneOfResult);
    m_progress->showBusy();
    m_markedSaver.start(
        [request = std::move(request)](const CancelFlag &, Progress &progress) { return saveText(request, progress); },
        [this, path, done = std::move(done)](RunOutcome<TextSaveResult> &&outcome) {
            takeMarked(path, std::move(outcome), done);
            for (const auto &go : std::exchange(m_afterMarked, {}))
                whenSaved(go);
        });
}

void ThreeWayMergeWidget::takeMarked(const QString &path, RunOutcome<TextSaveResult> &&outcome, const Done &done)
{
    using End = TextSaveResult::End;
    m_progress->clear();
    const End end = outcome.value ? outcome.value->end : End::NotWritten;
    m_texts->editor().endSave(paneOfResult, end == End::Saved);
    const QString shown = shownPath(path);
    if (end == End::Saved) {
        m_output = path;
        LoadedText loaded = m_heads->result().loaded();
        loaded.text.lines = outcome.value->written;
        loaded.missing = false;
        loaded.stamp = outcome.value->stamp;
        m_heads->result().setPath(path);
        m_heads->result().setLoaded(loaded, path);
        takeSaved(false);
        m_heads->showResult(path);
        m_watcher->follow();
        showTitle();
        showMessage(Velmora::tr("Saved with conflict markers: %1").arg(shown));
        done(true);
        return;
    }
    if (end == End::ChangedMeanwhile) {
        Dialogs::instance().askYesNo(
            this, Velmora::tr("External file changed"),
            Velmora::tr("Another program has changed this file since it was read:\n%1\n\nWrite over it?").arg(shown),
            false, [this, path, done](bool yes) {
                if (yes)
                    writeMarkedTo(path, TextSaveRequest::Target::Changed, done);
                else
                    done(false);
            });
        return;
    }
    const QString message = end == End::NotWritten
                                ? Velmora::tr("Cannot write file: %1").arg(shown)
                                : Velmora::tr("The encoding of this file cannot hold the result: %1").arg(shown);
    showMessage(message);
    Dialogs::instance().tell(this, Dialogs::Tone::Warning, Velmora::tr("Save failed"), message,
                             [done] { done(false); });
}

// Closing -------------------------------------------------------------------------------------------------------------

void ThreeWayMergeWidget::confirmClose(std::function<void(bool)> answered)
{
    whenSaved([this, answered = std::move(answered)] {
        if (!m_texts->isModified(paneOfResult) || m_editing->parts().openConflicts() == 0) {
            const bool isWhole = m_editing->parts().openConflicts() == 0;
            const bool wasModified = m_texts->isModified(paneOfResult);
            m_texts->saving().confirmClose([this, isWhole, wasModified, answered](bool mayClose) {
                if (mayClose && wasModified && !m_texts->isModified(paneOfResult))
                    takeSaved(isWhole);
                answered(mayClose);
            });
            return;
        }
        enum Answer { Cancel, Marked, Discard };
        Dialogs::instance().ask(this, Dialogs::Tone::Warning, Velmora::tr("Open conflicts"),
                                openConflictsText(m_editing->parts().openConflicts()) + QStringLiteral("\n\n") +
                                    Velmora::tr("Keep what was decided so far in a file with conflict markers?"),
                                {{Velmora::tr("Save with &markers"), Marked, true, false},
                                 {Velmora::tr("&Discard"), Discard, false, false},
                                 {Velmora::tr("Cancel"), Cancel, false, true}},
                                [this, answered](int answer) {
                                    if (answer == Marked)
                                        writeMarked(answered);
                                    else
                                        answered(answer == Discard);
                                });
    });
}

} // namespace velmora

#include "session/dialogs.h"
#include "session/document/change_watcher.h"
#include "session/document/conflict_notice.h"
#include "session/document/edited_texts.h"
#include "session/document/recovery_keeper.h"
#include "session/document/text_input.h"
#include "session/document/text_recovery.h"
#include "session/fault_text.h"
#include "session/frame/progress_strip.h"
#include "session/pane/pane_options.h"
#include "session/pane/pane_view.h"
#include "session/session_host.h"
#include "session/shown_path.h"
#include "session/translate.h"
#include "text/edit/recent_texts.h"
#include "text/edit/text_edit_place.h"
#include "text/edit/text_edit_widget.h"
#include "text/edit/text_edit_wishes.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QLocale>

#include <utility>

namespace velmora {

namespace {

constexpr int onlyPane = 0;

} // namespace

// Opening -------------------------------------------------------------------------------------------------------------

void TextEditWidget::connectInput()
{
    connect(&m_input->pathEdit(), &PathEdit::browseRequested, this, &TextEditWidget::onOpen);
    connect(&m_input->pathEdit(), &PathEdit::submitted, this, &TextEditWidget::start);
    connect(m_input, &TextInput::encodingChosen, this, &TextEditWidget::chooseEncoding);
}

void TextEditWidget::onNew()
{
    host().openSession(kind(), {});
}

void TextEditWidget::onOpen()
{
    Dialogs::instance().openFile(this, Velmora::tr("Open text file"), m_input->path(), {},
                                 [this](const QString &path) { openFile(path); });
}

void TextEditWidget::openFile(const QString &path)
{
    if (!isPristine()) {
        host().openSession(kind(), {path, {}, {}});
        return;
    }
    m_input->setPath(path);
    start();
}

void TextEditWidget::dropPaths(const QStringList &paths, QPoint /*position*/)
{
    for (const QString &path : paths) {
        if (QFileInfo(path).isDir())
            showMessage(Velmora::tr("A folder is no text: %1").arg(shownPath(path)));
        else
            openFile(path);
    }
}

void TextEditWidget::start()
{
    const auto otherFile = [this] {
        return m_input->path() == m_input->loadedPath() ? QList<PaneIndex>() : QList<PaneIndex>{onlyPane};
    };
    const auto question = [](const QList<PaneIndex> &) {
        return Velmora::tr("The text has unsaved changes. Discard them and open another file?");
    };
    m_texts->confirmDiscard(otherFile, Velmora::tr("Unsaved changes"), question, [this] { load(ChangedFile::Reload); });
}

void TextEditWidget::onReload()
{
    if (m_input->loadedPath().isEmpty())
        return;
    m_texts->confirmDiscard(
        [] { return QList<PaneIndex>{onlyPane}; }, Velmora::tr("Reload"),
        [](const QList<PaneIndex> &) { return Velmora::tr("The text has unsaved changes. Reload from disk?"); },
        [this] {
            m_input->setPath(m_input->loadedPath());
            load(ChangedFile::Reload);
        });
}

void TextEditWidget::chooseEncoding()
{
    const QString name = m_input->encoding().name();
    m_wishes->showEncoding(); // until it is known that no edits are in the way
    m_texts->confirmDiscard(
        [] { return QList<PaneIndex>{onlyPane}; }, Velmora::tr("Reload"),
        [](const QList<PaneIndex> &) { return Velmora::tr("The text has unsaved changes. Reload from disk?"); },
        [this, name] {
            m_wishes->setEncoding(name);
            if (!m_input->loadedPath().isEmpty())
                load(ChangedFile::Reload);
        });
}

void TextEditWidget::load(ChangedFile changed)
{
    const QString path = m_input->path();
    if (QFileInfo(path).isDir()) {
        showMessage(Velmora::tr("A folder is no text: %1").arg(shownPath(path)));
        return;
    }
    if (m_input->isFileAtLeast(TextInput::sizeLimit)) {
        showMessage(Velmora::tr("File too large (limit %1 MB).").arg(TextInput::limitInMegabytes));
        return;
    }
    if (!path.isEmpty())
        showMessage(Velmora::tr("Reading %1...").arg(shownPath(path)));
    m_progress->showBusy();
    m_texts->editor().setObstacle(onlyPane, Velmora::tr("The file is still being read"));
    m_runner.start(
        [origin = m_texts->origin(onlyPane, changed), tabs = m_viewOptions->tabWidth()](
            const CancelFlag &cancel, Progress &progress) { return readText(origin, tabs, cancel, progress); },
        [this, path](RunOutcome<TextEditResult> &&outcome) { takeOutcome(std::move(outcome), path); });
}

void TextEditWidget::takeOutcome(RunOutcome<TextEditResult> &&outcome, const QString &path)
{
    m_texts->editor().setObstacle(onlyPane, describeLoss(m_texts->at(onlyPane)));
    if (!outcome.value) {
        showMessage(faultText(outcome.fault, Velmora::tr("Not enough memory to open this file")));
        return;
    }
    if (!outcome.value->loaded || !outcome.value->document) {
        showMessage(Velmora::tr("Cannot open file: %1").arg(shownPath(path)));
        return;
    }
    const LoadedText &loaded = *outcome.value->loaded;
    if (qobject_cast<QLineEdit *>(focusWidget()))
        m_view->setFocus();
    showText(loaded, path, outcome.value->document);
    if (loaded.missing && !path.isEmpty()) {
        showMessage(Velmora::tr("This file is not there yet; saving makes it: %1").arg(shownPath(path)));
    } else if (!path.isEmpty()) {
        RecentTexts::add(path);
        const QString obstacle = m_texts->editor().obstacle(onlyPane);
        showMessage(obstacle.isEmpty()
                        ? Velmora::tr("Lines read: %1").arg(QLocale().toString(loaded.text.lines.count()))
                        : obstacle);
        remember();
    }
    if (m_recovered)
        keepRecovered();
}

void TextEditWidget::showText(const LoadedText &loaded, const QString &path,
                              std::shared_ptr<const PlainDocument> document)
{
    const bool isSameFile = path == m_input->loadedPath() && m_view->scene().document();
    LoadedText taken = loaded;
    if (taken.missing && taken.text.encoding.isAutomatic())
        taken.text.encoding = TextEncoding::fromName(QStringLiteral("UTF-8"));
    m_input->setLoaded(taken, path);
    PaneEditor &editor = m_texts->editor();
    editor.setTexts({m_texts->unlessShown(onlyPane, loaded)}, patchPlainDocument);
    editor.setObstacle(onlyPane, describeLoss(m_texts->at(onlyPane)));
    if (isSameFile)
        m_view->scene().replaceDocument(std::move(document));
    else
        m_view->scene().setDocument(std::move(document));
    showLoaded();
    m_changes->follow();
    m_conflicts->offer(loaded.hasConflictMarkers ? path : QString());
}

void TextEditWidget::showLoaded()
{
    m_wishes->apply();
    m_place->show();
}

// Saving --------------------------------------------------------------------------------------------------------------

bool TextEditWidget::isWriteProtected() const
{
    const QFileInfo file(m_input->loadedPath());
    constexpr QFile::Permissions anyWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return file.isFile() && (!file.isWritable() || !(file.permissions() & anyWrite));
}

void TextEditWidget::onSave()
{
    if (!isWriteProtected() || !m_texts->saving().needsSaving(onlyPane)) {
        m_texts->saving().save(onlyPane);
        return;
    }
    enum Answer { Cancel, OtherName, Replace };
    Dialogs::instance().ask(this, Dialogs::Tone::Warning, Velmora::tr("Read-only file"),
                            Velmora::tr("This file is read-only:\n%1\n\nSave the text under another name?")
                                .arg(shownPath(m_input->loadedPath())),
                            {{Velmora::tr("Save &as..."), OtherName, true, false},
                             {Velmora::tr("&Replace the file"), Replace, false, false},
                             {Velmora::tr("Cancel"), Cancel, false, true}},
                            [this](int answer) {
                                if (answer == OtherName)
                                    m_texts->saving().saveAs(onlyPane);
                                else if (answer == Replace)
                                    m_texts->saving().save(onlyPane);
                            });
}

void TextEditWidget::onSaveAs()
{
    m_texts->saving().saveAs(onlyPane);
}

void TextEditWidget::takeSaved()
{
    m_wishes->takeSaved();
    RecentTexts::add(m_input->loadedPath());
    showLoaded();
    // Later: the save has not quite ended, and the tab's title still says so.
    QMetaObject::invokeMethod(this, &TextEditWidget::remember, Qt::QueuedConnection);
}

void TextEditWidget::remember()
{
    // The history takes the name from the tab, where unsaved changes leave their mark.
    if (!m_texts->isModified(onlyPane))
        Q_EMIT comparisonFinished(m_input->loadedPath(), {});
}

// After a crash -------------------------------------------------------------------------------------------------------

UnsavedTexts TextEditWidget::unsavedTexts() const
{
    return {kind(), {m_input->loadedPath(), {}, {}}, options(), m_texts->unsaved()};
}

void TextEditWidget::keepRecovered()
{
    const std::function<void()> kept = std::exchange(m_recovered, {});
    if (unsavedTexts().texts.empty())
        kept(); // its file holds it already
    else
        m_keeper->keepNow(kept);
}

void TextEditWidget::recover(const RecoveryRecord &record, std::function<void()> kept)
{
    const std::optional<UnsavedTexts> texts = fromRecoveryRecord(record);
    if (!texts || texts->kind != kind() || texts->texts.size() != 1)
        return;
    UnsavedText text = texts->texts.front();
    text.pane = onlyPane;
    setOptions(texts->options);
    m_input->setPath(text.path);
    if (!isInItsFile(text))
        m_texts->restore(text);
    m_recovered = std::move(kept);
    setEditingEnabled(true);
    load(ChangedFile::KeepLoaded);
}

} // namespace velmora

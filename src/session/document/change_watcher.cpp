#include "session/document/change_watcher.h"

#include "session/document/edited_texts.h"
#include "session/document/text_input.h"
#include "session/frame/notice_bar.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <algorithm>

namespace velmora {

namespace {

FileStamp stampNow(const EditedText &text)
{
    return FileStamp::of(text.input->loadedPath());
}

} // namespace

ChangeWatcher::ChangeWatcher(NoticeBar &bar, EditedTexts &texts, const QString &several, QObject *parent)
    : QObject(parent), m_bar(bar), m_texts(texts), m_several(several)
{
    bar.setClosable(Velmora::tr("Keep the text that is shown"));
    connect(&m_watch, &FileWatch::changed, this, &ChangeWatcher::check);
    // Queued: a save has ended before its input says what the file holds.
    connect(&texts.saving(), &TextSaving::savingChanged, this, &ChangeWatcher::follow, Qt::QueuedConnection);
    connect(&bar, &NoticeBar::actionWanted, this, [this] { Q_EMIT reloadWanted(news()); });
    connect(&bar, &NoticeBar::closed, this, [this] {
        m_dismissed.clear();
        for (const EditedText &text : m_texts.all())
            m_dismissed.push_back(stampNow(text));
        check();
    });
}

void ChangeWatcher::follow()
{
    QStringList files;
    for (const EditedText &text : m_texts.all()) {
        if (!text.input->loaded().missing && text.input->loadedPath() != TextInput::clipboardPath())
            files.append(text.input->loadedPath());
    }
    m_watch.watch(files);
    check();
}

void ChangeWatcher::check()
{
    // Until a save has ended nobody knows whose change it is.
    if (m_texts.saving().isSaving())
        return;
    const QList<PaneIndex> changed = news();
    const bool canReload = std::any_of(changed.begin(), changed.end(),
                                       [this](PaneIndex pane) { return stampNow(m_texts.at(pane)).isFile(); });
    m_bar.setAction(canReload ? Velmora::tr("&Reload") : QString());
    m_bar.tell(changed.isEmpty() ? QString() : describe(changed), NoticeBar::Tone::Warning);
}

QList<PaneIndex> ChangeWatcher::news() const
{
    QList<PaneIndex> panes;
    const std::vector<EditedText> &texts = m_texts.all();
    for (std::size_t at = 0; at < texts.size(); ++at) {
        if (texts[at].input->isChangedOnDisk() && (m_dismissed.empty() || stampNow(texts[at]) != m_dismissed[at]))
            panes.append(texts[at].pane);
    }
    return panes;
}

QString ChangeWatcher::describe(const QList<PaneIndex> &panes) const
{
    QString said = m_several;
    if (panes.size() == 1) {
        const EditedText &text = m_texts.at(panes.first());
        said = (stampNow(text).isFile() ? text.words.changedOnDisk : text.words.goneFromDisk)
                   .arg(shownPath(text.input->loadedPath()));
    }
    if (std::any_of(panes.begin(), panes.end(), [this](PaneIndex pane) { return m_texts.isModified(pane); }))
        said += u'\n' + Velmora::tr("The text shown has unsaved changes, which stay unless you discard them.");
    return said;
}

} // namespace velmora

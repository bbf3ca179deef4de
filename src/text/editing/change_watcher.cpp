#include "text/editing/change_watcher.h"

#include "session/frame/notice_bar.h"
#include "session/translate.h"
#include "text/editing/text_editing.h"
#include "text/text_inputs.h"

#include <QDir>

namespace velmora {

ChangeWatcher::ChangeWatcher(NoticeBar &bar, const TextInputs &inputs, TextEditing &editing, QObject *parent)
    : QObject(parent), m_bar(bar), m_inputs(inputs), m_editing(editing)
{
    bar.setClosable(Velmora::tr("Keep the text that is shown"));
    connect(&m_watch, &FileWatch::changed, this, &ChangeWatcher::check);
    // Queued: a save has ended before its input says what the file holds.
    connect(&editing.saving(), &TextSaving::savingChanged, this, &ChangeWatcher::follow, Qt::QueuedConnection);
    connect(&bar, &NoticeBar::actionWanted, this,
            [this] { Q_EMIT reloadWanted(hasNews(Side::Left), hasNews(Side::Right)); });
    connect(&bar, &NoticeBar::closed, this, [this] {
        for (const Side side : {Side::Left, Side::Right})
            m_dismissed[side] = FileStamp::of(m_inputs.at(side).loadedPath());
        m_hasDismissed = true;
        check();
    });
}

void ChangeWatcher::follow()
{
    QStringList files;
    for (const Side side : {Side::Left, Side::Right}) {
        const TextSide &input = m_inputs.at(side);
        if (!input.loaded().missing && input.loadedPath() != TextSide::clipboardPath())
            files.append(input.loadedPath());
    }
    m_watch.watch(files);
    check();
}

void ChangeWatcher::check()
{
    // Until a save has ended nobody knows whose change it is.
    if (m_editing.saving().isSaving())
        return;
    const bool left = hasNews(Side::Left);
    const bool right = hasNews(Side::Right);
    const auto isThere = [this](Side side) { return FileStamp::of(m_inputs.at(side).loadedPath()).isFile(); };
    const bool canReload = (left && isThere(Side::Left)) || (right && isThere(Side::Right));
    m_bar.setAction(canReload ? Velmora::tr("&Reload") : QString());
    m_bar.tell(left || right ? describe(left, right) : QString(), NoticeBar::Tone::Warning);
}

bool ChangeWatcher::hasNews(Side side) const
{
    if (!m_inputs.at(side).isChangedOnDisk())
        return false;
    return !m_hasDismissed || FileStamp::of(m_inputs.at(side).loadedPath()) != m_dismissed[side];
}

QString ChangeWatcher::describe(bool left, bool right) const
{
    QString text;
    if (left && right) {
        text = Velmora::tr("Both files have changed on disk.");
    } else {
        const Side side = left ? Side::Left : Side::Right;
        const QString path = m_inputs.at(side).loadedPath();
        if (FileStamp::of(path).isFile())
            text = left ? Velmora::tr("The left file has changed on disk: %1")
                        : Velmora::tr("The right file has changed on disk: %1");
        else
            text = left ? Velmora::tr("The left file is no longer there: %1")
                        : Velmora::tr("The right file is no longer there: %1");
        text = text.arg(QDir::toNativeSeparators(path));
    }
    const bool losesEdits = (left && m_editing.isModified(Side::Left)) || (right && m_editing.isModified(Side::Right));
    if (losesEdits)
        text += u'\n' + Velmora::tr("The text shown has unsaved changes, which stay unless you discard them.");
    return text;
}

} // namespace velmora

#include "app/library/recovery_offer.h"

#include "app/session_kinds.h"
#include "core/recovery_store.h"
#include "session/dialogs.h"
#include "session/session_widget.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QFile>
#include <QJsonValue>

namespace velmora {

namespace {

constexpr qsizetype mostNames = 10;

struct Found {
    QString file;
    const SessionKindRow *kind;
    SessionPaths paths;
    RecoveryRecord record;
};

struct FoundWork {
    QList<Found> whole;
    QStringList damaged; ///< where the files are by now
};

FoundWork search(RecoveryStore &store)
{
    FoundWork work;
    const QStringList files = store.abandonedFiles();
    for (const QString &file : files) {
        std::optional<RecoveryRecord> record = readRecoveryRecord(file);
        if (!record) {
            work.damaged.append(store.setAside(file));
            continue;
        }
        const auto text = [&record](const char *key) { return record->description[QLatin1String(key)].toString(); };
        // What another version keeps is left to that version.
        const SessionKindRow *kind = findSessionKind(text("kind"));
        if (kind && kind->holdsUnsaved && !kind->holdsUnsaved(*record))
            QFile::remove(file); // the program ended between saving and removing it
        else if (kind)
            work.whole.append({file, kind, {text("left"), text("right"), {}}, std::move(*record)});
    }
    return work;
}

/// A merge is known by the file that it goes to: version control gives its versions names of its own.
QString nameOf(const Found &found)
{
    const QJsonValue options = found.record.description.value(QLatin1String("options"));
    const QString output = options[QLatin1String("output")].toString();
    return output.isEmpty() ? sessionTitle(*found.kind, found.paths) : Velmora::tr("Merge: %1").arg(pathName(output));
}

QString namesOf(const QList<Found> &found)
{
    QStringList names;
    for (const Found &one : found.first(std::min(found.size(), mostNames)))
        names.append(QStringLiteral("  · ") + nameOf(one));
    if (found.size() > mostNames)
        names.append(QStringLiteral("  …"));
    return names.join(u'\n');
}

void restore(const QList<Found> &found, const RecoveryOpener &open)
{
    for (const Found &one : found)
        open(*one.kind, one.paths)->recover(one.record, [file = one.file] { QFile::remove(file); });
}

} // namespace

void offerRecovery(RecoveryStore &store, QWidget *window, const RecoveryOpener &open)
{
    const FoundWork work = search(store);
    if (!work.damaged.isEmpty()) {
        QStringList shown;
        for (const QString &file : work.damaged)
            shown.append(shownPath(file));
        Dialogs::instance().tell(window, Dialogs::Tone::Warning, Velmora::tr("Restore unsaved changes"),
                                 Velmora::tr("Unsaved changes of an earlier run cannot be restored, because what kept "
                                             "them is damaged. It was put aside:\n%1")
                                     .arg(shown.join(u'\n')));
    }
    if (work.whole.isEmpty())
        return;
    enum Answer { Later, Restore, Discard };
    Dialogs::instance().ask(window, Dialogs::Tone::Information, Velmora::tr("Restore unsaved changes"),
                            Velmora::tr("The program ended while there were unsaved changes:\n%1\n\nRestore them? The "
                                        "files themselves stay as they are until you save.")
                                .arg(namesOf(work.whole)),
                            {{Velmora::tr("&Restore"), Restore, true, false},
                             {Velmora::tr("&Discard"), Discard, false, false},
                             {Velmora::tr("Ask &later"), Later, false, true}},
                            [found = work.whole, open](int answer) {
                                if (answer == Restore)
                                    restore(found, open);
                                for (const Found &one : found) {
                                    if (answer == Discard)
                                        QFile::remove(one.file);
                                }
                            });
}

} // namespace velmora

#include "folder/actions/properties_dialog.h"

#include "folder/actions/action_words.h"
#include "session/shown_path.h"
#include "session/translate.h"
#include "vfs/git/git_place.h"
#include "vfs/place/snapshot_source.h"
#include "vfs/remote/remote_place.h"

#include <QDateTime>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <optional>

namespace velmora {

namespace {

constexpr int sideWidth = 340;

QWidget *makeSide(const QString &title, const TreeFolder &entry, const QString &name)
{
    auto *text = new QLabel(propertiesText(entry));
    text->setObjectName(name);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    text->setMinimumWidth(sideWidth);
    auto *side = new QGroupBox(title);
    auto *column = new QVBoxLayout(side);
    column->addWidget(text);
    return side;
}

QString timeText(const QDateTime &time)
{
    return QLocale().toString(time.date(), QLocale::ShortFormat) + u' ' +
           time.time().toString(QStringLiteral("HH:mm:ss"));
}

QString bytesText(qint64 size)
{
    return Velmora::tr("%1 bytes").arg(QLocale().toString(size));
}

QString textOfDisk(const QString &path)
{
    const QFileInfo info(path);
    const QDateTime modified = info.lastModified();
    const QString size = info.isDir() ? Velmora::tr("<folder>") : bytesText(info.size());
    return Velmora::tr("Path: %1\nType: %2\nSize: %3\nModified: %4\nRead-only: %5")
        .arg(shownPath(path), info.isDir() ? Velmora::tr("Folder") : Velmora::tr("File"), size,
             modified.isValid() ? timeText(modified) : QString(),
             info.isWritable() ? Velmora::tr("No") : Velmora::tr("Yes"));
}

/// What sort of tree an entry is of, and which one.
QString placeText(const TreeSource &source)
{
    const QString &place = source.location().place;
    if (const std::optional<RemotePlace> host = remotePlaceOf(place))
        return Velmora::tr("the host %1").arg(host->host);
    if (const std::optional<GitPlace> state = gitPlaceOf(place))
        return Velmora::tr("the state %1 of the repository %2").arg(gitSideText(state->side), shownPath(state->path));
    if (const auto *snapshot = dynamic_cast<const SnapshotSource *>(&source)) {
        const QDateTime created = QDateTime::fromString(snapshot->snapshot().created, Qt::ISODate);
        return created.isValid() ? Velmora::tr("the snapshot %1 of %2").arg(source.location().shown, timeText(created))
                                 : Velmora::tr("the snapshot %1").arg(source.location().shown);
    }
    return Velmora::tr("the archive %1").arg(source.location().shown);
}

QString modifiedText(const TreeSource &source, const FolderEntry &entry)
{
    if (!source.hasFileTimes())
        return Velmora::tr("not known: Git keeps no times of files");
    return entry.modifiedMs == 0 ? Velmora::tr("not known")
                                 : timeText(QDateTime::fromMSecsSinceEpoch(entry.modifiedMs));
}

QString textOfTree(const TreeFolder &at)
{
    const TreeSource &source = *at.source;
    const std::optional<FolderEntry> entry = source.describe(at.path, HiddenEntries::Listed);
    const QString head = Velmora::tr("Path: %1\nIn: %2").arg(at.shownPath(), placeText(source));
    if (!entry)
        return head;
    const bool isFolder = entry->kind == EntryKind::Folder;
    return head + u'\n' +
           Velmora::tr("Type: %1\nSize: %2\nModified: %3\nRead-only: %4")
               .arg(isFolder ? Velmora::tr("Folder") : Velmora::tr("File"),
                    isFolder ? Velmora::tr("<folder>") : bytesText(entry->size), modifiedText(source, *entry),
                    Velmora::tr("Yes"));
}

} // namespace

QString propertiesText(const TreeFolder &entry)
{
    return entry.source && !entry.source->isLocal() ? textOfTree(entry) : textOfDisk(entry.path);
}

PropertiesDialog::PropertiesDialog(const Sides<TreeFolder> &entries, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(Velmora::tr("Properties"));
    setModal(true);
    auto *sides = new QHBoxLayout;
    sides->setSpacing(12);
    if (entries.left.isThere())
        sides->addWidget(makeSide(Velmora::tr("Left"), entries.left, QStringLiteral("leftProperties")), 1);
    if (entries.right.isThere())
        sides->addWidget(makeSide(Velmora::tr("Right"), entries.right, QStringLiteral("rightProperties")), 1);
    auto *close = new QPushButton(Velmora::tr("Close"));
    close->setObjectName(QStringLiteral("propertiesClose"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto *whole = new QVBoxLayout(this);
    whole->addLayout(sides, 1);
    whole->addWidget(close, 0, Qt::AlignTrailing);
    close->setFocus();
}

} // namespace velmora

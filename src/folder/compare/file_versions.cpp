#include "folder/compare/file_versions.h"

#include "filetypes/version/engine/file_version.h"

#include <algorithm>
#include <array>
#include <map>

namespace velmora {

namespace {

constexpr qsizetype mostKnown = 100'000;
constexpr qsizetype mostWanted = 400; ///< both sides of more rows than any screen has
constexpr qsizetype mostAtOnce = 32;  ///< so that the first of many are shown soon

/// Opening a file of an archive may unpack all that is before it, so what it is called has to do there.
bool mayBeProgram(const ListedFile &file)
{
    static constexpr std::array endings{"exe", "dll", "sys", "ocx", "cpl", "scr", "drv",  "efi", "mui",
                                        "ax",  "com", "tlb", "acm", "tsp", "pyd", "node", "xll", "winmd"};
    if (file.size == 0)
        return false;
    if (file.source->isLocal())
        return true;
    const QString ending = file.path.mid(file.path.lastIndexOf(u'.') + 1);
    return std::any_of(endings.begin(), endings.end(), [&ending](const char *known) {
        return ending.compare(QLatin1String(known), Qt::CaseInsensitive) == 0;
    });
}

QStringList versionsOf(const QList<ListedFile> &files, const CancelFlag &cancel)
{
    QStringList versions;
    std::map<const TreeSource *, std::unique_ptr<FileOpener>> openers;
    for (const ListedFile &file : files) {
        std::unique_ptr<FileOpener> &opener = openers[file.source.get()];
        if (!opener)
            opener = file.source->makeOpener();
        const std::unique_ptr<OpenFile> open =
            cancel.isCancelled() ? nullptr : opener->open(file.path, OpenHint::Unknown);
        versions.append(open ? readFileVersion(*open) : QString());
    }
    return versions;
}

} // namespace

FileVersions::FileVersions(QObject *parent) : QObject(parent)
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &FileVersions::startReading);
}

QString FileVersions::of(const ListedFile &file)
{
    if (!file.source || !mayBeProgram(file))
        return {};
    const auto known = m_known.constFind(file);
    if (known != m_known.cend())
        return *known;
    want(file);
    return {};
}

void FileVersions::want(const ListedFile &file)
{
    if (m_reading.contains(file))
        return;
    m_wanted.removeOne(file);
    m_wanted.append(file);
    if (m_wanted.size() > mostWanted)
        m_wanted.removeFirst();
    if (!m_runner.isRunning())
        m_turn.start(0);
}

void FileVersions::startReading()
{
    if (m_wanted.isEmpty() || m_runner.isRunning())
        return;
    const qsizetype first = std::max<qsizetype>(0, m_wanted.size() - mostAtOnce);
    m_reading = m_wanted.mid(first);
    m_wanted.resize(first);
    if (m_known.size() > mostKnown)
        m_known.clear();
    m_runner.start([files = m_reading](const CancelFlag &cancel, Progress &) { return versionsOf(files, cancel); },
                   [this](RunOutcome<QStringList> &&outcome) {
                       const QStringList versions = outcome.value.value_or(QStringList());
                       for (qsizetype k = 0; k < m_reading.size(); ++k)
                           m_known.insert(m_reading[k], versions.value(k));
                       m_reading.clear();
                       m_turn.start(0);
                       Q_EMIT read();
                   });
}

} // namespace velmora

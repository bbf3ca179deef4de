#include "core/recovery_store.h"

#include "core/crc32.h"
#include "core/path_names.h"
#include "core/text_file.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <QUuid>

#include <system_error>

namespace velmora {

namespace {

// The file: this line, a line of JSON, then the texts one behind the other. The JSON holds the description and for each
// text its size and checksum.
constexpr char firstLine[] = "Velmora recovery 1\n";
constexpr qsizetype firstLineSize = sizeof firstLine - 1;
constexpr qsizetype writeStep = 1024 * 1024;
constexpr auto onlyUser = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

QString lockPath(const QString &folder)
{
    return folder + QStringLiteral("/lock");
}

QString suffix()
{
    return QStringLiteral(".unsaved");
}

qint64 checksum(const QByteArray &text)
{
    Crc32 sum;
    sum.update(text);
    return sum.value();
}

QByteArray headOf(const RecoveryRecord &record)
{
    QJsonArray texts;
    for (const QByteArray &text : record.texts)
        texts.append(QJsonObject{{QStringLiteral("size"), text.size()}, {QStringLiteral("crc32"), checksum(text)}});
    const QJsonObject head{{QStringLiteral("description"), record.description}, {QStringLiteral("texts"), texts}};
    return QJsonDocument(head).toJson(QJsonDocument::Compact) + '\n';
}

/// Makes a folder that only this user may look into.
bool makePrivateFolder(const QString &path)
{
    return QDir().mkpath(path) && QFile::setPermissions(path, onlyUser | QFileDevice::ExeOwner);
}

} // namespace

SaveResult writeRecoveryRecord(const QString &path, const RecoveryRecord &record, const CancelFlag &cancel)
{
    qint64 size = 0;
    for (const QByteArray &text : record.texts)
        size += text.size();
    if (size > recoveryLimit)
        return {QString::fromStdString(std::make_error_code(std::errc::file_too_large).message())};
    const auto write = [&](QIODevice &device) {
        if (auto *file = qobject_cast<QFileDevice *>(&device); !file || !file->setPermissions(onlyUser))
            return false;
        const QByteArray head = firstLine + headOf(record);
        if (device.write(head) != head.size())
            return false;
        for (const QByteArray &text : record.texts) {
            for (qsizetype at = 0; at < text.size(); at += writeStep) {
                const qsizetype piece = std::min(writeStep, text.size() - at);
                if (cancel.isCancelled() || device.write(text.constData() + at, piece) != piece)
                    return false;
            }
        }
        return true;
    };
    return saveFile(path, write, cancel);
}

std::optional<RecoveryRecord> readRecoveryRecord(const QString &path)
{
    const FileContents contents = readFile(path);
    if (!contents.ok() || !contents.bytes.startsWith(firstLine))
        return std::nullopt;
    const qsizetype headEnd = contents.bytes.indexOf('\n', firstLineSize);
    if (headEnd < 0)
        return std::nullopt;
    const QJsonObject head =
        QJsonDocument::fromJson(contents.bytes.mid(firstLineSize, headEnd - firstLineSize)).object();
    RecoveryRecord record{head.value(QLatin1String("description")).toObject(), {}};
    qsizetype at = headEnd + 1;
    for (const QJsonValue &entry : head.value(QLatin1String("texts")).toArray()) {
        const qint64 size = entry[QLatin1String("size")].toInteger(-1);
        if (size < 0 || size > contents.bytes.size() - at)
            return std::nullopt;
        record.texts.append(contents.bytes.mid(at, size));
        if (checksum(record.texts.last()) != entry[QLatin1String("crc32")].toInteger(-1))
            return std::nullopt;
        at += size;
    }
    return at == contents.bytes.size() && !record.description.isEmpty() ? std::optional(record) : std::nullopt;
}

RecoveryStore::RecoveryStore(const QString &folder) : m_folder(folder) {}

RecoveryStore::~RecoveryStore()
{
    leave(m_own);
    for (Locked &locked : m_abandoned)
        leave(locked);
}

void RecoveryStore::leave(Locked &locked)
{
    if (!locked.lock)
        return;
    locked.lock->unlock();
    QDir().rmdir(locked.folder); // stays when it holds anything
}

std::unique_ptr<QLockFile> RecoveryStore::tryLock(const QString &folder)
{
    auto lock = std::make_unique<QLockFile>(lockPath(folder));
    // An instance may run for weeks; only that its process is gone makes a lock stale.
    lock->setStaleLockTime(0);
    return lock->tryLock(0) ? std::move(lock) : nullptr;
}

QString RecoveryStore::newFile()
{
    const auto uniqueName = [] { return QUuid::createUuid().toString(QUuid::WithoutBraces); };
    // Another instance may take a folder for an abandoned one before it is locked.
    constexpr int attempts = 5;
    for (int attempt = 0; !m_own.lock && attempt < attempts; ++attempt) {
        m_own.folder = joinedPath(m_folder, uniqueName());
        if (makePrivateFolder(m_own.folder))
            m_own.lock = tryLock(m_own.folder);
    }
    return m_own.lock ? joinedPath(m_own.folder, uniqueName() + suffix()) : QString();
}

QStringList RecoveryStore::abandonedFiles()
{
    const QFileInfoList folders = QDir(m_folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QFileInfo &folder : folders) {
        const QString path = folder.filePath();
        const auto isHeld = [&path](const Locked &locked) { return locked.folder == path; };
        if (m_own.folder == path || std::any_of(m_abandoned.begin(), m_abandoned.end(), isHeld))
            continue;
        if (auto lock = tryLock(path))
            m_abandoned.push_back({path, std::move(lock)});
    }
    QFileInfoList files;
    for (const Locked &locked : m_abandoned)
        files += QDir(locked.folder).entryInfoList({u'*' + suffix()}, QDir::Files);
    std::sort(files.begin(), files.end(),
              [](const QFileInfo &a, const QFileInfo &b) { return a.lastModified() < b.lastModified(); });
    QStringList paths;
    for (const QFileInfo &file : files)
        paths.append(file.filePath());
    return paths;
}

QString RecoveryStore::setAside(const QString &file) const
{
    const QString aside = joinedPath(m_folder, QFileInfo(file).completeBaseName() + QStringLiteral(".damaged"));
    return QFile::rename(file, aside) ? aside : file;
}

} // namespace velmora

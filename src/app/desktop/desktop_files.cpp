#include "app/desktop/desktop_files.h"

#include "core/path_names.h"
#include "core/safe_file.h"
#include "platform/desktop_integration.h"

#include <QDir>
#include <QFile>

namespace velmora {

namespace {

const QString listPath = QStringLiteral("velmora/desktop-files");

/// What the tools make from the entries and file types of a folder.
QStringList cachePaths()
{
    QStringList paths = {QStringLiteral("applications/mimeinfo.cache")};
    for (const char *name : {"aliases", "generic-icons", "globs", "globs2", "icons", "magic", "mime.cache",
                             "subclasses", "treemagic", "types", "version", "XMLnamespaces"})
        paths.append(QStringLiteral("mime/") + QLatin1String(name));
    for (const char *type : {"session", "workspace"})
        paths.append(QStringLiteral("mime/application/x-velmora-%1.xml").arg(QLatin1String(type)));
    paths.append(QStringLiteral("mime/application"));
    return paths;
}

bool isEmptyFolder(const QString &path, const QStringList &names)
{
    return QDir(path).entryList(names, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System).isEmpty();
}

} // namespace

DesktopFiles::DesktopFiles(QString dataFolder, QList<DesktopFile> files)
    : m_folder(std::move(dataFolder)), m_files(std::move(files))
{}

bool DesktopFiles::areInstalled() const
{
    return !m_files.isEmpty() && QFile::exists(whole(m_files.constFirst().path));
}

bool DesktopFiles::install() const
{
    QStringList made = readList();
    QStringList caches = cachePaths();
    caches.removeIf([this](const QString &path) { return QFile::exists(whole(path)); });
    QStringList paths = {listPath};
    for (const DesktopFile &file : m_files)
        paths.append(file.path);
    for (const QString &path : std::as_const(paths))
        made += missingParents(path);
    made.removeDuplicates();

    // Written down before anything is made, so that an end on the way leaves nothing that is not known.
    const QByteArray list = (made + caches).join(u'\n').toUtf8();
    bool complete = QDir().mkpath(parentPath(whole(listPath))) && saveFile(whole(listPath), list).ok();
    for (const DesktopFile &file : m_files)
        complete = complete && write(file);
    if (!complete) {
        remove();
        return false;
    }
    refreshDesktopData(m_folder);
    return true;
}

bool DesktopFiles::remove() const
{
    const QStringList made = readList();
    bool complete = true;
    for (const DesktopFile &file : m_files)
        complete = (!QFile::exists(whole(file.path)) || QFile::remove(whole(file.path))) && complete;
    refreshDesktopData(m_folder);
    removeCaches(made);
    QFile::remove(whole(listPath));
    QStringList folders = made;
    // The deepest first.
    std::sort(folders.begin(), folders.end(), [](const QString &a, const QString &b) { return a.size() > b.size(); });
    for (const QString &path : std::as_const(folders)) {
        if (QFileInfo(whole(path)).isDir())
            QDir().rmdir(whole(path)); // stays when others have put something there
    }
    return complete;
}

void DesktopFiles::removeCaches(const QStringList &made) const
{
    const bool noEntries = isEmptyFolder(whole(QStringLiteral("applications")), {QStringLiteral("*.desktop")});
    const bool noTypes = isEmptyFolder(whole(QStringLiteral("mime/packages")), {});
    const QStringList caches = cachePaths();
    for (const QString &path : caches) {
        const bool unused = path.startsWith(QLatin1String("mime/")) ? noTypes : noEntries;
        if (unused && made.contains(path) && QFileInfo(whole(path)).isFile())
            QFile::remove(whole(path));
    }
}

QString DesktopFiles::whole(const QString &path) const
{
    return joinedPath(m_folder, path);
}

QStringList DesktopFiles::missingParents(const QString &path) const
{
    QStringList missing;
    for (QString parent = path; parent.contains(u'/');) {
        parent = parentPath(parent);
        if (!QFile::exists(whole(parent)))
            missing.append(parent);
    }
    return missing;
}

QStringList DesktopFiles::readList() const
{
    QFile file(whole(listPath));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList paths = QString::fromUtf8(file.read(1024 * 1024)).split(u'\n', Qt::SkipEmptyParts);
    paths.removeIf([](const QString &path) { return path.startsWith(u'/') || path.contains(QLatin1String("..")); });
    return paths;
}

bool DesktopFiles::write(const DesktopFile &file) const
{
    const QString path = whole(file.path);
    if (!QDir().mkpath(parentPath(path)) || !saveFile(path, file.contents).ok())
        return false;
    constexpr QFile::Permissions forAll = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;
    constexpr QFile::Permissions toRun = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
    return QFile::setPermissions(path, file.executable ? forAll | toRun : forAll);
}

QString desktopValue(const QString &text)
{
    QString result;
    for (const QChar c : text) {
        if (c == u'\\')
            result += QStringLiteral("\\\\");
        else if (c == u'\n')
            result += QStringLiteral("\\n");
        else if (c == u'\r')
            result += QStringLiteral("\\r");
        else if (c == u'\t')
            result += QStringLiteral("\\t");
        else if (c == u' ' && result.isEmpty())
            result += QStringLiteral("\\s");
        else
            result += c;
    }
    return result;
}

QString desktopCommand(const QStringList &command, const QString &code)
{
    QStringList quoted;
    for (const QString &argument : command) {
        QString inner;
        for (const QChar c : argument) {
            if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
                inner += u'\\';
            if (c == u'%')
                inner += u'%';
            inner += c;
        }
        quoted.append(u'"' + inner + u'"');
    }
    return desktopValue(quoted.join(u' ')) + u' ' + code;
}

QString shellArgument(const QString &argument)
{
    return u'\'' + QString(argument).replace(u'\'', QLatin1String("'\\''")) + u'\'';
}

} // namespace velmora

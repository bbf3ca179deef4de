#include "vfs/git/git_scratch.h"

#include <QDir>
#include <QFile>

namespace velmora {

namespace {

QByteArray nativePath(const QString &path)
{
    const std::string bytes = nativeName(path);
    return {bytes.data(), qsizetype(bytes.size())};
}

} // namespace

GitScratch::GitScratch(const GitRepository &repository)
    : m_objects(m_folder.filePath(QStringLiteral("objects")), repository.algorithm)
{
    const QDir folder(m_folder.path());
    if (!m_folder.isValid() || !folder.mkpath(QStringLiteral("objects/info")) ||
        !folder.mkpath(QStringLiteral("files")))
        return;
    QFile alternates(folder.filePath(QStringLiteral("objects/info/alternates")));
    const QByteArray line = nativePath(repository.objectsFolder) + '\n';
    m_isReady = alternates.open(QIODevice::WriteOnly) && alternates.write(line) == line.size() && alternates.flush();
}

bool GitScratch::isValid() const
{
    return m_isReady;
}

QMap<QString, QString> GitScratch::variables() const
{
    return {{QStringLiteral("GIT_OBJECT_DIRECTORY"), m_folder.filePath(QStringLiteral("objects"))}};
}

GitReply GitScratch::makeTree(const GitRepository &repository, const std::vector<GitFile> &files,
                              const CancelFlag &cancel) const
{
    GitCallExtras extras;
    extras.variables = variables();
    const QString index = m_folder.filePath(QStringLiteral("index"));
    extras.variables.insert(QStringLiteral("GIT_INDEX_FILE"), index);
    for (const GitFile &file : files)
        extras.input +=
            QByteArray::number(file.entry.mode, 8) + ' ' + file.entry.name + '\t' + nativePath(file.path) + '\0';
    QFile::remove(index);
    // Names that other systems would mistake are only listed here.
    const QStringList lenient{QStringLiteral("-c"), QStringLiteral("core.protectNTFS=false"), QStringLiteral("-c"),
                              QStringLiteral("core.protectHFS=false")};
    if (!files.empty()) {
        const GitReply filled = repository.caller().call(
            lenient + QStringList{QStringLiteral("update-index"), QStringLiteral("-z"), QStringLiteral("--index-info")},
            cancel, extras);
        if (filled.fault.isError())
            return filled;
    }
    extras.input.clear();
    GitReply tree = repository.caller().call(
        lenient + QStringList{QStringLiteral("write-tree"), QStringLiteral("--missing-ok")}, cancel, extras);
    tree.output = tree.output.trimmed();
    return tree;
}

} // namespace velmora

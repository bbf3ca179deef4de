#include "folder/engine/usage_tree.h"

#include "core/path_names.h"

#include <QHash>
#include <QPair>

#include <algorithm>
#include <iterator>

namespace velmora {

namespace {

struct KindOfEnding {
    const char *ending;
    FileKind kind;
};

/// In the order of the endings.
constexpr KindOfEnding kindsOfEndings[] = {
    {"7z", FileKind::Archive},    {"a", FileKind::Program},     {"aac", FileKind::Sound},
    {"aiff", FileKind::Sound},    {"apk", FileKind::Archive},   {"avi", FileKind::Film},
    {"bin", FileKind::Program},   {"bmp", FileKind::Picture},   {"bz2", FileKind::Archive},
    {"c", FileKind::Code},        {"cab", FileKind::Archive},   {"cc", FileKind::Code},
    {"class", FileKind::Program}, {"cpp", FileKind::Code},      {"cr2", FileKind::Picture},
    {"cs", FileKind::Code},       {"css", FileKind::Code},      {"csv", FileKind::Document},
    {"cxx", FileKind::Code},      {"deb", FileKind::Archive},   {"dll", FileKind::Program},
    {"dmg", FileKind::Archive},   {"dng", FileKind::Picture},   {"doc", FileKind::Document},
    {"docx", FileKind::Document}, {"dylib", FileKind::Program}, {"elf", FileKind::Program},
    {"epub", FileKind::Document}, {"exe", FileKind::Program},   {"flac", FileKind::Sound},
    {"flv", FileKind::Film},      {"gif", FileKind::Picture},   {"go", FileKind::Code},
    {"gz", FileKind::Archive},    {"h", FileKind::Code},        {"heic", FileKind::Picture},
    {"hpp", FileKind::Code},      {"htm", FileKind::Document},  {"html", FileKind::Document},
    {"hxx", FileKind::Code},      {"ico", FileKind::Picture},   {"img", FileKind::Archive},
    {"inc", FileKind::Code},      {"iso", FileKind::Archive},   {"jar", FileKind::Archive},
    {"java", FileKind::Code},     {"jpeg", FileKind::Picture},  {"jpg", FileKind::Picture},
    {"js", FileKind::Code},       {"json", FileKind::Code},     {"jsx", FileKind::Code},
    {"ko", FileKind::Program},    {"kt", FileKind::Code},       {"lib", FileKind::Program},
    {"log", FileKind::Document},  {"lua", FileKind::Code},      {"lz", FileKind::Archive},
    {"lzma", FileKind::Archive},  {"m", FileKind::Code},        {"m4a", FileKind::Sound},
    {"md", FileKind::Document},   {"mid", FileKind::Sound},     {"mkv", FileKind::Film},
    {"mo", FileKind::Program},    {"mov", FileKind::Film},      {"mp3", FileKind::Sound},
    {"mp4", FileKind::Film},      {"mpeg", FileKind::Film},     {"mpg", FileKind::Film},
    {"msi", FileKind::Archive},   {"nef", FileKind::Picture},   {"o", FileKind::Program},
    {"obj", FileKind::Program},   {"odp", FileKind::Document},  {"ods", FileKind::Document},
    {"odt", FileKind::Document},  {"ogg", FileKind::Sound},     {"opus", FileKind::Sound},
    {"pas", FileKind::Code},      {"pdb", FileKind::Program},   {"pdf", FileKind::Document},
    {"php", FileKind::Code},      {"pl", FileKind::Code},       {"png", FileKind::Picture},
    {"po", FileKind::Code},       {"pp", FileKind::Code},       {"ppt", FileKind::Document},
    {"pptx", FileKind::Document}, {"ps", FileKind::Document},   {"ps1", FileKind::Code},
    {"psd", FileKind::Picture},   {"py", FileKind::Code},       {"pyc", FileKind::Program},
    {"r", FileKind::Code},        {"rar", FileKind::Archive},   {"raw", FileKind::Picture},
    {"rb", FileKind::Code},       {"rpm", FileKind::Archive},   {"rs", FileKind::Code},
    {"rst", FileKind::Document},  {"rtf", FileKind::Document},  {"sh", FileKind::Code},
    {"so", FileKind::Program},    {"sql", FileKind::Code},      {"svg", FileKind::Picture},
    {"swift", FileKind::Code},    {"sys", FileKind::Program},   {"tar", FileKind::Archive},
    {"tex", FileKind::Document},  {"tgz", FileKind::Archive},   {"tif", FileKind::Picture},
    {"tiff", FileKind::Picture},  {"toml", FileKind::Code},     {"ts", FileKind::Code},
    {"tsv", FileKind::Document},  {"tsx", FileKind::Code},      {"txt", FileKind::Document},
    {"vhdx", FileKind::Archive},  {"vim", FileKind::Code},      {"vue", FileKind::Code},
    {"wasm", FileKind::Program},  {"wav", FileKind::Sound},     {"webm", FileKind::Film},
    {"webp", FileKind::Picture},  {"whl", FileKind::Archive},   {"wma", FileKind::Sound},
    {"wmv", FileKind::Film},      {"xcf", FileKind::Picture},   {"xls", FileKind::Document},
    {"xlsx", FileKind::Document}, {"xml", FileKind::Code},      {"xz", FileKind::Archive},
    {"yaml", FileKind::Code},     {"yml", FileKind::Code},      {"zip", FileKind::Archive},
    {"zst", FileKind::Archive},
};

} // namespace

FileKind fileKind(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot <= 0)
        return FileKind::Other;
    const QStringView ending = name.mid(dot + 1);
    const auto *found = std::lower_bound(std::begin(kindsOfEndings), std::end(kindsOfEndings), ending,
                                         [](const KindOfEnding &row, QStringView wanted) {
                                             return wanted.compare(QLatin1String(row.ending), Qt::CaseInsensitive) > 0;
                                         });
    const bool isKnown =
        found != std::end(kindsOfEndings) && ending.compare(QLatin1String(found->ending), Qt::CaseInsensitive) == 0;
    return isKnown ? found->kind : FileKind::Other;
}

QStringView UsageTree::name(qint32 node) const
{
    const Node &here = m_nodes[std::size_t(node)];
    return QStringView(m_names).mid(here.nameStart, here.nameLength);
}

QString UsageTree::path(qint32 node) const
{
    std::vector<qint32> way;
    for (; node > 0; node = m_nodes[std::size_t(node)].parent)
        way.push_back(node);
    QString path = m_rootPath;
    for (auto at = way.rbegin(); at != way.rend(); ++at) {
        if (!path.endsWith(u'/'))
            path += u'/';
        path += name(*at);
    }
    return path;
}

qint32 UsageTree::find(const QString &path) const
{
    if (isEmpty() || path == m_rootPath)
        return isEmpty() ? -1 : 0;
    if (!isInside(path, m_rootPath))
        return -1;
    qint32 folder = 0;
    const QStringView below = QStringView(path).mid(m_rootPath.size() + (m_rootPath.endsWith(u'/') ? 0 : 1));
    for (const QStringView part : below.split(u'/')) {
        qint32 child = folder + 1;
        while (child < node(folder).end && name(child) != part)
            child = node(child).end;
        if (child >= node(folder).end)
            return -1;
        folder = child;
    }
    return folder;
}

double UsageTree::share(qint32 node) const
{
    const qint64 whole = root().size;
    return whole == 0 ? 0 : 100.0 * double(m_nodes[std::size_t(node)].size) / double(whole);
}

void UsageTree::append(Node node, QStringView name)
{
    node.nameStart = m_names.size();
    node.nameLength = quint16(name.size());
    node.depth = quint16(node.parent < 0 ? 0 : m_nodes[std::size_t(node.parent)].depth + 1);
    m_names += name;
    m_nodes.push_back(node);
}

void UsageTree::complete()
{
    for (std::size_t i = m_nodes.size(); i-- > 0;) {
        Node &here = m_nodes[i];
        here.end = std::max(here.end, qint32(i) + 1);
        if (here.parent < 0)
            continue;
        Node &around = m_nodes[std::size_t(here.parent)];
        around.end = std::max(around.end, here.end);
        around.allocated += here.allocated;
    }
}

std::vector<qint64> usageGrowth(const UsageTree &now, const UsageTree &before)
{
    QHash<QPair<qint32, QStringView>, qint32> places; // by the folder around and the name
    places.reserve(before.size());
    for (qint32 node = 1; node < before.size(); ++node)
        places.insert({before.node(node).parent, before.name(node)}, node);
    std::vector<qint32> found(std::size_t(now.size()), -1);
    std::vector<qint64> growth(std::size_t(now.size()));
    for (qint32 node = 0; node < now.size(); ++node) {
        const auto i = std::size_t(node);
        if (node == 0)
            found[i] = before.isEmpty() ? -1 : 0;
        else if (const qint32 around = found[std::size_t(now.node(node).parent)]; around >= 0)
            found[i] = places.value({around, now.name(node)}, -1);
        growth[i] = now.node(node).size - (found[i] < 0 ? 0 : before.node(found[i]).size);
    }
    return growth;
}

QString shareText(double percent)
{
    return QString::number(percent, 'f', percent < 10 ? 2 : 1);
}

} // namespace velmora

#include "folder_engine/plain_engine.h"

#include "core/crc32.h"

#include <QDir>
#include <QMap>
#include <QRegularExpression>

#include <cstring>
#include <optional>

namespace velmora::plain {

namespace {

constexpr qint64 block = 1024 * 1024;

using EntryMap = QMap<QString, QFileInfo>;

EntryMap entriesOf(const QString &folder)
{
    EntryMap map;
    if (!folder.isEmpty() && QDir(folder).exists()) {
        for (const QFileInfo &info : QDir(folder).entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot))
            map.insert(info.fileName(), info);
    }
    return map;
}

QRegularExpression regularExpression(const QString &pattern)
{
    QString escaped = QRegularExpression::escape(pattern);
    escaped.replace(QLatin1String("\\*"), QLatin1String(".*")).replace(QLatin1String("\\?"), QLatin1String("."));
    return QRegularExpression(u'^' + escaped + u'$', QRegularExpression::CaseInsensitiveOption);
}

QStringList matching(const EntryMap &map, const QString &pattern)
{
    const QRegularExpression expression = regularExpression(pattern);
    QStringList names;
    for (const QString &name : map.keys()) {
        if (expression.match(name).hasMatch())
            names.append(name);
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

/// One name of two folders; at least one side is there.
struct Pair {
    QString name;
    std::optional<QFileInfo> left;
    std::optional<QFileInfo> right;

    [[nodiscard]] bool leftDir() const { return left && left->isDir(); }
    [[nodiscard]] bool rightDir() const { return right && right->isDir(); }
};

QList<Pair> pairsOf(const QString &left, const QString &right, const QList<ManualAlignRule> &rules)
{
    const EntryMap lefts = entriesOf(left);
    EntryMap rights = entriesOf(right);
    QStringList names = lefts.keys() + rights.keys();
    for (const ManualAlignRule &rule : rules) {
        const QStringList leftNames = matching(lefts, rule.left);
        const QStringList rightNames = matching(rights, rule.right);
        for (qsizetype i = 0; i < std::min(leftNames.size(), rightNames.size()); ++i) {
            if (leftNames[i] == rightNames[i] || !rights.contains(rightNames[i]))
                continue;
            rights.insert(leftNames[i], rights.value(rightNames[i]));
            rights.remove(rightNames[i]);
            names.append(leftNames[i]);
            names.removeAll(rightNames[i]);
        }
    }
    names.sort(Qt::CaseSensitive);
    names.removeDuplicates();
    QList<Pair> pairs;
    const auto entry = [](const EntryMap &map, const QString &name) {
        return map.contains(name) ? std::optional(map.value(name)) : std::nullopt;
    };
    for (const QString &name : names)
        pairs.append({name, entry(lefts, name), entry(rights, name)});
    return pairs;
}

/// The entry of a pair, `Same` when it is on both sides, and a folder when either is.
FolderDiffItem itemOf(const QString &name, const Pair &pair)
{
    FolderDiffItem item;
    item.name = name;
    if (pair.left) {
        item.leftPath = pair.left->absoluteFilePath();
        item.leftSize = pair.left->size();
        item.leftTime = pair.left->lastModified();
    }
    if (pair.right) {
        item.rightPath = pair.right->absoluteFilePath();
        item.rightSize = pair.right->size();
        item.rightTime = pair.right->lastModified();
    }
    item.isDir = pair.leftDir() || pair.rightDir();
    item.setDiffStatus(!pair.right  ? FolderDiffStatus::LeftOnly
                       : !pair.left ? FolderDiffStatus::RightOnly
                                    : FolderDiffStatus::Same);
    return item;
}

/// The status of what is on both sides and is not two folders.
FolderDiffStatus statusOf(const Pair &pair, CompareMethod method, qint32 toleranceSec)
{
    const bool bothFiles = !pair.leftDir() && !pair.rightDir();
    const bool sizesTell = method == CompareMethod::Rules && pair.left->size() != pair.right->size();
    return bothFiles && !sizesTell && samePair(*pair.left, *pair.right, method, toleranceSec)
               ? FolderDiffStatus::Same
               : FolderDiffStatus::Different;
}

FolderDiffStatus rolledUp(const QList<FolderDiffItem> &under)
{
    const auto allAre = [&](FolderDiffStatus status) {
        return std::all_of(under.begin(), under.end(),
                           [status](const FolderDiffItem &item) { return item.diffStatus() == status; });
    };
    if (under.isEmpty())
        return FolderDiffStatus::Same;
    if (allAre(FolderDiffStatus::LeftOnly))
        return FolderDiffStatus::LeftOnly;
    if (allAre(FolderDiffStatus::RightOnly))
        return FolderDiffStatus::RightOnly;
    return allAre(FolderDiffStatus::Same) ? FolderDiffStatus::Same : FolderDiffStatus::Different;
}

void addTotals(FolderDiffItem &folder, const QList<FolderDiffItem> &under)
{
    for (const FolderDiffItem &item : under) {
        if (item.name.count(u'/') != folder.name.count(u'/') + 1)
            continue;
        folder.leftSize += item.leftSize;
        folder.rightSize += item.rightSize;
        if (item.leftTime.isValid() && (!folder.leftTime.isValid() || folder.leftTime < item.leftTime))
            folder.leftTime = item.leftTime;
        if (item.rightTime.isValid() && (!folder.rightTime.isValid() || folder.rightTime < item.rightTime))
            folder.rightTime = item.rightTime;
    }
}

} // namespace

QList<FolderDiffItem> compareTree(const QString &left, const QString &right, const QString &prefix,
                                  CompareMethod method, qint32 toleranceSec, const QList<ManualAlignRule> &rules)
{
    QList<FolderDiffItem> result;
    for (const Pair &pair : pairsOf(left, right, rules)) {
        FolderDiffItem item = itemOf(prefix.isEmpty() ? pair.name : prefix + u'/' + pair.name, pair);
        const bool bothFolders = pair.leftDir() && pair.rightDir();
        if (pair.left && pair.right && !bothFolders)
            item.setDiffStatus(statusOf(pair, method, toleranceSec));
        QList<FolderDiffItem> under;
        if (item.isDir && (bothFolders || !pair.left || !pair.right)) {
            under = compareTree(item.leftPath, item.rightPath, item.name, method, toleranceSec, rules);
            if (bothFolders)
                item.setDiffStatus(rolledUp(under));
            item.leftSize = item.rightSize = 0;
            addTotals(item, under);
        }
        result.append(item);
        result.append(under);
    }
    return result;
}

QList<FolderDiffItem> compareLevel(const QString &left, const QString &right, CompareMethod method, qint32 toleranceSec,
                                   const QList<ManualAlignRule> &rules)
{
    QList<FolderDiffItem> result;
    for (const Pair &pair : pairsOf(left, right, rules)) {
        FolderDiffItem item = itemOf(pair.name, pair);
        item.isDir = pair.left ? pair.leftDir() : pair.rightDir();
        if (pair.left && pair.right && !(pair.leftDir() && pair.rightDir()))
            item.setDiffStatus(statusOf(pair, method, toleranceSec));
        result.append(item);
    }
    return result;
}

QList<FolderDiffItem> listStructure(const QString &left, const QString &right, bool recursive,
                                    const QList<ManualAlignRule> &rules)
{
    QList<FolderDiffItem> result;
    for (const Pair &pair : pairsOf(left, right, rules)) {
        result.append(itemOf(pair.name, pair));
        if (!recursive || !result.last().isDir)
            continue;
        for (FolderDiffItem under :
             listStructure(pair.leftDir() ? pair.left->absoluteFilePath() : left + u'/' + pair.name,
                           pair.rightDir()   ? pair.right->absoluteFilePath()
                           : right.isEmpty() ? QString()
                                             : right + u'/' + pair.name,
                           true, rules)) {
            under.name.prepend(pair.name + u'/');
            result.append(under);
        }
    }
    return result;
}

FolderTotals countContents(const QString &folder)
{
    FolderTotals totals;
    for (const FolderDiffItem &item : listStructure(folder, folder + QLatin1String("/nowhere"), true, {})) {
        ++(item.isDir ? totals.folders : totals.files);
        totals.bytes += item.isDir ? 0 : quint64(item.leftSize);
    }
    return totals;
}

bool samePair(const QFileInfo &left, const QFileInfo &right, CompareMethod method, qint32 toleranceSec)
{
    const QString l = left.absoluteFilePath();
    const QString r = right.absoluteFilePath();
    if (method == CompareMethod::Crc)
        return crc32(l) == crc32(r);
    if (method == CompareMethod::Binary)
        return left.size() == right.size() && sameByBlocks(l, r);
    const bool timesMatch = toleranceSec > 0
                                ? std::abs(left.lastModified().secsTo(right.lastModified())) <= toleranceSec
                                : left.lastModified() == right.lastModified();
    return (left.size() == right.size() && timesMatch) || sameByDigest(l, r);
}

namespace {

/// True when the files are equal block by block as `sameBlock` has it.
template <typename SameBlock>
bool sameBlocks(const QString &left, const QString &right, SameBlock sameBlock)
{
    QFile l(left);
    QFile r(right);
    if (!l.open(QIODevice::ReadOnly) || !r.open(QIODevice::ReadOnly))
        return false;
    for (;;) {
        const QByteArray leftBlock = l.read(block);
        const QByteArray rightBlock = r.read(block);
        if (leftBlock.size() != rightBlock.size())
            return false;
        if (leftBlock.isEmpty())
            return true;
        if (!sameBlock(leftBlock, rightBlock))
            return false;
    }
}

} // namespace

bool sameByDigest(const QString &left, const QString &right)
{
    return sameBlocks(left, right, [](const QByteArray &l, const QByteArray &r) { return l == r; });
}

bool sameByBlocks(const QString &left, const QString &right)
{
    return sameBlocks(left, right, [](const QByteArray &l, const QByteArray &r) {
        return std::strncmp(l.constData(), r.constData(), std::size_t(l.size())) == 0;
    });
}

QByteArray crc32(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const quint32 value = ~crc32BitByBit(0xFFFF'FFFF, file.readAll());
    return QByteArray::fromHex(QByteArray::number(value, 16).rightJustified(8, '0'));
}

} // namespace velmora::plain

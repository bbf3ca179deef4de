#include "folder_engine/plain_engine.h"

#include <QCryptographicHash>
#include <QDir>
#include <QMap>
#include <QSet>

#include <cstring>

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

struct Listing {
    EntryMap left;
    EntryMap right;
    QStringList names;
};

Listing listingOf(const QString &left, const QString &right, const QList<ManualAlignRule> &rules)
{
    Listing listing{entriesOf(left), entriesOf(right), {}};
    QSet<QString> names;
    for (const QString &name : listing.left.keys() + listing.right.keys())
        names.insert(name);
    for (const ManualAlignRule &rule : rules) {
        const QStringList leftNames = matching(listing.left, rule.left);
        const QStringList rightNames = matching(listing.right, rule.right);
        for (qsizetype i = 0; i < std::min(leftNames.size(), rightNames.size()); ++i) {
            if (leftNames[i] == rightNames[i] || !listing.right.contains(rightNames[i]))
                continue;
            listing.right.insert(leftNames[i], listing.right.value(rightNames[i]));
            listing.right.remove(rightNames[i]);
            names.insert(leftNames[i]);
            names.remove(rightNames[i]);
        }
    }
    listing.names = names.values();
    listing.names.sort(Qt::CaseSensitive);
    return listing;
}

FolderDiffItem itemOf(const QString &name, const QFileInfo *left, const QFileInfo *right)
{
    FolderDiffItem item;
    item.name = name;
    if (left) {
        item.leftPath = left->absoluteFilePath();
        item.leftSize = left->size();
        item.leftTime = left->lastModified();
    }
    if (right) {
        item.rightPath = right->absoluteFilePath();
        item.rightSize = right->size();
        item.rightTime = right->lastModified();
    }
    item.setDiffStatus(!right  ? FolderDiffStatus::LeftOnly
                       : !left ? FolderDiffStatus::RightOnly
                               : FolderDiffStatus::Same);
    return item;
}

FolderDiffStatus statusOf(const QFileInfo &left, const QFileInfo &right, CompareMethod method, qint32 toleranceSec)
{
    if (method == CompareMethod::Rules && left.size() != right.size())
        return FolderDiffStatus::Different;
    return samePair(left, right, method, toleranceSec) ? FolderDiffStatus::Same : FolderDiffStatus::Different;
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

QList<FolderDiffItem> prefixed(QList<FolderDiffItem> items, const QString &name)
{
    for (FolderDiffItem &item : items)
        item.name.prepend(name + u'/');
    return items;
}

} // namespace

QList<FolderDiffItem> compareTree(const QString &left, const QString &right, const QString &prefix,
                                  CompareMethod method, qint32 toleranceSec, const QList<ManualAlignRule> &rules)
{
    const Listing listing = listingOf(left, right, rules);
    QList<FolderDiffItem> result;
    for (const QString &name : listing.names) {
        const auto l = listing.left.constFind(name);
        const auto r = listing.right.constFind(name);
        const QFileInfo *leftInfo = l == listing.left.constEnd() ? nullptr : &*l;
        const QFileInfo *rightInfo = r == listing.right.constEnd() ? nullptr : &*r;
        const bool leftDir = leftInfo && leftInfo->isDir();
        const bool rightDir = rightInfo && rightInfo->isDir();
        FolderDiffItem item = itemOf(prefix.isEmpty() ? name : prefix + u'/' + name, leftInfo, rightInfo);
        item.isDir = leftDir || rightDir;
        if (leftInfo && rightInfo && leftDir != rightDir) {
            item.setDiffStatus(FolderDiffStatus::Different);
            result.append(item);
        } else if (item.isDir) {
            const QList<FolderDiffItem> under = compareTree(leftDir ? leftInfo->absoluteFilePath() : QString(),
                                                            rightDir ? rightInfo->absoluteFilePath() : QString(),
                                                            item.name, method, toleranceSec, rules);
            if (leftDir && rightDir)
                item.setDiffStatus(rolledUp(under));
            item.leftSize = item.rightSize = 0;
            addTotals(item, under);
            result.append(item);
            result.append(under);
        } else {
            if (leftInfo && rightInfo)
                item.setDiffStatus(statusOf(*leftInfo, *rightInfo, method, toleranceSec));
            result.append(item);
        }
    }
    return result;
}

QList<FolderDiffItem> compareLevel(const QString &left, const QString &right, CompareMethod method, qint32 toleranceSec,
                                   const QList<ManualAlignRule> &rules)
{
    const Listing listing = listingOf(left, right, rules);
    QList<FolderDiffItem> result;
    for (const QString &name : listing.names) {
        const bool hasLeft = listing.left.contains(name);
        const bool hasRight = listing.right.contains(name);
        const QFileInfo leftInfo = listing.left.value(name);
        const QFileInfo rightInfo = listing.right.value(name);
        FolderDiffItem item = itemOf(name, hasLeft ? &leftInfo : nullptr, hasRight ? &rightInfo : nullptr);
        item.isDir = hasLeft ? leftInfo.isDir() : rightInfo.isDir();
        if (hasLeft && hasRight && leftInfo.isDir() != rightInfo.isDir())
            item.setDiffStatus(FolderDiffStatus::Different);
        else if (hasLeft && hasRight && !leftInfo.isDir())
            item.setDiffStatus(statusOf(leftInfo, rightInfo, method, toleranceSec));
        result.append(item);
    }
    return result;
}

QList<FolderDiffItem> listStructure(const QString &left, const QString &right, bool recursive,
                                    const QList<ManualAlignRule> &rules)
{
    const Listing listing = listingOf(left, right, rules);
    QList<FolderDiffItem> result;
    for (const QString &name : listing.names) {
        const bool hasLeft = listing.left.contains(name);
        const bool hasRight = listing.right.contains(name);
        const QFileInfo leftInfo = listing.left.value(name);
        const QFileInfo rightInfo = listing.right.value(name);
        FolderDiffItem item = itemOf(name, hasLeft ? &leftInfo : nullptr, hasRight ? &rightInfo : nullptr);
        const bool leftDir = hasLeft && leftInfo.isDir();
        const bool rightDir = hasRight && rightInfo.isDir();
        item.isDir = leftDir || rightDir;
        result.append(item);
        if (recursive && item.isDir)
            result.append(
                prefixed(listStructure(leftDir ? leftInfo.absoluteFilePath() : left + u'/' + name,
                                       rightDir ? rightInfo.absoluteFilePath() : right + u'/' + name, true, rules),
                         name));
    }
    return result;
}

FolderTotals countContents(const QString &folder)
{
    FolderTotals totals;
    for (const QFileInfo &info : entriesOf(folder)) {
        if (info.isDir()) {
            const FolderTotals under = countContents(info.absoluteFilePath());
            totals.files += under.files;
            totals.folders += under.folders + 1;
            totals.bytes += under.bytes;
        } else {
            ++totals.files;
            totals.bytes += quint64(info.size());
        }
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

bool sameByDigest(const QString &left, const QString &right)
{
    QFile l(left);
    QFile r(right);
    if (!l.open(QIODevice::ReadOnly) || !r.open(QIODevice::ReadOnly))
        return false;
    QCryptographicHash leftHash(QCryptographicHash::Md5);
    QCryptographicHash rightHash(QCryptographicHash::Md5);
    for (;;) {
        const QByteArray leftBlock = l.read(block);
        const QByteArray rightBlock = r.read(block);
        if (leftBlock.size() != rightBlock.size())
            return false;
        if (leftBlock.isEmpty())
            return leftHash.result() == rightHash.result();
        leftHash.addData(leftBlock);
        rightHash.addData(rightBlock);
    }
}

bool sameByBlocks(const QString &left, const QString &right)
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
        if (std::strncmp(leftBlock.constData(), rightBlock.constData(), std::size_t(leftBlock.size())) != 0)
            return false;
    }
}

QByteArray crc32(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    quint32 state = 0xFFFFFFFF;
    for (const char byte : file.readAll()) {
        state ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            state = (state & 1U) != 0 ? (state >> 1U) ^ 0xEDB88320U : state >> 1U;
    }
    return QByteArray::fromHex(QByteArray::number(~state, 16).rightJustified(8, '0'));
}

} // namespace velmora::plain

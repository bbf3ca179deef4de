#include "folder_engine/test_tree.h"

#include <QDir>
#include <QTest>

#include <cstdlib>

namespace velmora::test {

TestTree::TestTree() : m_root(QDir(m_dir.path()).canonicalPath())
{
    folder(QStringLiteral("left"));
    folder(QStringLiteral("right"));
}

void TestTree::folder(const QString &relative)
{
    QVERIFY(QDir().mkpath(path(relative)));
}

void TestTree::file(const QString &relative, const QByteArray &bytes, qint64 seconds)
{
    folder(relative.section(u'/', 0, -2));
    QVERIFY(makeFile(path(relative), bytes));
    QFile file(path(relative));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(moment(seconds), QFileDevice::FileModificationTime));
}

void TestTree::link(const QString &relative, const QString &target)
{
    QVERIFY(QFile::link(target, path(relative)));
}

void TestTree::removeHostile()
{
    QCOMPARE(std::system(("rm -rf '" + m_root.toUtf8() + "'/*").constData()), 0);
}

QDateTime TestTree::moment(qint64 seconds)
{
    return QDateTime(QDate(2024, 2, 29), QTime(12, 0), Qt::UTC).addSecs(seconds);
}

QStringList drawn(const QList<FolderDiffItem> &items)
{
    QStringList lines;
    for (const FolderDiffItem &item : items) {
        QString line = QStringLiteral("=<>!").at(item.status) + item.name;
        if (item.isDir)
            line += u'/';
        if (item.leftSize != 0 || item.rightSize != 0)
            line += QStringLiteral(" %1 %2").arg(item.leftSize).arg(item.rightSize);
        lines.append(line);
    }
    return lines;
}

QStringList dumped(const QList<FolderDiffItem> &items)
{
    const auto time = [](const QDateTime &value) {
        return value.isValid() ? QString::number(value.toMSecsSinceEpoch()) : QStringLiteral("-");
    };
    QStringList lines;
    for (const FolderDiffItem &item : items) {
        lines.append(QStringList{item.name, item.leftPath, item.rightPath, QString::number(item.status),
                                 QString::number(item.leftSize), QString::number(item.rightSize), time(item.leftTime),
                                 time(item.rightTime), item.isDir ? QStringLiteral("folder") : QString()}
                         .join(u'|'));
    }
    return lines;
}

} // namespace velmora::test

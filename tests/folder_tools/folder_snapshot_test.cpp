#include "core/iso_times.h"
#include "folder/engine/folder_snapshot_sides.h"
#include "platform/file_access.h"
#include "support/files.h"
#include "support/test_main.h"
#include "vfs/local_folder.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <ctime>

using namespace velmora;
using namespace velmora::test;

namespace {

QByteArray digestOf(const QByteArray &contents)
{
    return QCryptographicHash::hash(contents, QCryptographicHash::Sha256);
}

QByteArray written(const FolderSnapshot &snapshot)
{
    QBuffer buffer;
    const bool isOpen = buffer.open(QIODevice::WriteOnly);
    return isOpen && writeFolderSnapshot(buffer, snapshot, {}) ? buffer.data() : QByteArray();
}

FolderSnapshotReading parsed(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    Progress silent;
    if (!buffer.open(QIODevice::ReadOnly))
        qFatal("no buffer");
    return readFolderSnapshot(buffer, {}, silent);
}

/// "path size time contents" for each entry, separated by "|"; "-" for contents that are not known.
FolderSnapshot snapshotOf(const char *entries)
{
    FolderSnapshot snapshot;
    for (const QString &text : words(entries)) {
        const QStringList parts = text.split(u' ');
        const QByteArray contents = parts[3].toUtf8();
        snapshot.entries.push_back({parts[0], parts[1].toLongLong(), parts[2].toLongLong(),
                                    contents == "-" ? QByteArray() : digestOf(contents)});
    }
    return snapshot;
}

/// The rows as "sign path remark", separated by "|".
QString drawn(const FolderSnapshotComparison &found)
{
    static constexpr std::array remarks{"", " moved ", " contents", " time"};
    QStringList rows;
    for (std::size_t i = 0; i < found.rows.size(); ++i) {
        const FolderSnapshotEntry *partner = found.partner(qsizetype(i));
        rows.append(QLatin1Char("=!<>"[std::size_t(found.rows[i].status)]) + found.path(qsizetype(i)) +
                    QLatin1String(remarks[std::size_t(found.rows[i].remark)]) + (partner ? partner->path : QString()));
    }
    return rows.join(u'|');
}

} // namespace

class FolderSnapshotTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rowsTellWhatHasBecomeOfFiles_data()
    {
        QTest::addColumn<FolderSnapshot>("left");
        QTest::addColumn<FolderSnapshot>("right");
        QTest::addColumn<QString>("rows");
        const auto add = [](const char *name, const char *left, const char *right, const char *rows) {
            QTest::newRow(name) << snapshotOf(left) << snapshotOf(right) << word(rows);
        };
        add("nothing", "", "", "");
        add("each status", "a 1 1 -|b 1 1 -|c 1 1 -|d 1 1 -", "b 1 1 -|c 2 1 -|d 1 2 -|e 1 1 -", "<a|=b|!c|!d|>e");
        add("one side has digests", "a 1 1 x|b 1 1 x", "a 1 1 -|b 1 2 -", "=a|!b");
        add("contents alone", "a 1 1 x|b 2 1 x", "a 1 1 y|b 1 1 y", "!a contents|!b");
        add("time alone", "a 1 1 x", "a 1 2 x", "!a time");
        add("moved", "a 1 1 x|b 1 1 y", "c 1 1 x|d 1 1 z", "<a moved c|<b|>c moved a|>d");
        add("not by size and time", "a 1 1 -", "b 1 1 -", "<a|>b");
        add("not when empty", "a 0 1 x", "b 0 1 x", "<a|>b");
        add("names first", "a/x 1 1 t|b/y 1 1 t", "c/y 1 1 t|d/z 1 1 t",
            "<a/x moved d/z|<b/y moved c/y|>c/y moved b/y|>d/z moved a/x");
        add("a copy is no move", "a 1 1 x", "a 1 1 x|b 1 1 x", "=a|>b");
        add("fewer than before", "a 1 1 x|b 1 1 x", "c 1 1 x", "<a moved c|<b|>c moved a");
    }

    void rowsTellWhatHasBecomeOfFiles()
    {
        QFETCH(FolderSnapshot, left);
        QFETCH(FolderSnapshot, right);
        QTEST(drawn(compareFolderSnapshots({left, right})), "rows");
    }

    void aFolderIsTheSameAsItsSnapshot()
    {
        const QTemporaryDir temporary;
        const QDir root(temporary.path());
        QVERIFY(root.mkpath(word("b/deep")) && root.mkpath(word("empty")));
        QVERIFY(makeFile(root.filePath(word("b/deep/file")), "one"));
        QVERIFY(makeFile(root.filePath(word("b-")), QByteArray(3'000'000, 'x')));
#ifdef Q_OS_UNIX
        QVERIFY(makeFile(root.filePath(word(".hidden")), "no"));
        QVERIFY(QFile::link(temporary.path(), root.filePath(word("b/cycle"))));
        // A name that is no text, one with a line feed, and a time to the millisecond.
        const std::string odd = nativeName(temporary.path() + u'/') + "\xff\n\"";
        std::FILE *file = std::fopen(odd.c_str(), "w");
        QVERIFY(file && std::fclose(file) == 0);
        QFile old(root.filePath(word("b-")));
        QVERIFY(old.open(QIODevice::ReadWrite));
        QVERIFY(old.setFileTime(QDateTime::fromMSecsSinceEpoch(999'999'999'999), QFileDevice::FileModificationTime));
        old.close();
        const qsizetype files = 3;
#else
        const qsizetype files = 2;
#endif
        Progress silent;
        const QTemporaryDir elsewhere;
        for (const FolderSnapshotDigests digests : {FolderSnapshotDigests::Sha256, FolderSnapshotDigests::None}) {
            const FolderSnapshotScan scan = scanFolderSnapshot(localFolder(temporary.path()), digests, {}, silent);
            QVERIFY(!scan.cancelled && scan.problems.isEmpty());
            QCOMPARE(qsizetype(scan.snapshot.entries.size()), files);
            const FolderSnapshotReading read = parsed(written(scan.snapshot));
            QVERIFY(read.ok());
            QCOMPARE(read.snapshot.entries, scan.snapshot.entries);
            QCOMPARE(read.snapshot.root, scan.snapshot.root);
            const QString path = elsewhere.filePath(digests == FolderSnapshotDigests::None ? word("a.kvsnapshot")
                                                                                           : word("B.KVSNAPSHOT"));
            QVERIFY(saveFolderSnapshot(path, scan.snapshot, {}).ok());
        }
        const Sides<FolderSnapshotSide> sides = readFolderSnapshotSides(
            {elsewhere.filePath(word("a.kvsnapshot")), elsewhere.filePath(word("B.KVSNAPSHOT"))},
            FolderSnapshotDigests::Sha256, {}, silent);
        QVERIFY(!sides.left.isLive && !sides.right.isLive);
        QVERIFY(!sides.left.reading.snapshot.hasDigests());
        for (const FolderSnapshotEntry &entry : sides.right.reading.snapshot.entries)
            QCOMPARE(entry.digest, digestOf(entry.path == u"b-" ? QByteArray(3'000'000, 'x')
                                            : entry.size > 0    ? "one"
                                                                : ""));
        const FolderSnapshotComparison found =
            compareFolderSnapshots({sides.left.reading.snapshot, sides.right.reading.snapshot});
        QCOMPARE(found.counts.same, files);
        QCOMPARE(found.counts.all(), files);
#ifdef Q_OS_UNIX
        QCOMPARE(std::remove(odd.c_str()), 0); // the toolkit cannot
#endif
    }

    void otherProgramsReadAndWriteThem()
    {
        QRandomGenerator random(19);
        FolderSnapshot snapshot{word("/r\u00e9\"\\"), word("2024-05-01T13:45:10"), {}};
        const QString letters = word("a\u00e9\u4e2d\t\n\r\b\"\\\U0001F600");
        for (int i = 0; i < 500; ++i) {
            QString path = QString::number(i + 1000);
            for (int k = random.bounded(6); k > 0; --k)
                path += letters.mid(random.bounded(letters.size() - 2), 1);
            snapshot.entries.push_back({path, qint64(random.bounded(1LL << 50)), qint64(random.bounded(1LL << 42)),
                                        i % 2 ? digestOf(path.toUtf8()) : QByteArray()});
        }
        const QJsonDocument document = QJsonDocument::fromJson(written(snapshot));
        QCOMPARE(document.object().keys(), words("created|entries|root|version"));
        QCOMPARE(document.object().value(word("version")).toInt(), 1);
        const QJsonArray entries = document.object().value(word("entries")).toArray();
        for (qsizetype i = 0; i < entries.size(); ++i) {
            const FolderSnapshotEntry &entry = snapshot.entries[std::size_t(i)];
            const QJsonObject object = entries[i].toObject();
            QCOMPARE(object.value(word("path")).toString(), entry.path);
            QCOMPARE(object.value(word("size")).toInteger(), entry.size);
            QCOMPARE(QDateTime::fromString(object.value(word("modified")).toString(), Qt::ISODateWithMs),
                     QDateTime::fromMSecsSinceEpoch(*entry.modifiedMs));
            QCOMPARE(object.contains(word("sha256")), !entry.digest.isEmpty());
        }
        for (const QJsonDocument::JsonFormat format : {QJsonDocument::Indented, QJsonDocument::Compact}) {
            const FolderSnapshotReading read = parsed(document.toJson(format));
            QVERIFY(read.ok());
            QCOMPARE(read.snapshot.entries, snapshot.entries);
        }
    }

    void whatIsNoSnapshotIsRefused_data()
    {
        using Fault = FolderSnapshotFault;
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("fault");
        const auto add = [](Fault fault, const QByteArray &text) {
            QTest::newRow(text.left(40).constData()) << text << int(fault);
        };
        const auto entry = [](const QByteArray &members) { return "{\"entries\":[{" + members + "}]}"; };
        add(Fault::None, "{\"entries\":[]}");
        add(Fault::None, "\xEF\xBB\xBF {\"x\":[{\"y\":[1e3,-0.5,null,true]}],\"entries\":[]} \n");
        add(Fault::None, entry("\"path\":\"a\",\"size\":1e3,\"more\":{\"path\":\"/\"}"));
        add(Fault::None, entry("\"path\":\"\\ud800\\udcff\",\"size\":0,\"modified\":\"soon\""));
        add(Fault::NoEntries, "{}");
        add(Fault::NoEntries, "[1]");
        add(Fault::NoEntries, "{\"entries\":{}}");
        for (const char *bad : {"", "{", "{\"entries\":[", "{\"entries\":[],}", "{\"entries\":[]} x",
                                "{\"entries\":[,]}", "{\"entries\":[],\"x\":01}", "{\"entries\":[],\"x\":\"\xff\"}",
                                "{\"entries\":[],\"x\":\"\n\"}", "{\"entries\":[],\"x\":\"\\q\"}", "nul", "{1:2}"})
            add(Fault::NotJson, bad);
        add(Fault::NotJson, "{\"x\":" + QByteArray(100'000, '['));
        add(Fault::NotJson, "{\"x\":\"" + QByteArray(3'000'000, 'a') + "\",\"entries\":[]}");
        add(Fault::BadEntry, "{\"entries\":[5]}");
        for (const char *path : {"", "/etc/passwd", "../a", "a/../../b", "a//b", "a/", ".", "a\\u0000b"})
            add(Fault::BadEntry, entry(QByteArray("\"size\":1,\"path\":\"") + path + "\""));
        for (const char *size : {"-1", "1.5", "\"1\"", "1e30", "null"})
            add(Fault::BadEntry, entry(QByteArray("\"path\":\"a\",\"size\":") + size));
        add(Fault::BadEntry, entry("\"path\":\"a\",\"size\":1,\"sha256\":\"00\""));
    }

    void whatIsNoSnapshotIsRefused()
    {
        QFETCH(QByteArray, text);
        const FolderSnapshotReading read = parsed(text);
        QTEST(int(read.fault), "fault");
        QVERIFY(read.ok() || read.snapshot.entries.empty());
    }

    void theLastOfRepeatedPathsCounts()
    {
        const FolderSnapshotReading read = parsed(R"({"entries":[{"path":"b","size":1},{"path":"a","size":2},
            {"path":"b","size":3},{"path":"b","size":4}]})");
        QCOMPARE(read.repeated, 2);
        QCOMPARE(read.snapshot.entries, (std::vector<FolderSnapshotEntry>{{word("a"), 2, {}}, {word("b"), 4, {}}}));
    }

    void timesSurviveTheirTexts()
    {
#ifdef Q_OS_UNIX
        const QByteArray zone = qgetenv("TZ");
        for (const char *place : {"Europe/Berlin", "Australia/Lord_Howe", "Asia/Kathmandu", "UTC"}) {
            qputenv("TZ", place);
            tzset();
            IsoTimes times;
            QRandomGenerator random(7);
            for (int i = 0; i < 6000; ++i) {
                // Every quarter of an hour of two months in which clocks change, and any time.
                const qint64 time =
                    i < 3000 ? 1'711'000'000'000 + qint64(i) * 900'000 * 6 : qint64(random.bounded(1LL << 43));
                const QByteArray text = times.text(time);
                const QDateTime read = QDateTime::fromString(QString::fromLatin1(text), Qt::ISODateWithMs);
                QCOMPARE(read.toMSecsSinceEpoch(), time);
                QCOMPARE(times.time(QString::fromLatin1(text)), std::optional(time));
                const QDateTime local = read.toLocalTime();
                QCOMPARE(times.time(local.date(), local.time()),
                         QDateTime(local.date(), local.time()).toMSecsSinceEpoch());
            }
        }
        zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
        tzset();
#endif
        IsoTimes times;
        const QDateTime noon(QDate(2024, 5, 1), QTime(12, 0));
        for (const char *form :
             {"2024-05-01T12:00:00", "2024-05-01T12:00:00.000", "2024-05-01 12:00:00", "2024-05-01T12:00"})
            QCOMPARE(times.time(word(form)), std::optional(noon.toMSecsSinceEpoch()));
        QCOMPARE(times.time(word("2024-05-01T12:00:00.25+02:00")), std::optional(qint64(1'714'557'600'250)));
        for (const char *form : {"", "2024-05-01T", "2024-13-01T12:00:00", "2024-05-01T12:60:00", "yesterday"})
            QVERIFY(!times.time(word(form)));
        for (const qint64 odd : {qint64(-1), qint64(-86'400'001), qint64(999'999'999'999'000)}) // the year 33658
            QCOMPARE(times.time(QString::fromLatin1(times.text(odd))), std::optional(odd));
    }
};

VELMORA_TEST(FolderSnapshotTest)
#include "folder_snapshot_test.moc"

#include "core/value_entries.h"
#include "support/files.h"
#include "support/test_main.h"
#include "system/engine/snapshot_file.h"
#include "system_fixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

using namespace velmora;
using namespace velmora::test;

namespace {

/// A snapshot from "key=value key=value".
Snapshot snapshotOf(const QByteArray &items)
{
    Snapshot snapshot;
    for (const QString &item : QString::fromLatin1(items).split(u' ', Qt::SkipEmptyParts))
        snapshot.insert(item.section(u'=', 0, 0), {item.section(u'=', 1)});
    return snapshot;
}

/// One line for each row: sign, key, and the values on both sides.
QString picture(const QList<KeyedRow> &rows)
{
    QStringList lines;
    for (const KeyedRow &row : rows) {
        const QChar sign = word("=~<>")[int(row.status)];
        lines.append(word("%1%2(%3|%4)").arg(QString(sign), row.key, row.left, row.right));
    }
    return lines.join(u' ');
}

QString picture(const QList<EntryRow> &rows)
{
    QString line;
    for (const EntryRow &row : rows)
        line += (row.onLeft && row.onRight ? u'=' : row.onLeft ? u'<' : u'>') + row.text;
    return line;
}

} // namespace

class SnapshotEngineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pairsKeys()
    {
        struct {
            const char *left, *right, *exact, *ignoringCase;
        } const cases[] = {
            {"", "", "", ""},
            {"A=1 B=1 C=1", "B=1 C=2 D=2", "<A(1|) =B(1|1) ~C(1|2) >D(|2)", "<A(1|) =B(1|1) ~C(1|2) >D(|2)"},
            {"A=", "A= B=", "=A(|) >B(|)", "=A(|) >B(|)"}, // an empty value is a value
            {"A=x", "A=X", "~A(x|X)", "~A(x|X)"},          // values keep their case
            {"Path=1", "PATH=1", ">PATH(|1) <Path(1|)", "=Path(1|1)"},
            {"b=1 C=1", "a=1", "<C(1|) >a(|1) <b(1|)", ">a(|1) <b(1|) <C(1|)"}, // order of keys
            {"PATH=1 path=2", "Path=3 path=4", "<PATH(1|) >Path(|3) ~path(2|4)",
             "~path(2|4) ~PATH(1|3)"},                              // the same spelling first
            {"A=1", "A=1 a=2", "=A(1|1) >a(|2)", "=A(1|1) >a(|2)"}, // more spellings than the other side
        };
        for (const auto &[left, right, exact, ignoringCase] : cases) {
            const Snapshot a = snapshotOf(left);
            const Snapshot b = snapshotOf(right);
            QCOMPARE(picture(compareSnapshots(a, b, KeyMatch::Exact)), word(exact));
            QCOMPARE(picture(compareSnapshots(a, b, KeyMatch::IgnoringCase)), word(ignoringCase));
        }
    }

    void countsAndNamesServices()
    {
        const Snapshot left{{word("W32Time"), serviceItem(word("Time"), word("Running"), word("Auto"))}};
        const Snapshot right{{word("W32Time"), serviceItem({}, word("Running"), word("Manual"))},
                             {word("Spooler"), serviceItem(word("Print"), word("Stopped"), {})}};
        const QList<KeyedRow> rows = compareSnapshots(left, right, KeyMatch::Exact);
        QCOMPARE(picture(rows), word(">Spooler(|Stopped / ) ~W32Time(Running / Auto|Running / Manual)"));
        QCOMPARE(rows[0].note, word("Print"));
        QCOMPARE(rows[1].note, word("Time"));
        QCOMPARE(countRows(rows), (PairCounts{0, 1, 0, 1}));
    }

    void readsFiles_data()
    {
        QTest::addColumn<SnapshotForm>("form");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("fault");
        QTest::addColumn<QString>("detail");
        QTest::addColumn<QString>("items"); ///< compared with nothing
        const auto good = [](const char *name, SnapshotForm form, const QByteArray &bytes, const char *items) {
            QTest::newRow(name) << form << bytes << int(SnapshotFault::None) << QString() << QString::fromUtf8(items);
        };
        const auto bad = [](const char *name, SnapshotForm form, const QByteArray &bytes, SnapshotFault fault,
                            const char *detail = "") {
            QTest::newRow(name) << form << bytes << int(fault) << QString::fromLatin1(detail) << QString();
        };
        constexpr auto texts = SnapshotForm::TextObject;
        constexpr auto services = SnapshotForm::ServiceArray;
        good("no variables", texts, "{}", "");
        good("variables", texts, json("{'B': '2', 'A': 'ä\\n\\u0022x\\u0022', '': 'no name'}"),
             "<(no name|) <A(ä\n\"x\"|) <B(2|)");
        good("byte-order mark", texts, "\xEF\xBB\xBF{\"A\": \"1\"}", "<A(1|)");
        good("a name twice", texts, json("{'A': '1', 'A': '2'}"), "<A(2|)");
        bad("a number", texts, json("{'A': '1', 'B': 2}"), SnapshotFault::NotText, "B");
        bad("an array of variables", texts, "[]", SnapshotFault::WrongRoot);
        bad("cut short", texts, json("{'A': '1'"), SnapshotFault::NotJson);
        bad("nothing", texts, "", SnapshotFault::NotJson);
        bad("a lone text", texts, "\"A\"", SnapshotFault::NotJson);
        bad("too large", texts, QByteArray(int(largestSnapshotFile) + 1, ' '), SnapshotFault::TooLarge);
        good("no services", services, "[]", "");
        good("services", services,
             json("[{'name': 'b', 'displayName': 'B', 'state': 'Running', 'startMode': 'Auto', 'more': 7}, {'name': "
                  "'a'}]"),
             "<a( / |) <b(Running / Auto|)");
        bad("one service alone", services, json("{'name': 'a'}"), SnapshotFault::WrongRoot);
        bad("no service", services, json("[{'name': 'a'}, 5]"), SnapshotFault::NoName);
        bad("a service without a name", services, json("[{'state': 'Running'}]"), SnapshotFault::NoName);
        bad("a state that is a number", services, json("[{'name': 'a', 'state': 4}]"), SnapshotFault::NotText, "state");
        bad("a name that is none", services, json("[{'name': null}]"), SnapshotFault::NotText, "name");
    }

    void readsFiles()
    {
        QFETCH(SnapshotForm, form);
        QFETCH(QByteArray, bytes);
        QFETCH(int, fault);
        QFETCH(QString, detail);
        QFETCH(QString, items);
        TestFiles files;
        const SnapshotReading reading = loadSnapshot(files.write(word("file"), bytes), form);
        QCOMPARE(int(reading.fault), fault);
        if (!detail.isEmpty())
            QCOMPARE(reading.detail, detail);
        QCOMPARE(picture(compareSnapshots(reading.snapshot, {}, KeyMatch::Exact)), items);
    }

    void tellsWhatCannotBeOpened()
    {
        TestFiles files;
        for (const QString &path : {files.path(word("missing")), files.path({}), QString()}) {
            const SnapshotReading reading = loadSnapshot(path, SnapshotForm::TextObject);
            QCOMPARE(reading.fault, SnapshotFault::CannotOpen);
            QVERIFY(!reading.detail.isEmpty());
        }
    }

    void theLastOfAServiceTwiceCounts()
    {
        const SnapshotReading reading =
            parseSnapshot(json("[{'name': 'a', 'state': 'Running'}, {'name': 'b'}, {'name': 'a', 'state': 'Stopped'}]"),
                          SnapshotForm::ServiceArray);
        QVERIFY(reading.ok());
        QCOMPARE(reading.repeated, 1);
        QCOMPARE(reading.snapshot[word("a")].state, word("Stopped"));
    }

    void writesWhatItReads()
    {
        QRandomGenerator random(20261121);
        const auto text = [&random] {
            QString result;
            for (quint32 length = random.bounded(12U); length > 0; --length)
                result += word("aÄ\"\\\n\t{}: 漢")[int(random.bounded(11U))];
            return result;
        };
        for (int i = 0; i < 200; ++i) {
            Snapshot snapshot;
            Snapshot services;
            for (quint32 items = random.bounded(8U); items > 0; --items) {
                snapshot.insert(text(), {text()});
                services.insert(text(), serviceItem(text(), text(), text()));
            }
            const auto comesBack = [](const Snapshot &written, SnapshotForm form) {
                return parseSnapshot(snapshotToJson(written, form), form).snapshot == written;
            };
            QVERIFY(comesBack(snapshot, SnapshotForm::TextObject));
            QVERIFY(comesBack(services, SnapshotForm::ServiceArray));
        }
        const QJsonDocument document = QJsonDocument::fromJson(snapshotToJson(
            {{word("a"), serviceItem(word("A"), word("Running"), word("Auto"))}}, SnapshotForm::ServiceArray));
        QCOMPARE(document, QJsonDocument::fromJson(
                               json("[{'name': 'a', 'displayName': 'A', 'state': 'Running', 'startMode': 'Auto'}]")));
    }

    void keepsSecretsFromOthers()
    {
        TestFiles files;
        const auto mayOthersRead = [&files](const QString &name) {
            return QFile::permissions(files.path(name)) & (QFile::ReadGroup | QFile::ReadOther);
        };
        const QString open = files.write(word("open"), "old");
        QVERIFY(QFile::setPermissions(open, QFile::permissions(open) | QFile::ReadGroup | QFile::ReadOther));
        if (!(mayOthersRead(word("open"))))
            QSKIP("This file system has no access bits.");
        const Snapshot snapshot = snapshotOf("TOKEN=secret");
        for (const char *name : {"open", "new"}) {
            const QString path = files.path(QLatin1String(name));
            QVERIFY(saveSnapshot(path, snapshot, SnapshotForm::TextObject, SnapshotReaders::OwnerOnly).ok());
            QVERIFY2(QFile(path).open(QIODevice::ReadOnly), name);
#ifndef Q_OS_WIN
            QVERIFY2(!mayOthersRead(QLatin1String(name)), name);
#endif
        }
    }

    void leavesTheFileThatItCannotReplace()
    {
        TestFiles files;
        const QString folder = files.path(word("folder"));
        QVERIFY(QDir().mkpath(folder));
        for (const SnapshotReaders readers : {SnapshotReaders::Everybody, SnapshotReaders::OwnerOnly}) {
            QVERIFY(!saveSnapshot(folder, {}, SnapshotForm::TextObject, readers).ok());
            QVERIFY(!saveSnapshot(files.path(word("none/x")), {}, SnapshotForm::TextObject, readers).ok());
        }
        QVERIFY(QFileInfo(folder).isDir());
    }

    void splitsListsIntoEntries()
    {
        const std::pair<const char *, const char *> lists[] = {
            {"/usr/bin:/bin", "/usr/bin|/bin"},
            {"~/bin:$HOME/x:/a b", "~/bin|$HOME/x|/a b"},
            {"C:\\Windows;%HOME%\\bin;\\\\server\\x;.", "C:\\Windows|%HOME%\\bin|\\\\server\\x|."},
            {".COM;.EXE", ".COM|.EXE"},
            {"line\nother: line", "line|other: line"},
            // What is no list:
            {"/usr/bin", ""},
            {"C:\\Windows", ""},
            {":0", ""},
            {"https://x/y:80", ""},
            {"rs=0:di=01;34:*.tar=01;31", ""},
            {"a;b", ""},
            {":", ""},
            {"", ""},
        };
        for (const auto &[value, entries] : lists)
            QVERIFY2(valueEntries(word(value)) == words(entries), value);
    }

    void alignsEntries()
    {
        const auto aligned = [](const char *left, const char *right) {
            const auto list = [](const char *text) {
                return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
            };
            return picture(alignEntries(list(left), list(right)));
        };
        QCOMPARE(aligned("", ""), QString());
        QCOMPARE(aligned("a b c", "a b c"), word("=a=b=c"));
        QCOMPARE(aligned("a b c", "a x c"), word("=a<b>x=c"));
        QCOMPARE(aligned("a b", "b a"), word("<a=b>a"));
        QCOMPARE(aligned("a a", "a"), word("=a<a"));
        // Two lists that share much are not taken for foreign, and those that are too long for the table keep all.
        QStringList left;
        QStringList right;
        for (int i = 0; i < 5000; ++i) {
            left.append(QString::number(2 * i));
            right.append(QString::number(2 * i + 1));
        }
        const QList<EntryRow> rows = alignEntries(left, right);
        QCOMPARE(rows.size(), 10000);
        QVERIFY(rows.first().onLeft && rows.last().onRight);
    }
};

VELMORA_TEST(SnapshotEngineTest)
#include "snapshot_engine_test.moc"

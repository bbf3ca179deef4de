#include "core/safe_file.h"
#include "filetypes/registry/engine/reg_writer.h"
#include "filetypes/registry/engine/registry_file.h"
#include "filetypes/registry/engine/registry_patch.h"
#include "filetypes/registry/engine/registry_text.h"
#include "filetypes/registry/noise_dialog.h"
#include "filetypes/registry/registry_compare_widget.h"
#include "filetypes/registry/registry_rows.h"
#include "session/list/list_view.h"
#include "session/list/tree_model.h"
#include "session/list/tree_view.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace velmora;
using namespace velmora::test;

namespace {

QByteArray version5(const char *entries)
{
    const QString text = QStringLiteral("Windows Registry Editor Version 5.00\r\n\r\n") + word(entries);
    QByteArray bytes("\xff\xfe");
    for (const QChar c : text)
        bytes.append(char(c.unicode() & 0xff)).append(char(c.unicode() >> 8));
    return bytes;
}

/// A tree as lines: "path\name type text", "-" before what is deleted.
QStringList lines(const RegistryTree &tree)
{
    QStringList lines;
    for (const RegistryKey &key : tree.keys) {
        lines.append((key.isDeletion ? QStringLiteral("-[") : QStringLiteral("[")) + key.path + u']');
        for (const RegistryValue &value : key.values)
            lines.append(
                value.isDeletion
                    ? u'-' + value.name
                    : QStringLiteral("%1 %2 %3").arg(value.name, registryTypeName(value.type), valueText(value)));
    }
    return lines;
}

/// A registry in memory.
class MadeRegistry final : public LiveRegistry {
public:
    QString read(const LiveKey &key, const Sink &sink, qsizetype &) const override
    {
        for (auto at = keys.begin(); at != keys.end(); ++at) {
            if (isWithin(at.key(), key.path))
                sink(at.key(), at.value().values());
        }
        return {};
    }
    QString createKey(const LiveKey &key) override
    {
        keys[key.path];
        return {};
    }
    QString setValue(const LiveKey &key, const LiveValue &value) override
    {
        keys[key.path][value.name] = value;
        return {};
    }
    QString removeValue(const LiveKey &key, const QString &name) override
    {
        keys[key.path].remove(name);
        return {};
    }
    QString removeKey(const LiveKey &key) override
    {
        keys.removeIf([&](const auto &entry) { return isWithin(entry.key(), key.path); });
        return {};
    }

    QMap<QString, QMap<QString, LiveValue>> keys;
};

RegistryTree treeOf(const LiveRegistry &registry)
{
    Progress none;
    return readLiveKey(registry, {word("HKEY_CURRENT_USER\\S")}, {}, none).tree;
}

/// Data as every program writes it: a registry may complete a text that has no end.
QByteArray dataOf(quint32 type, QRandomGenerator &random)
{
    const bool isText = type == 1 || type == 2 || type == 7;
    return isText ? QByteArray("a\0\0\0", 4).replace(0, 1, QByteArray(1, char('a' + random.bounded(2))))
                  : QByteArray(random.bounded(5), char(random.bounded(2)));
}

/// Some keys below HKCU\S with some values, out of few, so that two of them share a lot.
void fill(MadeRegistry &registry, QRandomGenerator &random)
{
    registry.keys[word("HKEY_CURRENT_USER\\S")];
    for (int k = random.bounded(12); k > 0; --k) {
        QString path = word("HKEY_CURRENT_USER\\S");
        for (int depth = random.bounded(3); depth >= 0; --depth) {
            path += word("\\") + QChar(u'a' + random.bounded(3));
            registry.keys[path];
        }
        for (int v = random.bounded(4); v > 0; --v) {
            const QString name = v == 1 ? QString() : QString(QChar(u'v' + random.bounded(3)));
            const quint32 type = random.bounded(13U);
            registry.keys[path][name] = {name, type, dataOf(type, random)};
        }
    }
}

} // namespace

class RegistryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsWhatEditorsWrite_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("expected"); // between "|"
        const auto row = [](const char *name, const QByteArray &file, const char *expected) {
            QTest::newRow(name) << file << word(expected);
        };
        row("texts", version5("[HKEY_CURRENT_USER\\A]\r\n@=\"x\"\r\n\"n \\\"q\\\\\"=\"a \\\"b\\\\ ü\"\r\n"),
            "[HKEY_CURRENT_USER\\A]| REG_SZ x|n \"q\\ REG_SZ a \"b\\ ü");
        row("numbers", version5("[K\\A]\r\n\"d\"=dword:0000002a\r\n\"q\"=hex(b):2a,00,00,00,00,00,00,00\r\n"),
            "[K\\A]|d REG_DWORD 0x0000002a (42)|q REG_QWORD 0x000000000000002a (42)");
        row("lines that go on", version5("[K\\A]\r\n\"l\"=hex(7):61,00,00,00,\\\r\n  62,00,00,00,00,00 ; two\r\n"),
            "[K\\A]|l REG_MULTI_SZ a\nb");
        row("a text over lines", version5("[K\\A]\r\n\"t\"=\"one\r\ntwo\"\r\n\"u\"=\"3\"\r\n"),
            "[K\\A]|t REG_SZ one\r\ntwo|u REG_SZ 3");
        row("deletions", version5("[-K\\Gone]\r\n[K\\A]\r\n\"n\"=-\r\n"), "[K\\A]|-n|-[K\\Gone]");
        row("twice, in other letters", version5("[K\\b]\r\n\"n\"=\"1\"\r\n[k\\A]\r\n[K\\B]\r\n\"N\"=\"2\"\r\n"),
            "[k\\A]|[K\\b]|N REG_SZ 2");
        row("brackets in a key", version5("[K\\A]b]\r\n"), "[K\\A]b]");
        row("version 4",
            "REGEDIT4\r\n[K\\A]\r\n\"n\"=\"Gr\xfc\xdf"
            "e aus M\xfcnchen\"\r\n\"e\"=hex(2):fc,00\r\n",
            "[K\\A]|e REG_EXPAND_SZ ü|n REG_SZ Grüße aus München");
        row("version 4 whose letters stand as digits", "REGEDIT4\r\n[K\\A]\r\n\"e\"=hex(2):47,72,fc,df,65,00\r\n",
            "[K\\A]|e REG_EXPAND_SZ Grüße");
        row("binary", version5("[K\\A]\r\n\"b\"=hex:41,00,ff\r\n"),
            "[K\\A]|b REG_BINARY 41 00 ff                                         A..");
        row("odd data", version5("[K\\A]\r\n\"b\"=hex(1):41\r\n"),
            "[K\\A]|b REG_SZ 41                                               A");
    }

    void readsWhatEditorsWrite()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, expected);
        const RegistryReading reading = readRegistry(file);
        QVERIFY(reading.ok());
        QCOMPARE(reading.badLines, 0);
        QCOMPARE(lines(reading.tree), expected.split(u'|'));
        // What is written is read again as the same.
        QCOMPARE(lines(readRegistry(registryFile(reading.tree)).tree), lines(reading.tree));
    }

    void saysWhatIsNoEntry()
    {
        const RegistryReading reading = readRegistry(
            version5("[K\\A]\r\n\"n\"=dword:xyz\r\nwords\r\n\"ok\"=\"1\"\r\n\"open\"=\"...\r\n\"b\"=hex:zz\r\n"));
        QVERIFY(reading.ok());
        QCOMPARE(reading.badLines, 4);
        QCOMPARE(reading.firstBadLine, 4);
        QCOMPARE(lines(reading.tree), words("[K\\A]|ok REG_SZ 1"));
        QCOMPARE(readRegistry("words\n").fault, RegistryFault::NotRegistry);
        QCOMPARE(readRegistry({}).fault, RegistryFault::NotRegistry);
    }

    void readsWhatIsLeftOfAFile()
    {
        const QByteArray five =
            version5("[K\\A]\r\n\"d\"=dword:0000002a\r\n\"h\"=hex:41,42,\\\r\n  43\r\n\"t\"=\"text\"\r\n"
                     "[-K\\B]\r\n[K\\C]\r\n@=hex(7):61,00,00,00,00,00\r\n");
        const QByteArray four =
            "REGEDIT4\r\n\r\n[K\\A]\r\n\"d\"=dword:0000002a\r\n\"e\"=hex(2):fc,00\r\n\"t\"=\"\xfc\"\r\n";
        for (const QByteArray &whole : {five, four}) {
            const QStringList all = lines(readRegistry(whole).tree);
            QVERIFY(readRegistry(whole).badLines == 0);
            for (qsizetype length = 0; length < whole.size(); ++length) {
                const RegistryReading reading = readRegistry(whole.first(length));
                QVERIFY(reading.ok() || reading.tree.keys.empty());
                // What is cut in two is told, but for bytes that end at a byte; all before it is there.
                QStringList rest = lines(reading.tree);
                rest.removeIf([&](const QString &line) { return all.contains(line); });
                QVERIFY2(rest.isEmpty() || (rest.size() == 1 && rest.first().contains(QRegularExpression(
                                                                    word("REG_(BINARY|MULTI_SZ|EXPAND_SZ)")))),
                         qPrintable(rest.join(u'|')));
            }
        }
    }

    void comparesPathsByTheirEntries()
    {
        const auto value = [](const char *text) {
            RegistryValue made;
            made.data = readRegistry(version5(qPrintable(word("[K]\r\n@=\"") + word(text) + word("\"\r\n"))))
                            .tree.keys.at(0)
                            .values.at(0)
                            .data;
            return made;
        };
        const auto changes = entryChanges(value("C:\\\\A;C:\\\\B"), value("c:\\\\b;C:\\\\N;C:\\\\A"));
        QVERIFY(changes.has_value());
        QCOMPARE(changes->added, 1);
        QCOMPARE(changes->removed, 0);
        QVERIFY(!entryChanges(value("one; two"), value("one; three")).has_value());
    }

    /// Random trees: carried out in a registry, a patch makes one side into the other, and its undo brings it back.
    void patchesMakeOneSideIntoTheOther()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 300; ++round) {
            MadeRegistry left;
            MadeRegistry right;
            fill(left, random);
            fill(right, random);
            const RegistryTree before = treeOf(left);
            const RegistryComparison comparison = compareRegistry(before, treeOf(right), {});
            // As a file they are read again, and not only as they were made.
            const RegistryTree patch = readRegistry(registryFile(registryPatch(comparison, Side::Left))).tree;
            const RegistryTree undo = readRegistry(registryFile(registryUndo(before, patch))).tree;
            QVERIFY(writeToRegistry(left, RegistryView::Own, patch).ok());
            QCOMPARE(lines(treeOf(left)), lines(treeOf(right)));
            QVERIFY(writeToRegistry(left, RegistryView::Own, undo).ok());
            QCOMPARE(lines(treeOf(left)), lines(before));
        }
    }

    /// The same in the registry of the system, where there is one: in a key that only this test sees.
    void patchesWorkInTheRegistryOfTheSystem()
    {
        LiveRegistry *const system = LiveRegistry::system();
        if (!system)
            QSKIP("this system has no registry");
        QRandomGenerator random(11);
        const LiveKey key{word("HKEY_CURRENT_USER\\S")};
        QCOMPARE(system->createKey(key), QString());
        for (int round = 0; round < 20; ++round) {
            MadeRegistry wanted;
            fill(wanted, random);
            const RegistryTree before = treeOf(*system);
            const RegistryComparison comparison = compareRegistry(before, treeOf(wanted), {});
            const RegistryTree patch = registryPatch(comparison, Side::Left);
            const RegistryWriting writing = writeToRegistry(*system, RegistryView::Own, patch);
            QVERIFY2(writing.ok(), qPrintable(writing.error));
            QCOMPARE(lines(treeOf(*system)), lines(treeOf(wanted)));
            QVERIFY(writeToRegistry(*system, RegistryView::Own, registryUndo(before, patch)).ok());
            QCOMPARE(lines(treeOf(*system)), lines(before));
            QVERIFY(writeToRegistry(*system, RegistryView::Own, patch).ok());
        }
        QVERIFY(!system->removeKey({word("HKEY_CURRENT_USER")}).isEmpty());
        QCOMPARE(system->removeKey(key), QString());
        QCOMPARE(treeOf(*system).keys.size(), 0U);
    }

    /// Only with a profile that is thrown away: the keys are those of all users.
    void theViewsOfTheSystemStayApart()
    {
        LiveRegistry *const system = LiveRegistry::system();
        if (!system || !qEnvironmentVariableIsSet("VELMORA_THROWAWAY_PROFILE"))
            QSKIP("no registry to write to");
        const QString name =
            word("HKLM\\Software\\VelmoraTests-") + QString::number(QCoreApplication::applicationPid());
        const auto keyIn = [&](const char *view) { return *liveKeyOf(word(view) + name); };
        const auto linesIn = [&](const char *view) {
            Progress none;
            return lines(readLiveKey(*system, keyIn(view), {}, none).tree).mid(1);
        };
        for (const auto &[view, letter] : {std::pair("32:", 'a'), std::pair("64:", 'b')}) {
            QCOMPARE(system->createKey(keyIn(view)), QString());
            const QByteArray data = QByteArray(1, letter) + QByteArray(3, '\0');
            QCOMPARE(system->setValue(keyIn(view), {word("v"), 1, data}), QString());
        }
        QCOMPARE(linesIn("32:"), words("v REG_SZ a"));
        QCOMPARE(linesIn("64:"), words("v REG_SZ b"));
        QCOMPARE(system->removeKey(keyIn("32:")), QString());
        QCOMPARE(linesIn("64:"), words("v REG_SZ b"));
        QCOMPARE(system->removeKey(keyIn("64:")), QString());
    }

    void leavesNoiseAlone()
    {
        QList<NoiseProfile> profiles = defaultNoiseProfiles();
        profiles[0].isOn = true;
        const RegistryTree left =
            readRegistry(version5("[K\\RunMRU]\r\n\"a\"=\"1\"\r\n[K\\S]\r\n\"n\"=\"1\"\r\n")).tree;
        const RegistryTree right =
            readRegistry(version5("[K\\RunMRU]\r\n\"a\"=\"2\"\r\n[K\\S]\r\n\"n\"=\"2\"\r\n")).tree;
        const RegistryComparison comparison = compareRegistry(left, right, RegistryNoise(profiles));
        QCOMPARE(comparison.noise, 1);
        QCOMPARE(comparison.counts.differences(), 1);
        QCOMPARE(lines(registryPatch(comparison, Side::Left)), words("[K\\S]|n REG_SZ 2"));
        // In the list it is neither a difference nor the same.
        const auto shared = std::make_shared<const RegistryComparison>(comparison);
        ListModel model(std::make_unique<RegistryRows>(shared, 0, 2, QString()));
        QCOMPARE(model.noise(), 1);
        QCOMPARE(model.counts(), (PairCounts{0, 1, 0, 0}));
        for (const auto &[view, rows] : {std::pair(RowsView::Same, 0), std::pair(RowsView::Differences, 1)}) {
            model.setView(view);
            QCOMPARE(model.rowCount(), rows);
        }
    }

    void tellsOfExportsWithoutTheirEnd()
    {
        const RegistryTree tree = readRegistry(version5("[H\\A]\r\n\"a\"=\"1\"\r\n[H\\B]\r\n")).tree;
        const QByteArray file = registryFile(tree);
        QVERIFY(!readRegistry(file).mayBeCutOff);
        const QByteArray lineEnd("\r\0\n\0", 4);
        QVERIFY(readRegistry(file.chopped(lineEnd.size())).mayBeCutOff);
        QVERIFY(readRegistry(file.chopped(1)).mayBeCutOff);
        QVERIFY(!readRegistry("REGEDIT4\r\n[H\\A]\r\n").mayBeCutOff); // as people write them
    }

    void understandsNamesOfLiveKeys()
    {
        QCOMPARE(liveKeyOf(word("hklm\\Software\\")), (LiveKey{word("HKEY_LOCAL_MACHINE\\Software")}));
        QCOMPARE(liveKeyOf(word("32:HKCR")), (LiveKey{word("HKEY_CLASSES_ROOT"), RegistryView::Bits32}));
        QVERIFY(!liveKeyOf(word("C:\\HKLM")) && !liveKeyOf(word("HKLMX")));
    }

    void showsKeysBesideTheirValues()
    {
        QTemporaryDir folder;
        const QString one = folder.filePath(word("one.reg"));
        const QString two = folder.filePath(word("two.reg"));
        QVERIFY(makeFile(one, version5("[H\\A]\r\n@=\"1\"\r\n[H\\A\\In]\r\n\"n\"=\"1\"\r\n[H\\B]\r\n\"m\"=\"1\"\r\n")));
        QVERIFY(makeFile(two,
                         version5("[H\\A]\r\n@=\"1\"\r\n[H\\A\\In]\r\n\"n\"=\"2\"\r\n[H\\B]\r\n\"m\"=\"1\"\r\nx\r\n")));
        RecordingHost host;
        ScriptedDialogs dialogs;
        RegistryCompareWidget session(host, nullptr, nullptr);
        session.resize(1000, 600);
        session.show();
        QSignalSpy finished(&session, &SessionWidget::comparisonFinished);
        const auto action = [&](const char *name) { return session.findChild<QAction *>(QLatin1String(name)); };
        session.dropPaths({one, two}, {});
        QTRY_COMPARE(finished.size(), 1);
        const auto *verdict = session.findChild<QLabel *>(QStringLiteral("verdictBarText"));
        QVERIFY(verdict->text().startsWith(word("1 of 3 keys and values differ.\n")));
        QVERIFY(verdict->text().contains(word("\nLines of ")));
        auto *keys = session.findChild<TreeView *>(QStringLiteral("registryKeys"));
        const auto shownKeys = [&] {
            QStringList names;
            for (int row = 0; row < keys->model()->rowCount(); ++row)
                names.append(keys->model()->index(row, 0).data().toString());
            return names;
        };
        keys->setFocus();
        QTest::keyClick(keys, Qt::Key_Asterisk);
        QCOMPARE(shownKeys(), words("H|A|In|B"));
        keys->goToRow(1);
        QCOMPARE(session.rows().rowCount(), 2);
        QCOMPARE(session.rows().rowAt(1).key, word("In\\n"));
        // Words that only another key has.
        auto *filter = session.findChild<QLineEdit *>(word("rowFilter"));
        const auto *wider = session.findChild<QPushButton *>(word("widerSearchButton"));
        QVERIFY(!wider->isVisible());
        filter->setText(word("B\\m"));
        QCOMPARE(session.rows().rowCount(), 0);
        QCOMPARE(session.findChild<ListView *>()->notice(), word("No row of this key holds these words."));
        QVERIFY(wider->isVisible());
        QTest::keyClick(filter, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(session.rows().rowAt(0).key, word("B\\m"));
        QVERIFY(!wider->isVisible());
        filter->clear();
        keys->goToRow(1);
        action("showDifferencesAction")->trigger();
        QCOMPARE(shownKeys(), words("H|A|In"));
        QCOMPARE(session.rows().rowCount(), 1);
        action("showIdenticalAction")->trigger();
        QCOMPARE(shownKeys(), words("H|A|B"));
        QCOMPARE(session.options(), (QJsonObject{{word("onlySame"), true}}));
        session.setOptions({});
        QCOMPARE(shownKeys(), words("H|A|In|B"));

        const QString patch = folder.filePath(word("patch.reg"));
        dialogs.answerPath(patch);
        action("savePatchAction")->trigger();
        QTRY_VERIFY(QFile::exists(patch));
        QCOMPARE(lines(readRegistry(contentsOf(patch)).tree), words("[H\\A\\In]|n REG_SZ 2"));
        QVERIFY(!action("writeLeftAction")->isEnabled());
    }

    void readsAFileByTheCodePageThatIsChosen()
    {
        QTemporaryDir folder;
        const QString old = folder.filePath(word("old.reg"));
        const QString same = folder.filePath(word("new.reg"));
        QVERIFY(makeFile(old, "REGEDIT4\r\n[H\\A]\r\n\"n\"=\"\xc4\xc5\"\r\n"));
        QVERIFY(makeFile(same, version5("[H\\A]\r\n\"n\"=\"ДЕ\"\r\n")));
        RecordingHost host;
        RegistryCompareWidget session(host, nullptr, nullptr);
        session.show();
        QSignalSpy finished(&session, &SessionWidget::comparisonFinished);
        session.setPaths({old, same, {}});
        session.setOptions({{word("leftEncoding"), word("ISO-8859-2")}});
        session.start();
        QTRY_COMPARE(finished.size(), 1);
        QCOMPARE(session.rows().counts().changed, 1);
        QVERIFY(!session.findChild<QMenu *>(word("rightEncodingMenu"))->isEnabled());
        for (QAction *action : session.findChild<QMenu *>(word("leftEncodingMenu"))->actions()) {
            if (action->text() == word("Windows-1251"))
                action->trigger();
        }
        QTRY_COMPARE(finished.size(), 2);
        QCOMPARE(session.rows().counts().changed, 0);
        session.onSwapSides();
        QTRY_COMPARE(finished.size(), 3);
        QCOMPARE(session.rows().counts().changed, 0);
        QCOMPARE(session.options(), (QJsonObject{{word("rightEncoding"), word("Windows-1251")}}));
    }

    void writesToTheRegistryOnlyWhatWasSeen()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(word("two.reg"));
        QVERIFY(makeFile(file, version5("[HKEY_CURRENT_USER\\S]\r\n\"n\"=\"2\"\r\n[HKEY_CURRENT_USER\\S\\New]\r\n")));
        MadeRegistry live;
        const QString key = word("HKEY_CURRENT_USER\\S");
        live.keys[key][word("n")] = {word("n"), 1, QByteArray("1\0\0\0", 4)};
        const auto before = lines(treeOf(live));
        RecordingHost host;
        ScriptedDialogs dialogs;
        RegistryCompareWidget session(host, nullptr, &live);
        session.show();
        QSignalSpy finished(&session, &SessionWidget::comparisonFinished);
        session.setPaths({word("HKCU\\S"), file, {}});
        session.start();
        QTRY_COMPARE(finished.size(), 1);
        const QString kept = folder.filePath(word("kept.reg"));
        const auto writeAfter = [&](const std::function<void()> &meanwhile) {
            session.findChild<QAction *>(QStringLiteral("writeLeftAction"))->trigger();
            auto *preview = session.findChild<QDialog *>();
            QVERIFY(preview && preview->findChild<QPlainTextEdit *>()->toPlainText().contains(word("\"n\"=\"2\"")));
            meanwhile();
            dialogs.answerPath(kept);
            preview->accept();
        };
        // Changed behind its back, nothing is written and nothing kept.
        writeAfter([&] { live.keys[key][word("x")] = {word("x"), 3, "1"}; });
        const auto *status = session.findChild<QLabel *>(QStringLiteral("statusLabel"));
        QTRY_VERIFY(status->text().startsWith(word("The key has changed since")));
        QVERIFY(!QFile::exists(kept));
        live.keys[key].remove(word("x"));
        writeAfter([] {});
        QTRY_COMPARE(finished.size(), 2);
        QCOMPARE(lines(treeOf(live)), lines(readRegistry(contentsOf(file)).tree));
        QVERIFY(writeToRegistry(live, RegistryView::Own, readRegistry(contentsOf(kept)).tree).ok());
        QCOMPARE(lines(treeOf(live)), before);
    }

    void keepsEditedNoise()
    {
        NoiseDialog dialog(defaultNoiseProfiles(), nullptr);
        dialog.findChild<QPlainTextEdit *>(QStringLiteral("noiseMasks"))->setPlainText(word("*\\x\n\n *\\y "));
        QCOMPARE(dialog.profiles().at(0).masks, words("*\\x|*\\y"));
        QCOMPARE(dialog.profiles().at(1), defaultNoiseProfiles().at(1));
    }
};

VELMORA_TEST(RegistryTest)
#include "registry_test.moc"

#include "folder/engine/folder_engine_internal.h"
#include "folder_engine/memory_files.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"

#include <QElapsedTimer>

#include <new>
#include <thread>

using namespace velmora;
using namespace velmora::test;

namespace {

const QString leftRoot = QStringLiteral("/l");
const QString rightRoot = QStringLiteral("/r");

QList<FolderDiffItem> compare(const MemoryFiles &files, CompareMethod method, int threads = 1,
                              const CancelFlag &cancel = {}, const FolderRunReport &report = {})
{
    return compareFolderTree({files, threads}, leftRoot, rightRoot, {}, method, cancel, 0, {}, report);
}

/// Some folders of a few files each; in every third pair the contents differ.
void fill(MemoryFiles &files)
{
    for (int folder = 0; folder < 12; ++folder) {
        for (int n = 0; n < 5; ++n) {
            const QString name = QStringLiteral("/d%1/e%2/f%3").arg(folder % 4).arg(folder).arg(n);
            files.addFile(leftRoot + name, "left side", n);
            files.addFile(rightRoot + name, n % 3 == 0 ? "leftXside" : "left side", n + 1);
        }
    }
    files.addFile(leftRoot + QLatin1String("/d2/only"), "1");
}

} // namespace

class FolderFaultTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goesOnAfterAnUnreadableFolder()
    {
        MemoryFiles files;
        files.addFile(QStringLiteral("/l/closed/f"), "1");
        files.addFile(QStringLiteral("/r/closed/f"), "1");
        files.addFile(QStringLiteral("/l/open"), "1");
        files.addFile(QStringLiteral("/r/open"), "1");
        files.setUnreadable(QStringLiteral("/l/closed"));
        QList<FolderProblem> problems;
        const auto items = compare(files, CompareMethod::Crc, 1, {}, {nullptr, &problems});
        QCOMPARE(drawn(items), (QStringList{QStringLiteral(">closed/ 0 1"), QStringLiteral(">closed/f 0 1"),
                                            QStringLiteral("=open 1 1")}));
        QCOMPARE(problems,
                 (QList<FolderProblem>{{FolderProblem::Kind::UnreadableFolder, QStringLiteral("/l/closed")}}));
    }

    void goesOnAfterFilesThatVanish()
    {
        MemoryFiles files;
        for (const char *root : {"/l/", "/r/"}) {
            files.addFile(QLatin1String(root) + QStringLiteral("both"), "1", root[1]).opens = false;
            files.addFile(QLatin1String(root) + QStringLiteral("one"), "1", root[1]).opens = root[1] == 'l';
            files.addFile(QLatin1String(root) + QStringLiteral("rest"), "1", root[1]);
        }
        QList<FolderProblem> problems;
        QCOMPARE(drawn(compare(files, CompareMethod::Rules, 1, {}, {nullptr, &problems})),
                 (QStringList{QStringLiteral("!both 1 1"), QStringLiteral("!one 1 1"), QStringLiteral("=rest 1 1")}));
        QCOMPARE(problems, (QList<FolderProblem>{{FolderProblem::Kind::UnreadableFile, QStringLiteral("/l/both")},
                                                 {FolderProblem::Kind::UnreadableFile, QStringLiteral("/r/one")}}));
        QCOMPARE(drawn(compare(files, CompareMethod::Crc)),
                 (QStringList{QStringLiteral("=both 1 1"), QStringLiteral("!one 1 1"), QStringLiteral("=rest 1 1")}));
    }

    void takesAReadErrorForTheEnd_data()
    {
        QTest::addColumn<int>("leftFailsAt");
        QTest::addColumn<int>("rightFailsAt");
        QTest::addColumn<bool>("same");

        QTest::newRow("none") << -1 << -1 << true;
        QTest::newRow("one side") << 300'000 << -1 << false;
        QTest::newRow("same place") << 300'000 << 300'000 << true;
        QTest::newRow("other place") << 300'000 << 300'001 << false;
        QTest::newRow("at a block's start") << 262'144 << -1 << false;
        QTest::newRow("at the end") << 400'000 << -1 << true; // beyond the last byte
    }

    void takesAReadErrorForTheEnd()
    {
        QFETCH(int, leftFailsAt);
        QFETCH(int, rightFailsAt);
        QFETCH(bool, same);
        MemoryFiles files;
        const QByteArray bytes(400'000, 'x');
        files.addFile(QStringLiteral("/l/f"), bytes, 1).failsAt = leftFailsAt;
        files.addFile(QStringLiteral("/r/f"), bytes, 2).failsAt = rightFailsAt;
        for (const CompareMethod method : {CompareMethod::Rules, CompareMethod::Binary})
            QCOMPARE(compare(files, method).first().status == 0, same);
    }

    void opensNothingButFiles()
    {
        MemoryFiles files;
        files.addLinkToPipe(QStringLiteral("/l/pipe"));
        files.addLinkToPipe(QStringLiteral("/r/pipe"));
        files.addLinkToPipe(QStringLiteral("/l/half"));
        files.addFile(QStringLiteral("/r/half"), {}, 1);
        QCOMPARE(drawn(compare(files, CompareMethod::Crc)),
                 (QStringList{QStringLiteral("!half"), QStringLiteral("=pipe")}));
        QCOMPARE(files.opened(), QStringList{QStringLiteral("/r/half")});
    }

    void readsNoFurtherThanTheFirstDifference()
    {
        MemoryFiles files;
        QByteArray bytes(8'000'000, 'x');
        files.addFile(QStringLiteral("/l/f"), bytes, 1);
        bytes[1000] = 'y';
        files.addFile(QStringLiteral("/r/f"), bytes, 2);
        QCOMPARE(drawn(compare(files, CompareMethod::Rules)), QStringList{QStringLiteral("!f 8000000 8000000")});
        QVERIFY(files.bytesRead() <= 2 * 1024 * 1024);
    }

    void endsInLinkCycles()
    {
        MemoryFiles files;
        files.addFile(QStringLiteral("/l/a/f"), "1");
        files.addFolder(QStringLiteral("/r/a"));
        files.addLink(QStringLiteral("/l/a/up"), QStringLiteral("/l"));
        files.addFile(QStringLiteral("/r/a/up/x"), "22");
        QList<FolderProblem> problems;
        const auto items = compare(files, CompareMethod::Rules, 1, {}, {nullptr, &problems});
        QCOMPARE(drawn(items), (QStringList{QStringLiteral("!a/ 1 2"), QStringLiteral("<a/f 1 0"),
                                            QStringLiteral(">a/up/ 0 2"), QStringLiteral(">a/up/x 0 2")}));
        QCOMPARE(problems, (QList<FolderProblem>{{FolderProblem::Kind::LinkCycle, QStringLiteral("/l/a/up")}}));
        QCOMPARE(countFolderContents({files, 1}, leftRoot, {}, {}), (FolderTotals{1, 2, 1}));
    }

    /// Whatever the moment of the cancel, what comes back is the begin of the whole result, and no pair in it is
    /// guessed.
    void returnsWhatItHasWhenCancelled()
    {
        for (const int threads : {1, 3}) {
            QList<FolderDiffItem> whole;
            int operations = 0;
            {
                MemoryFiles files;
                fill(files);
                whole = compare(files, CompareMethod::Rules);
                operations = files.operations();
            }
            qsizetype longest = 0;
            for (int stopAt = 1; stopAt <= operations; stopAt += 7) {
                MemoryFiles files;
                fill(files);
                const CancelFlag cancel;
                files.setWatcher([&](int number) {
                    if (number == stopAt)
                        cancel.cancel();
                });
                const auto items = compare(files, CompareMethod::Rules, threads, cancel);
                QVERIFY(items.size() < whole.size());
                longest = std::max(longest, items.size());
                for (qsizetype i = 0; i < items.size(); ++i) {
                    QCOMPARE(items[i].name, whole[i].name);
                    if (!items[i].isDir)
                        QCOMPARE(items[i], whole[i]);
                }
            }
            QVERIFY(longest > whole.size() / 2);
        }
    }

    void rollsUpOverWhatACancelLeft()
    {
        MemoryFiles files;
        for (const QString &name : {QStringLiteral("/d/1"), QStringLiteral("/d/2")}) {
            files.addFile(leftRoot + name, "same", 1);
            files.addFile(rightRoot + name, name.endsWith(u'2') ? "othr" : "same", 2);
        }
        const CancelFlag cancel;
        // Four folders are read first; then each file is opened, and read once.
        files.setWatcher([&](int number) {
            if (number == 4 + 5)
                cancel.cancel();
        });
        QCOMPARE(drawn(compare(files, CompareMethod::Rules, 1, cancel)),
                 (QStringList{QStringLiteral("=d/ 4 4"), QStringLiteral("=d/1 4 4")}));
    }

    void obeysACancelInsideAHugeFile_data()
    {
        QTest::addColumn<int>("method");
        for (int method = 0; method < 3; ++method)
            QTest::addRow("method %d", method) << method;
    }

    void obeysACancelInsideAHugeFile()
    {
        QFETCH(int, method);
        MemoryFiles files;
        files.addZeros(QStringLiteral("/l/f"), qint64(1) << 50U, 1);
        files.addZeros(QStringLiteral("/r/f"), qint64(1) << 50U, 2);
        const CancelFlag cancel;
        QElapsedTimer sinceCancel;
        std::thread canceller([&] {
            while (files.bytesRead() < 8'000'000)
                std::this_thread::yield();
            sinceCancel.start();
            cancel.cancel();
        });
        const auto items = compare(files, CompareMethod(method), 2, cancel);
        QElapsedTimer atReturn;
        atReturn.start();
        canceller.join();
        const qint64 elapsed = sinceCancel.msecsTo(atReturn);
        QCOMPARE(items, {});
        QVERIFY2(elapsed < 500, qPrintable(QString::number(elapsed))); // 100 ms, on a machine that does other things
    }

    void streamsOnePairAtATimeFromASlowDevice()
    {
        MemoryFiles files;
        std::array<std::atomic<int>, 2> readers{};
        for (int pair = 0; pair < 2; ++pair) {
            for (const QString &root : {leftRoot, rightRoot}) {
                MemoryFiles::File &file =
                    files.addZeros(root + QStringLiteral("/f%1").arg(pair), 20 * 1024 * 1024, root.at(1).unicode());
                file.delay = std::chrono::milliseconds(1);
                file.readers = &readers[std::size_t(pair)];
            }
        }
        std::atomic<bool> both = false;
        files.setWatcher([&](int) {
            if (readers[0] > 0 && readers[1] > 0)
                both = true;
        });
        QCOMPARE(compare(files, CompareMethod::Rules, 2).size(), 2);
        QVERIFY(!both);
    }

    void passesOnALackOfMemory()
    {
        for (const int threads : {1, 3}) {
            for (const int failAt : {1, 20, 80}) {
                MemoryFiles files;
                fill(files);
                files.setWatcher([&](int number) {
                    if (number >= failAt)
                        throw std::bad_alloc();
                });
                QVERIFY_THROWS_EXCEPTION(std::bad_alloc, (void)compare(files, CompareMethod::Rules, threads));
            }
        }
    }

    void reportsItsProgress()
    {
        MemoryFiles files;
        fill(files);
        files.addZeros(QStringLiteral("/l/large"), 3'000'000, 1);
        files.addZeros(QStringLiteral("/r/large"), 3'000'000, 2);
        QList<ProgressState> states;
        Progress progress([&](const ProgressState &state) { states.append(state); }, std::chrono::milliseconds(0));
        (void)compare(files, CompareMethod::Crc, 1, {}, {&progress, nullptr});
        QVERIFY(!states.isEmpty());
        ProgressState last;
        for (const ProgressState &state : states) {
            QVERIFY(state.phase > last.phase || state.done >= last.done);
            QVERIFY(state.total == 0 || state.done <= state.total);
            QVERIFY(!state.item.isEmpty());
            last = state;
        }
        QCOMPARE(last.phase, int(FolderPhase::Comparing));
    }
};

VELMORA_TEST(FolderFaultTest)
#include "folder_fault_test.moc"
